// TrueType fonts for texts in a one-byte encoding: the embedded font is brought up to date before each save.
// libharu makes it once, so characters shown later are blank.
#include <hpdf.h>

#include "plugin/pdflib-changes/truetype_font.h"

extern "C" HPDF_Font Libharu_HPDF_TTFont_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder,
                                             HPDF_Xref xref);

namespace {

HPDF_Dict_BeforeWriteFunc theirBeforeWrite = nullptr;

HPDF_STATUS BeforeWrite(HPDF_Dict font) {
  const HPDF_STATUS status =
      quillbar::pdflib::RefreshProgram(static_cast<HPDF_FontAttr>(font->attr)->fontdef, font->filter);
  return status == HPDF_OK ? theirBeforeWrite(font) : status;
}

}  // namespace

extern "C" HPDF_Font HPDF_TTFont_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder,
                                     HPDF_Xref xref) {
  HPDF_Font font = Libharu_HPDF_TTFont_New(memory, definition, encoder, xref);
  if (font == nullptr || quillbar::pdflib::CreateDescriptor(definition, xref) != HPDF_OK) return nullptr;
  theirBeforeWrite = font->before_write_fn;
  font->before_write_fn = BeforeWrite;
  return font;
}
