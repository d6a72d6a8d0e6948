# SPDX-License-Identifier: MIT
# Memory that runs out while an object is made: libharu then went on with what it had just given back, or left an entry
# without a value in a dictionary, which a later search followed.
libharu_edit(FILE src/hpdf_dict.c
  ANCHOR "if (!proxy)"
  REPLACEMENT "if (!proxy) HPDF_Dict_RemoveElement (dict, key);\n        if (!proxy)")
