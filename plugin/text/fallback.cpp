#include "plugin/text/fallback.h"

#include "binding/owned.h"
#include "plugin/bridge/events.h"
#include "plugin/document/library_call.h"
#include "plugin/document/owned_by_document.h"
#include "plugin/page/page_data.h"
#include "plugin/text/cjk_families.h"
#include "plugin/text/font_data.h"
#include "plugin/text/foreign_face.h"
#include "plugin/text/script_detection.h"

namespace quillbar::text {

namespace {

using enum LanguageScript;

/// An encoder of the library with the host's code for the same encoding.
struct EncodingPair {
  const char *encoderName;
  std::uint32_t hostEncoding;
};

constexpr EncodingPair kGreek{"ISO8859-7", 519};
constexpr EncodingPair kJapanese{"90msp-RKSJ-H", 1056};
constexpr EncodingPair kSimplifiedChinese{"GBK-EUC-H", 1057};
constexpr EncodingPair kKorean{"KSCms-UHC-H", 1058};
constexpr EncodingPair kTraditionalChinese{"ETen-B5-H", 1059};

// In the order in which they are tried. Cyrillic ones are missing on purpose: Cyrillic text is for
// `ResolveFont`.
constexpr EncodingPair kSingleByteCandidates[] = {
    {"MacRomanEncoding", 0}, {"WinAnsiEncoding", 1280}, {"ISO8859-2", 514},  {"ISO8859-3", 515},
    {"ISO8859-4", 516},      {"ISO8859-6", 518},        {"ISO8859-8", 520},  {"ISO8859-9", 521},
    {"ISO8859-10", 522},     {"ISO8859-13", 525},       {"ISO8859-14", 526}, {"ISO8859-15", 527},
    {"CP1250", 1281},        {"CP1253", 1283},          {"CP1254", 1284},    {"CP1255", 1285},
    {"CP1256", 1286},        {"CP1257", 1287},          {"CP1258", 1288},
};

/// How the host compares texts: 1 is its lexicographic mode.
constexpr std::intptr_t kCompareMode = 1;

/// Whether a text is the same after conversion into an encoding.
bool Survives(String text, std::uint32_t hostEncoding) {
  const OwnedString converted(CallHost<service::ConvertString>(text, hostEncoding));
  return CallHost<global_method::StrComp>(converted.get(), text, kCompareMode) == 0;
}

HPDF_Font &Slot(FontData &font, FontScriptKind kind) {
  return font.fallbackFonts[static_cast<std::size_t>(kind)];
}

/// The font's face goes onto the page, in the size that the script set.
void ApplyFace(const PageData &page, const FontData &font) {
  Call<HPDF_Page_SetFontAndSize>(page.pageHandle, font.fontHandle, page.fontSize);
}

void Take(PageData &page, FontData &font, HPDF_Font face, FontScriptKind kind, std::uint32_t hostEncoding) {
  font.fontHandle = face;
  font.scriptKind = kind;
  font.hostEncoding = hostEncoding;
  page.textEncoding = hostEncoding;
}

/// The same face, or the one parked as plain, in another single-byte encoding.
void SwitchToSingleByte(PageData &page, FontData &font, const EncodingPair &encoding) {
  const char *name = nullptr;
  if (font.scriptKind == FontScriptKind::Plain) {
    name = Call<HPDF_Font_GetFontName>(font.fontHandle);
  } else {
    Slot(font, font.scriptKind) = font.fontHandle;
    if (const HPDF_Font plain = Slot(font, FontScriptKind::Plain); plain != nullptr) {
      font.fontHandle = plain;
      name = Call<HPDF_Font_GetFontName>(plain);
    } else {
      name = "Helvetica";
    }
  }
  const HPDF_Font face = Call<HPDF_GetFont>(*page.libraryDocument, name, encoding.encoderName);
  if (face == nullptr) return;
  Take(page, font, face, FontScriptKind::Plain, encoding.hostEncoding);
  ApplyFace(page, font);
}

/// A built-in face. One slot serves all faces of a kind, so a face that is current already is only applied
/// again.
void SwitchToBuiltIn(PageData &page, FontData &font, FontScriptKind kind, CjkFamily family, const char *name,
                     const EncodingPair &encoding) {
  if (font.scriptKind != kind) {
    Slot(font, font.scriptKind) = font.fontHandle;
    HPDF_Font face = Slot(font, kind);
    if (face == nullptr) {
      EnableCjkFamily(page.document, family);
      face = Call<HPDF_GetFont>(*page.libraryDocument, name, encoding.encoderName);
    }
    Take(page, font, face, kind, encoding.hostEncoding);
  }
  ApplyFace(page, font);
}

void SwitchToJapanese(PageData &page, FontData &font) {
  SwitchToBuiltIn(page, font, FontScriptKind::Japanese, CjkFamily::kJapanese, "MS-Mincho", kJapanese);
}

/// All three other encodings share the Korean family's resources and its slot.
void SwitchToCjk(PageData &page, FontData &font, const EncodingPair &encoding) {
  SwitchToBuiltIn(page, font, FontScriptKind::Korean, CjkFamily::kKorean, "DotumChe", encoding);
}

/// Asks the script for a font. True if it named one, which then has taken the current font's place.
bool SwitchToResolved(PageData &page, String text, LanguageScript script) {
  const ObjectRef<Font> answer(RaiseEvent<ResolveFontEvent>(page.document, text, script, page.currentFont));
  if (!answer) return false;
  // The handler may have set another font; the one that is current now is switched.
  FontData &font = DataOf(page.currentFont);
  const FontData &resolved = DataOf(answer.get());
  if (font.scriptKind != FontScriptKind::Unicode) Slot(font, font.scriptKind) = font.fontHandle;
  if (resolved.document != font.document) KeepDocumentOfFace(page.currentFont, resolved.document);
  Take(page, font, resolved.fontHandle, resolved.scriptKind, resolved.hostEncoding);
  ApplyFace(page, font);
  return true;
}

void SwitchToAnyBuiltIn(PageData &page, FontData &font, String text, LanguageScript script) {
  if (script == LANGUAGE_SCRIPT_JAPANESE || script == LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS) {
    // A text that the current face takes already counts as fitting, so that it stays.
    if (Survives(text, kJapanese.hostEncoding)) return SwitchToJapanese(page, font);
    for (const EncodingPair &chinese : {kSimplifiedChinese, kTraditionalChinese}) {
      if (Survives(text, chinese.hostEncoding)) return SwitchToCjk(page, font, chinese);
    }
  } else if (script == LANGUAGE_SCRIPT_KOREAN) {
    SwitchToCjk(page, font, kKorean);
  }
}

}  // namespace

void FitFontToText(Page *instance, String text) {
  PageData &page = DataOf(instance);
  if (page.automaticEncoding == 0) return;
  Font *current = page.currentFont;
  // A single-byte font that shows a substitute face goes back as soon as it can.
  const bool showsSubstitute = current != nullptr && DataOf(current).scriptKind != FontScriptKind::Plain &&
                               DataOf(current).initialScriptKind == FontScriptKind::Plain;
  if (!showsSubstitute && Survives(text, page.textEncoding)) return;
  if (current == nullptr) return;

  FontData &font = DataOf(current);
  const LanguageScript script = DetectScript(text);
  if (script == LANGUAGE_SCRIPT_GREEK) return SwitchToSingleByte(page, font, kGreek);
  for (const EncodingPair &candidate : kSingleByteCandidates) {
    if (candidate.hostEncoding != page.textEncoding && Survives(text, candidate.hostEncoding))
      return SwitchToSingleByte(page, font, candidate);
  }
  if (SwitchToResolved(page, text, script) || page.currentFont == nullptr) return;
  SwitchToAnyBuiltIn(page, DataOf(page.currentFont), text, script);
}

}  // namespace quillbar::text
