#include "plugin/text/font_factories.h"

#include "binding/owned.h"
#include "plugin/document/library_call.h"
#include "plugin/document/owned_by_document.h"
#include "plugin/text/encodings.h"
#include "plugin/text/font_data.h"

namespace quillbar::text {

namespace {

/// A library font with what text needs to reach it.
struct FoundFont {
  HPDF_Font handle = nullptr;
  std::uint32_t hostEncoding = 0;
  FontScriptKind scriptKind = FontScriptKind::Plain;
  bool automatic = false;
};

/// A font of the library's by name, in an encoding of the table; no handle when there is none.
FoundFont LookupEncodedFont(PDFDocument *document, const char *libraryFontName, FontEncoding encoding) {
  const auto entry = FindEncoding(encoding);
  if (!entry) return {};
  const HPDF_Font handle =
      Call<HPDF_GetFont>(DataOf(document).libraryDocument, libraryFontName, entry->encoderName);
  return {handle, entry->hostEncoding, FontScriptKind::Plain, entry->automatic};
}

/// The `Font` that scripts get for a library font; Nil without one.
Font *NewFont(PDFDocument *document, const FoundFont &found) {
  if (found.handle == nullptr) return nullptr;
  Font *font = NewOwnedByDocument<"QuillbarPDFWriter.Font", Font, FontData>(document);
  if (font == nullptr) return nullptr;
  FontData &data = DataOf(font);
  data.fontHandle = found.handle;
  data.scriptKind = data.initialScriptKind = found.scriptKind;
  data.hostEncoding = found.hostEncoding;
  data.automaticEncoding = found.automatic;
  return font;
}

}  // namespace

Font *GetFont(PDFDocument *document, String fontName, FontEncoding encoding) {
  if (fontName == nullptr) return nullptr;
  const StringData name(fontName, TextEncoding::kUtf8);
  return NewFont(document, LookupEncodedFont(document, name ? name.bytes() : nullptr, encoding));
}

Font *LoadTrueTypeFont(PDFDocument *, FolderItem *) { return nullptr; }

Font *LoadType1Font(PDFDocument *, FolderItem *, FolderItem *, FontEncoding) { return nullptr; }

}  // namespace quillbar::text
