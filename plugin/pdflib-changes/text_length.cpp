// HPDF_Page_ShowTextNextLine refuses a text of more than 65535 bytes before it writes anything.
//
// libharu's writes the first 65535 bytes and then reports that the text is too long. (Its HPDF_Page_ShowText
// measures first and so refuses the whole.)
#include <hpdf.h>

#include <cstring>

extern "C" {

HPDF_STATUS Libharu_HPDF_Page_ShowTextNextLine(HPDF_Page page, const char *text);

HPDF_STATUS HPDF_Page_ShowTextNextLine(HPDF_Page page, const char *text) {
  if (text != nullptr && std::strlen(text) > HPDF_LIMIT_MAX_STRING_LEN) {
    const HPDF_STATUS state = HPDF_Page_CheckState(page, HPDF_GMODE_TEXT_OBJECT);
    return state != HPDF_OK ? state : HPDF_RaiseError(page->error, HPDF_STRING_OUT_OF_RANGE, 0);
  }
  return Libharu_HPDF_Page_ShowTextNextLine(page, text);
}

}  // extern "C"
