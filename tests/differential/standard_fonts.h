// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace quillbar::differential {

/// A single-byte encoding: its number in Font.FontEncodingEnum, the library's encoder, the host's code for it.
struct EncodingChoice {
  std::int32_t number;
  const char *encoder;
  std::uint32_t hostEncoding;
};

inline constexpr EncodingChoice kEncodings[] = {
    {0, "MacRomanEncoding", 0}, {1, "WinAnsiEncoding", 1280}, {2, "ISO8859-2", 514},   {3, "ISO8859-3", 515},
    {4, "ISO8859-4", 516},      {5, "ISO8859-5", 517},        {6, "ISO8859-6", 518},   {7, "ISO8859-7", 519},
    {8, "ISO8859-8", 520},      {9, "ISO8859-9", 521},        {10, "ISO8859-10", 522}, {13, "ISO8859-13", 525},
    {14, "ISO8859-14", 526},    {15, "ISO8859-15", 527},      {25, "CP1250", 1281},    {26, "CP1251", 1282},
    {27, "CP1252", 1280},       {28, "CP1253", 1283},         {29, "CP1254", 1284},    {30, "CP1255", 1285},
    {31, "CP1256", 1286},       {32, "CP1257", 1287},         {33, "CP1258", 1288},    {40, "KOI8-R", 2562},
};

/// The encoding with this number in Font.FontEncodingEnum.
constexpr const EncodingChoice &EncodingOf(std::int32_t number) {
  for (const EncodingChoice &one : kEncodings) {
    if (one.number == number) return one;
  }
  return kEncodings[1];
}

inline constexpr const char *kStandardFonts[] = {
    "Courier",     "Courier-Bold",   "Courier-Oblique",   "Courier-BoldOblique",
    "Helvetica",   "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique",
    "Times-Roman", "Times-Bold",     "Times-Italic",      "Times-BoldItalic",
    "Symbol",      "ZapfDingbats",
};

/// Whether a standard font has symbols of its own instead of letters.
inline bool IsSymbolFont(std::string_view name) { return name == "Symbol" || name == "ZapfDingbats"; }

}  // namespace quillbar::differential
