# SPDX-License-Identifier: MIT
# The name of an output intent's profile ended in a space, which only a writer that doesn't escape it may have.
libharu_edit(FILE src/hpdf_doc.c ANCHOR "\"DestOutputProfile \"" REPLACEMENT "\"DestOutputProfile\"")
libharu_edit(FILE src/hpdf_pdfa.c ANCHOR "\"DestOutputProfile \"" REPLACEMENT "\"DestOutputProfile\"")
