# SPDX-License-Identifier: MIT
# Writing a page's dictionary no longer ends what is open on the page: open_pages.cpp does, for the file alone.
libharu_edit(FILE src/hpdf_pages.c
  ANCHOR "page->before_write_fn = Page_BeforeWrite;"
  REPLACEMENT "")
