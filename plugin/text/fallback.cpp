// SPDX-License-Identifier: MIT
#include "plugin/text/fallback.h"

#include <cstring>

#include "binding/owned.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/guard/library_call.h"
#include "plugin/page/page_data.h"
#include "plugin/script/events.h"
#include "plugin/script/wrapper.h"
#include "plugin/text/cjk_families.h"
#include "plugin/text/encodings.h"
#include "plugin/text/font_data.h"
#include "plugin/text/script_detection.h"

namespace quillbar::text {

namespace {

using enum LanguageScript;

// In the order in which they are tried. Cyrillic ones are missing on purpose: Cyrillic text is for `ResolveFont`.
constexpr FontEncoding kSingleByteCandidates[] = {
    FontEncoding::MAC_ROMAN,  FontEncoding::WINDOWS_ANSI, FontEncoding::ISO8859_2,  FontEncoding::ISO8859_3,
    FontEncoding::ISO8859_4,  FontEncoding::ISO8859_6,    FontEncoding::ISO8859_8,  FontEncoding::ISO8859_9,
    FontEncoding::ISO8859_10, FontEncoding::ISO8859_13,   FontEncoding::ISO8859_14, FontEncoding::ISO8859_15,
    FontEncoding::CP1250,     FontEncoding::CP1253,       FontEncoding::CP1254,     FontEncoding::CP1255,
    FontEncoding::CP1256,     FontEncoding::CP1257,       FontEncoding::CP1258,
};

/// How the host compares texts: 1 is its lexicographic mode.
constexpr std::intptr_t kCompareMode = 1;

/// Whether a text is the same after conversion into an encoding.
bool Survives(String text, std::uint32_t hostEncoding) {
  const OwnedString converted(CallHost<service::ConvertString>(text, hostEncoding));
  return CallHost<global_method::StrComp>(converted.get(), text, kCompareMode) == 0;
}

HPDF_Font &Slot(FontData &font, FontScriptKind kind) { return font.fallbackFonts[static_cast<std::size_t>(kind)]; }

/// A face of the library with what text needs to reach it.
struct Face {
  HPDF_Font handle;
  FontScriptKind kind;
  std::uint32_t hostEncoding;
};

/// A page's font while it is switched. A failing library call raises ErrorLog, and its handler may set
/// another font and so give this one up: it is kept until the switch is over.
class FontInUse {
 public:
  explicit FontInUse(PageData &page)
      : page_(page), font_(page.currentFont == nullptr ? nullptr : Retain(page.currentFont)) {}

  explicit operator bool() const { return static_cast<bool>(font_); }
  FontData &data() const { return DataOf(font_.get()); }
  PageData &page() const { return page_; }

  /// Puts a face onto the page, in the size that the script set. What the library refuses is not taken over:
  /// the encoding in which text is converted, that of the font and the face on the page stay together.
  /// Nothing happens when a handler has set another font. The face that goes is kept for its kind where
  /// `parks` says so.
  void Show(const Face &face, bool parks) const {
    if (page_.currentFont != font_.get()) return;
    if (Call<HPDF_Page_SetFontAndSize>(page_.pageHandle, face.handle, page_.fontSize) != HPDF_OK) return;
    FontData &font = data();
    if (parks) Slot(font, font.scriptKind) = font.fontHandle;
    font.fontHandle = face.handle;
    font.scriptKind = face.kind;
    font.hostEncoding = face.hostEncoding;
    page_.textEncoding = face.hostEncoding;
  }

