// SPDX-License-Identifier: MIT
// `Font` as it is registered. The gaps in the encodings' numbers are part of the interface.
#include "plugin/text/font_metrics.h"

#include "binding/members.h"
#include "plugin/script/wrapper.h"
#include "plugin/text/font_data.h"

namespace quillbar {

namespace {

using namespace text;
using Life = Wrapper<&FontData::document>;

// clang-format off
using FontProperties = Properties<
    ReadOnlyProperty<"Descent", "Integer", GetDescent>,
    ReadOnlyProperty<"Ascent", "Integer", GetAscent>,
    ReadOnlyProperty<"Name", "String", GetName>,
    ReadOnlyProperty<"BoundingBoxLeft", "Single", GetBoundingBox<&HPDF_Rect::left>>,
    ReadOnlyProperty<"BoundingBoxRight", "Single", GetBoundingBox<&HPDF_Rect::right>>,
    ReadOnlyProperty<"BoundingBoxTop", "Single", GetBoundingBox<&HPDF_Rect::top>>,
    ReadOnlyProperty<"BoundingBoxBottom", "Single", GetBoundingBox<&HPDF_Rect::bottom>>>;

using FontMethods = Methods<Method<"Constructor()", Life::Constructor<Font>, kPrivateConstructorFlags>>;

using FontEnumerations = Enumerations<
    Enumeration<FontEncoding, "FontEncodingEnum", "Integer",
                "MAC_ROMAN = 0", "WINDOWS_ANSI = 1", "ISO8859_2 = 2", "ISO8859_3 = 3", "ISO8859_4 = 4",
                "ISO8859_5 = 5", "ISO8859_6 = 6", "ISO8859_7 = 7", "ISO8859_8 = 8", "ISO8859_9 = 9",
                "ISO8859_10 = 10", "ISO8859_13 = 13", "ISO8859_14 = 14", "ISO8859_15 = 15",
                "CP1250 = 25", "CP1251 = 26", "CP1252 = 27", "CP1253 = 28", "CP1254 = 29", "CP1255 = 30",
                "CP1256 = 31", "CP1257 = 32", "CP1258 = 33", "KOI8_R = 40", "AUTOMATIC = 100">>;
// clang-format on

}  // namespace

constinit ClassRecord FontData::definition =
    DescribeClass<Members<FontMethods, FontProperties, Events<>, FontEnumerations>, Initialize, Life::Finalize>(
        "Font", nullptr, sizeof(FontData));

}  // namespace quillbar
