# SPDX-License-Identifier: MIT
# Room in the library's error record for what error_state.cpp keeps: which guarded call is running, and the failure that
# it raised first. The record is part of the document and every object points at it, so there is no better place.
libharu_edit(FILE include/hpdf_error.h
  ANCHOR "*user_data;"
  REPLACEMENT [[*user_data;
    HPDF_UINT               call_depth;
    HPDF_UINT               handler_depth;
    HPDF_STATUS             raised_no;
    HPDF_STATUS             raised_detail_no;]])
