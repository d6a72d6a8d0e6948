# SPDX-License-Identifier: MIT
# A page's saved graphics states are freed with it, however many there are. libharu frees the last one only, so a document
# that is given up while states are saved lost the others.
libharu_edit(FILE src/hpdf_pages.c
  ANCHOR "HPDF_GState_Free (obj->mmgr, attr->gstate)"
  REPLACEMENT "while (attr->gstate) attr->gstate = HPDF_GState_Free (obj->mmgr, attr->gstate)")
