# SPDX-License-Identifier: MIT
# A document's identifier, which is part of the key that it is encrypted with, was made from the clock. Passwords stayed
# in memory that had been given back, and in what was left of the sum over them on the stack.
libharu_edit(FILE include/hpdf_encrypt.h
  ANCHOR "void\nHPDF_PadOrTrancatePasswd"
  REPLACEMENT "void\nHPDF_FillWithRandom (void *bytes, HPDF_UINT size);\n\nvoid\nHPDF_Wipe (void *bytes, HPDF_UINT size);\n\nvoid\nHPDF_PadOrTrancatePasswd")
libharu_edit(FILE src/hpdf_encryptdict.c
  ANCHOR "time_t t = HPDF_TIME (NULL)"
  REPLACEMENT "HPDF_BYTE t[16]; HPDF_FillWithRandom (t, sizeof (t))")
libharu_edit(FILE src/hpdf_encryptdict.c
  ANCHOR "HPDF_FreeMem (obj->mmgr, attr)"
  REPLACEMENT "HPDF_Wipe (attr, sizeof (*attr)), HPDF_FreeMem (obj->mmgr, attr)")
libharu_edit(FILE src/hpdf_encrypt.c
  ANCHOR "HPDF_MemSet ((HPDF_BYTE *)ctx, 0, sizeof (ctx))"
  REPLACEMENT "HPDF_Wipe (ctx, sizeof (*ctx))")
