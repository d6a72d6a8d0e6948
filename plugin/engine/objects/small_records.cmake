# SPDX-License-Identifier: MIT
# A page is some forty small objects, so what each takes counts. libharu has 128 bytes for every key of a dictionary and
# 20 places in every list, which grows by as many: an array or a table of references of 100,000 entries is copied 5,000
# times. Here a key is as long as it is, and a list begins with 4 places and doubles. An entry of the cross-reference
# table has its numbers in an order that leaves no gap.
libharu_edit(FILE include/hpdf_objects.h
  ANCHOR "key[HPDF_LIMIT_MAX_NAME_LEN + 1]"
  REPLACEMENT "*key")
libharu_edit(FILE src/hpdf_dict.c
  ANCHOR "sizeof(HPDF_DictElement_Rec)"
  REPLACEMENT "sizeof(HPDF_DictElement_Rec) + HPDF_StrLen (key, HPDF_LIMIT_MAX_NAME_LEN + 1) + 1")
libharu_edit(FILE src/hpdf_dict.c
  ANCHOR "HPDF_StrCpy (element->key"
  REPLACEMENT "element->key = (char *)(element + 1);\n        HPDF_StrCpy (element->key")
libharu_edit(FILE include/hpdf_conf.h
  ANCHOR "HPDF_DEF_ITEMS_PER_BLOCK    20"
  REPLACEMENT "HPDF_DEF_ITEMS_PER_BLOCK    4")
libharu_edit(FILE src/hpdf_list.c
  ANCHOR "list->block_siz + list->items_per_block"
  REPLACEMENT "(list->block_siz != 0 ? 2 * list->block_siz : list->items_per_block)")
libharu_edit(FILE include/hpdf_objects.h
  ANCHOR "HPDF_UINT    byte_offset;
      HPDF_UINT16  gen_no;"
  REPLACEMENT "HPDF_UINT16  gen_no;
      HPDF_UINT    byte_offset;")
