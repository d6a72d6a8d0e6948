// SPDX-License-Identifier: MIT
#include "plugin/text/font_factories.h"

#include <string_view>

#include "binding/host_strings.h"
#include "binding/owned.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/guard/library_call.h"
#include "plugin/script/wrapper.h"
#include "plugin/text/cjk_families.h"
#include "plugin/text/encodings.h"
#include "plugin/text/font_data.h"
#include "plugin/text/font_file.h"

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
  const HPDF_Font handle = Call<engine::GetFont>(DataOf(document).libraryDocument, libraryFontName, entry->encoderName);
  return {handle, entry->hostEncoding, FontScriptKind::Plain, encoding == FontEncoding::AUTOMATIC};
}

/// A built-in font whose name begins with `prefix`; the rest of the name is a style, such as ",Bold".
struct CjkFont {
  std::string_view prefix;
  CjkFamily family;
  FontScriptKind scriptKind;
};

// In the order in which they are tried: a longer name before the one that it begins with. MingLiU counts as
// plain: text for it is not switched as text for the other built-in faces is.
constexpr CjkFont kCjkFonts[] = {
    {"MS-Mincho", CjkFamily::kJapanese, FontScriptKind::Japanese},
    {"MS-Gothic", CjkFamily::kJapanese, FontScriptKind::Japanese},
    {"MS-PMincho", CjkFamily::kJapanese, FontScriptKind::Japanese},
    {"MS-PGothic", CjkFamily::kJapanese, FontScriptKind::Japanese},
    {"DotumChe", CjkFamily::kKorean, FontScriptKind::Korean},
    {"Dotum", CjkFamily::kKorean, FontScriptKind::Korean},
    {"BatangChe", CjkFamily::kKorean, FontScriptKind::Korean},
    {"Batang", CjkFamily::kKorean, FontScriptKind::Korean},
    {"MingLiU", CjkFamily::kTraditionalChinese, FontScriptKind::Plain},
    {"SimSun", CjkFamily::kSimplifiedChinese, FontScriptKind::ChineseSimplified},
    {"SimHei", CjkFamily::kSimplifiedChinese, FontScriptKind::ChineseSimplified},
};

/// Whether `text` begins with `prefix`, as the host compares texts.
bool BeginsWith(String text, std::string_view prefix) {
  const OwnedString beginning(CallHost<global_method::Left>(text, static_cast<std::intptr_t>(prefix.size())));
  const OwnedString sought(BuildString(prefix, TextEncoding::kAscii));
  // A host that can't compare would report every pair as equal.
  if (beginning.get() == nullptr || sought.get() == nullptr || HostSlot<service::StringCompare>::Resolve() == nullptr)
    return false;
  return CallHost<service::StringCompare>(beginning.get(), sought.get()) == 0;
}

/// The first built-in font that the name begins with and that the library has; no handle when there is none.
FoundFont LookupCjkFont(PDFDocument *document, String fontName, const char *libraryFontName) {
  for (const CjkFont &font : kCjkFonts) {
    if (!BeginsWith(fontName, font.prefix)) continue;
    EnableCjkFamily(document, font.family);
    const EncodingPair encoding = EncodingOf(font.family);
    const HPDF_Font handle =
        Call<engine::GetFont>(DataOf(document).libraryDocument, libraryFontName, encoding.encoderName);
    if (handle != nullptr) return {handle, encoding.hostEncoding, font.scriptKind, false};
  }
  return {};
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
  // Without a name the library fails, and says so.
  const char *libraryFontName = name ? name.bytes() : nullptr;
  FoundFont found = LookupCjkFont(document, fontName, libraryFontName);
  if (found.handle == nullptr) found = LookupEncodedFont(document, libraryFontName, encoding);
  return NewFont(document, found);
}

Font *LoadTrueTypeFont(PDFDocument *document, FolderItem *f) {
  if (!AreFiles({f})) return nullptr;
  const LibraryPath path(f);
  if (!path) return nullptr;
  const HPDF_Doc library = DataOf(document).libraryDocument;
  const char *name = Call<engine::LoadTrueTypeFont>(library, path.get());
  if (name == nullptr) return nullptr;
  const HPDF_Font handle = Call<engine::GetFont>(library, name, kUtf8.encoderName);
  return NewFont(document, {handle, kUtf8.hostEncoding, FontScriptKind::Unicode, false});
}

Font *LoadType1Font(PDFDocument *document, FolderItem *afmFile, FolderItem *pfmFile, FontEncoding encoding) {
  if (!AreFiles({afmFile, pfmFile})) return nullptr;
  const LibraryPath metrics(afmFile);
  if (!metrics) return nullptr;
  const LibraryPath program(pfmFile);
  if (!program) return nullptr;
  const char *name = Call<engine::LoadType1Font>(DataOf(document).libraryDocument, metrics.get(), program.get());
  return name == nullptr ? nullptr : NewFont(document, LookupEncodedFont(document, name, encoding));
}

}  // namespace quillbar::text
