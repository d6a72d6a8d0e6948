# SPDX-License-Identifier: MIT
# The information entry "Producer" of every new document names this system. libharu writes its own name followed by its
# version, both inside HPDF_NewDoc.
libharu_edit(FILE src/hpdf_doc.c ANCHOR "\"Haru Free PDF Library \"" REPLACEMENT "\"Quillbar PDF Plugin\"")
libharu_edit(FILE src/hpdf_doc.c ANCHOR "version = HPDF_GetVersion" REPLACEMENT "version = \"\"; (void) HPDF_GetVersion")
