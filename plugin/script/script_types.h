// SPDX-License-Identifier: MIT
#pragma once

#include "binding/host_classes.h"

/// The types that scripts see, as C++ types: the module's eleven classes, the other plugins' classes that its
/// members take, and the enumerations. Enumerators keep the script's names and values, so they
/// are the PDF library's own numbers wherever scripts pass them on.
namespace quillbar {

using PDFDocument = Instance<"PDFDocument">;
using Page = Instance<"Page">;
using Font = Instance<"Font">;
using Image = Instance<"Image">;
using Annotation = Instance<"Annotation">;
using TextAnnotation = Instance<"TextAnnotation">;
using URLAnnotation = Instance<"URLAnnotation">;
using LinkAnnotation = Instance<"LinkAnnotation">;
using ExtendedGraphicsState = Instance<"ExtendedGraphicsState">;
using Outline = Instance<"Outline">;
using Destination = Instance<"Destination">;

using CompressorHandle = Instance<"CompressorHandle">;
using PixelRaster = Instance<"PixelRaster">;

enum class DocumentMode : Integer { USE_NONE = 0, USE_OUTLINE = 1, USE_THUMBS = 2, FULL_SCREEN = 3 };
template <>
inline constexpr FixedString kEnumerationName<DocumentMode>{"PDFDocument.DocumentModeEnum"};

enum class LanguageScript : Integer {
  LANGUAGE_SCRIPT_UNKNOWN = 0,
  LANGUAGE_SCRIPT_GREEK = 1,
  LANGUAGE_SCRIPT_CYRILLIC = 2,
  LANGUAGE_SCRIPT_HEBREW = 3,
  LANGUAGE_SCRIPT_DEVANAGARI = 4,
  LANGUAGE_SCRIPT_THAI = 5,
  LANGUAGE_SCRIPT_KOREAN = 6,
  LANGUAGE_SCRIPT_JAPANESE = 7,
  LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS = 8,
};
template <>
inline constexpr FixedString kEnumerationName<LanguageScript>{"PDFDocument.LanguageScript"};

enum class EncryptMode : Integer { ENCRYPT_R2 = 2, ENCRYPT_R3 = 3 };
template <>
inline constexpr FixedString kEnumerationName<EncryptMode>{"PDFDocument.EncryptModeEnum"};

enum class PageSize : Integer {
  LETTER = 0,
  LEGAL = 1,
  A3 = 2,
  A4 = 3,
  A5 = 4,
  B4 = 5,
  B5 = 6,
  EXECUTIVE = 7,
  US4x6 = 8,
  US4x8 = 9,
  US5x7 = 10,
  COMM10 = 11,
};
template <>
inline constexpr FixedString kEnumerationName<PageSize>{"Page.PageSizeEnum"};

enum class PageDirection : Integer { PORTRAIT = 0, LANDSCAPE = 1 };
template <>
inline constexpr FixedString kEnumerationName<PageDirection>{"Page.PageDirectionEnum"};

enum class TextAlignment : Integer { LEFT = 0, RIGHT = 1, CENTER = 2, JUSTIFY = 3 };
template <>
inline constexpr FixedString kEnumerationName<TextAlignment>{"Page.TextAlignmentEnum"};

enum class LineJoinType : Integer { MITER = 0, ROUND = 1, BEVEL = 2 };
template <>
inline constexpr FixedString kEnumerationName<LineJoinType>{"Page.LineJoinTypeEnum"};

enum class LineCapType : Integer { BUTT_END = 0, ROUND_END = 1, PROJECTING_SCUARE_END = 2 };
template <>
inline constexpr FixedString kEnumerationName<LineCapType>{"Page.LineCapTypeEnum"};

enum class GraphicsMode : std::uint16_t {
  PAGE_DESCRIPTION = 0x0001,
  PATH_OBJECT = 0x0002,
  TEXT_OBJECT = 0x0004,
  CLIPPING_PATH = 0x0008,
  SHADING = 0x0010,
  INLINE_IMAGE = 0x0020,
  EXTERNAL_OBJECT = 0x0040,
};
template <>
inline constexpr FixedString kEnumerationName<GraphicsMode>{"Page.GraphicsModeEnum"};

enum class TextRenderingMode : Integer {
  FILL = 0,
  STROKE = 1,
  FILL_THEN_STROKE = 2,
  INVISIBLE = 3,
  FILL_CLIPPING = 4,
  STROKE_CLIPPING = 5,
  FILL_STROKE_CLIPPING = 6,
  CLIPPING = 7,
};
template <>
inline constexpr FixedString kEnumerationName<TextRenderingMode>{"Page.TextRenderingModeEnum"};

enum class FontEncoding : Integer {
  MAC_ROMAN = 0,
  WINDOWS_ANSI = 1,
  ISO8859_2 = 2,
  ISO8859_3 = 3,
  ISO8859_4 = 4,
  ISO8859_5 = 5,
  ISO8859_6 = 6,
  ISO8859_7 = 7,
  ISO8859_8 = 8,
  ISO8859_9 = 9,
  ISO8859_10 = 10,
  ISO8859_13 = 13,
  ISO8859_14 = 14,
  ISO8859_15 = 15,
  CP1250 = 25,
  CP1251 = 26,
  CP1252 = 27,
  CP1253 = 28,
  CP1254 = 29,
  CP1255 = 30,
  CP1256 = 31,
  CP1257 = 32,
  CP1258 = 33,
  KOI8_R = 40,
  AUTOMATIC = 100,
};
template <>
inline constexpr FixedString kEnumerationName<FontEncoding>{"Font.FontEncodingEnum"};

enum class AnnotationIcon : Integer {
  COMMENT = 0,
  KEY = 1,
  NOTE = 2,
  HELP = 3,
  NEW_PARAGRAPH = 4,
  PARAGRAPH = 5,
  INSERT = 6,
};
template <>
inline constexpr FixedString kEnumerationName<AnnotationIcon>{"TextAnnotation.AnnotationIconEnum"};

enum class BlendMode : Integer {
  NORMAL = 0,
  MULTIPLY = 1,
  SCREEN = 2,
  OVERLAY = 3,
  DARKEN = 4,
  LIGHTEN = 5,
  COLOR_DODGE = 6,
  COLOR_BURN = 7,
  HARD_LIGHT = 8,
  SOFT_LIGHT = 9,
  DIFFERENCE = 10,
  EXCLUSHON = 11,
};
template <>
inline constexpr FixedString kEnumerationName<BlendMode>{"ExtendedGraphicsState.BlendModeEnum"};

}  // namespace quillbar
