# SPDX-License-Identifier: MIT
# The name of an output intent's profile ended in a space, which only a writer that doesn't escape it may have.
libharu_edit(FILE src/hpdf_doc.c ANCHOR "\"DestOutputProfile \"" REPLACEMENT "\"DestOutputProfile\"")
libharu_edit(FILE src/hpdf_pdfa.c ANCHOR "\"DestOutputProfile \"" REPLACEMENT "\"DestOutputProfile\"")
# An intent that the cross-reference table refuses is freed by it, and one that it has taken is freed with it.
libharu_edit(FILE src/hpdf_pdfa.c
  ANCHOR "HPDF_Xref_Add (pdf->xref, intent);
    if ( ret != HPDF_OK) {
        HPDF_Dict_Free(intent);"
  REPLACEMENT "HPDF_Xref_Add (pdf->xref, intent);
    if ( ret != HPDF_OK) {")
libharu_edit(FILE src/hpdf_pdfa.c
  ANCHOR "iccdict);
    if ( ret != HPDF_OK) {
        HPDF_Dict_Free(intent);"
  REPLACEMENT "iccdict);
    if ( ret != HPDF_OK) {")
# Without memory for the list of intents there is none to add to.
libharu_edit(FILE src/hpdf_pdfa.c
  ANCHOR "HPDF_Array_Add(intents,intent)"
  REPLACEMENT "if (intents == NULL)
        return HPDF_Error_GetCode (&pdf->error);
    HPDF_Array_Add(intents,intent)")