 private:
  PageData &page_;
  ObjectRef<Font> font_;
};

/// The same face, or the one parked as plain, in another single-byte encoding.
void SwitchToSingleByte(const FontInUse &font, const EncodingPair &encoding) {
  const bool isPlain = font.data().scriptKind == FontScriptKind::Plain;
  const HPDF_Font plain = isPlain ? font.data().fontHandle : Slot(font.data(), FontScriptKind::Plain);
  const char *name = plain == nullptr ? "Helvetica" : Call<HPDF_Font_GetFontName>(plain);
  const HPDF_Font face = Call<engine::GetFont>(*font.page().libraryDocument, name, encoding.encoderName);
  if (face != nullptr) font.Show({face, FontScriptKind::Plain, encoding.hostEncoding}, !isPlain);
}

/// The face parked for a kind, unless it takes text in another encoding: one slot serves several. Null for
/// none.
HPDF_Font ParkedFace(FontData &font, FontScriptKind kind, const EncodingPair &encoding) {
  const HPDF_Font parked = Slot(font, kind);
  if (parked == nullptr) return nullptr;
  const char *name = Call<HPDF_Font_GetEncodingName>(parked);
  return name != nullptr && std::strcmp(name, encoding.encoderName) == 0 ? parked : nullptr;
}

/// A built-in face. One that is current already is only applied again, in the encoding that it has.
void SwitchToBuiltIn(const FontInUse &font, FontScriptKind kind, CjkFamily family, const char *name,
                     const EncodingPair &encoding) {
  const FontData &data = font.data();
  if (data.scriptKind == kind) return font.Show({data.fontHandle, kind, data.hostEncoding}, false);
  HPDF_Font face = ParkedFace(font.data(), kind, encoding);
  if (face == nullptr) {
    EnableCjkFamily(font.page().document, family);
    face = Call<engine::GetFont>(*font.page().libraryDocument, name, encoding.encoderName);
  }
  font.Show({face, kind, encoding.hostEncoding}, true);
}

void SwitchToJapanese(const FontInUse &font) {
  SwitchToBuiltIn(font, FontScriptKind::Japanese, CjkFamily::kJapanese, "MS-Mincho", EncodingOf(CjkFamily::kJapanese));
}

/// All three other encodings share the Korean family's resources and its slot.
void SwitchToCjk(const FontInUse &font, const EncodingPair &encoding) {
  SwitchToBuiltIn(font, FontScriptKind::Korean, CjkFamily::kKorean, "DotumChe", encoding);
}

/// Asks the script for a font. True if it named one, which then is to take the current font's place.
bool SwitchToResolved(PageData &page, String text, LanguageScript script) {
  const ObjectRef<Font> answer(RaiseEvent<ResolveFontEvent>(page.document, text, script, page.currentFont));
  if (!answer) return false;
  // The handler may have set another font; the one that is current now is switched.
  const FontInUse font(page);
  if (!font) return true;
  const FontData &resolved = DataOf(answer.get());
  const bool parks = font.data().scriptKind != FontScriptKind::Unicode;
  font.Show({resolved.fontHandle, resolved.scriptKind, resolved.hostEncoding}, parks);
  return true;
}

void SwitchToAnyBuiltIn(const FontInUse &font, String text, LanguageScript script) {
  if (script == LANGUAGE_SCRIPT_JAPANESE || script == LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS) {
    // A text that the current face takes already counts as fitting, so that it stays.
    if (Survives(text, EncodingOf(CjkFamily::kJapanese).hostEncoding)) return SwitchToJapanese(font);
    for (const CjkFamily chinese : {CjkFamily::kSimplifiedChinese, CjkFamily::kTraditionalChinese}) {
      if (Survives(text, EncodingOf(chinese).hostEncoding)) return SwitchToCjk(font, EncodingOf(chinese));
    }
  } else if (script == LANGUAGE_SCRIPT_KOREAN) {
    SwitchToCjk(font, EncodingOf(CjkFamily::kKorean));
  }
}

void FitAutomaticFont(PageData &page, String text) {
  Font *current = page.currentFont;
  // A single-byte font that shows a substitute face goes back as soon as it can.
  const bool showsSubstitute = current != nullptr && DataOf(current).scriptKind != FontScriptKind::Plain &&
                               DataOf(current).initialScriptKind == FontScriptKind::Plain;
  if (!showsSubstitute && Survives(text, page.textEncoding)) return;
  const FontInUse font(page);
  if (!font) return;

  const LanguageScript script = DetectScript(text);
  if (script == LANGUAGE_SCRIPT_GREEK) return SwitchToSingleByte(font, *FindEncoding(FontEncoding::ISO8859_7));
  for (const FontEncoding choice : kSingleByteCandidates) {
    const EncodingPair candidate = *FindEncoding(choice);
    if (candidate.hostEncoding != page.textEncoding && Survives(text, candidate.hostEncoding))
      return SwitchToSingleByte(font, candidate);
  }
  if (SwitchToResolved(page, text, script)) return;
  // A handler that has set a font of a chosen encoding has answered as well.
  if (page.currentFont != nullptr && page.automaticEncoding != 0) SwitchToAnyBuiltIn(FontInUse(page), text, script);
}

}  // namespace

bool FitFontToText(Page *instance, String text) {
  PageData &page = DataOf(instance);
  if (page.automaticEncoding != 0) FitAutomaticFont(page, text);
  return page.textEncoding != kNoFontSet;
}

}  // namespace quillbar::text
