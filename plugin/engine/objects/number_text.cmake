# SPDX-License-Identifier: MIT
# Room for the longest number that number_text.cpp prints ("-131071.99219").
libharu_edit(FILE include/hpdf_consts.h ANCHOR "HPDF_REAL_LEN               11" REPLACEMENT "HPDF_REAL_LEN 15")
