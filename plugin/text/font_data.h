// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "binding/class_data.h"
#include "plugin/script/script_types.h"

namespace quillbar {

/// What sort of face a font has, which decides how text reaches it.
enum class FontScriptKind : std::uint16_t {
  Plain = 0,              // one byte a character, in an encoding of the table; also Type 1 files and MingLiU
  Japanese = 1,           // built-in Japanese faces, Shift-JIS
  Korean = 2,             // built-in Korean faces, UHC
  ChineseSimplified = 3,  // built-in simplified Chinese faces, GBK
  Unicode = 4,            // TrueType files, UTF-8
};

inline constexpr std::size_t kFontScriptKinds = 5;

/// The private data of a `Font`. The order of the fields is fixed.
struct FontData {
  HPDF_Font fontHandle;                       // the face in use; text in other scripts may replace it
  HPDF_Font fallbackFonts[kFontScriptKinds];  // the face last used for each kind, parked while another is in use
  FontScriptKind scriptKind;
  std::uint32_t hostEncoding;  // the host's code for the bytes that the face takes
  HPDF_Doc *libraryDocument;
  PDFDocument *document;             // locked while kept
  std::uint8_t automaticEncoding;    // made with AUTOMATIC
  FontScriptKind initialScriptKind;  // the kind the font was made with
  HPDF_Rect boundingBox;
  std::uint8_t boundingBoxCached;

  static ClassRecord definition;
};

static_assert(offsetof(FontData, fallbackFonts) == sizeof(void *));
static_assert(offsetof(FontData, scriptKind) == 6 * sizeof(void *));
static_assert(offsetof(FontData, hostEncoding) == 6 * sizeof(void *) + 4);
static_assert(offsetof(FontData, libraryDocument) == 6 * sizeof(void *) + 8);
static_assert(offsetof(FontData, automaticEncoding) == 8 * sizeof(void *) + 8);
static_assert(offsetof(FontData, initialScriptKind) == 8 * sizeof(void *) + 10);
static_assert(offsetof(FontData, boundingBox) == 8 * sizeof(void *) + 12);
static_assert(offsetof(FontData, boundingBoxCached) == 8 * sizeof(void *) + 28);

inline FontData &DataOf(Font *font) { return *ClassData<FontData>(font); }

}  // namespace quillbar
