// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "plugin/script/script_types.h"
#include "plugin/text/cjk_families.h"

namespace quillbar::text {

/// An encoding as the two sides know it between which text travels.
struct EncodingPair {
  constexpr EncodingPair(const char *encoder, TextEncoding host)
      : encoderName(encoder), hostEncoding(static_cast<std::uint32_t>(host)) {}

  const char *encoderName;     // the library's name of its encoder
  std::uint32_t hostEncoding;  // the host's code, a TextEncoding, as fonts and services have it
};

inline constexpr EncodingPair kUtf8{"UTF-8", TextEncoding::kUtf8};

/// The encoding in which the library has a family of built-in fonts.
constexpr EncodingPair EncodingOf(CjkFamily family) {
  switch (family) {
    case CjkFamily::kJapanese:
      return {"90msp-RKSJ-H", TextEncoding::kWindows932};
    case CjkFamily::kKorean:
      return {"KSCms-UHC-H", TextEncoding::kWindows949};
    case CjkFamily::kTraditionalChinese:
      return {"ETen-B5-H", TextEncoding::kWindows950};
    case CjkFamily::kSimplifiedChinese:
      break;
  }
  return {"GBK-EUC-H", TextEncoding::kWindows936};
}

/// What a script's choice means.
struct ChosenEncoding {
  FontEncoding choice;
  EncodingPair encoding;
};

inline constexpr std::array kChosenEncodings = {
    ChosenEncoding{FontEncoding::MAC_ROMAN, {"MacRomanEncoding", TextEncoding::kMacRoman}},
    // Latin 1 as Windows has it, under the name that PDF itself knows; CP1252 is the same text encoding with the
    // library's own table.
    ChosenEncoding{FontEncoding::WINDOWS_ANSI, {"WinAnsiEncoding", TextEncoding::kWindows1252}},
    ChosenEncoding{FontEncoding::ISO8859_2, {"ISO8859-2", TextEncoding::kIso8859_2}},
    ChosenEncoding{FontEncoding::ISO8859_3, {"ISO8859-3", TextEncoding::kIso8859_3}},
    ChosenEncoding{FontEncoding::ISO8859_4, {"ISO8859-4", TextEncoding::kIso8859_4}},
    ChosenEncoding{FontEncoding::ISO8859_5, {"ISO8859-5", TextEncoding::kIso8859_5}},
    ChosenEncoding{FontEncoding::ISO8859_6, {"ISO8859-6", TextEncoding::kIso8859_6}},
    ChosenEncoding{FontEncoding::ISO8859_7, {"ISO8859-7", TextEncoding::kIso8859_7}},
    ChosenEncoding{FontEncoding::ISO8859_8, {"ISO8859-8", TextEncoding::kIso8859_8}},
    ChosenEncoding{FontEncoding::ISO8859_9, {"ISO8859-9", TextEncoding::kIso8859_9}},
    ChosenEncoding{FontEncoding::ISO8859_10, {"ISO8859-10", TextEncoding::kIso8859_10}},
    ChosenEncoding{FontEncoding::ISO8859_13, {"ISO8859-13", TextEncoding::kIso8859_13}},
    ChosenEncoding{FontEncoding::ISO8859_14, {"ISO8859-14", TextEncoding::kIso8859_14}},
    ChosenEncoding{FontEncoding::ISO8859_15, {"ISO8859-15", TextEncoding::kIso8859_15}},
    ChosenEncoding{FontEncoding::CP1250, {"CP1250", TextEncoding::kWindows1250}},
    ChosenEncoding{FontEncoding::CP1251, {"CP1251", TextEncoding::kWindows1251}},
    ChosenEncoding{FontEncoding::CP1252, {"CP1252", TextEncoding::kWindows1252}},
    ChosenEncoding{FontEncoding::CP1253, {"CP1253", TextEncoding::kWindows1253}},
    ChosenEncoding{FontEncoding::CP1254, {"CP1254", TextEncoding::kWindows1254}},
    ChosenEncoding{FontEncoding::CP1255, {"CP1255", TextEncoding::kWindows1255}},
    ChosenEncoding{FontEncoding::CP1256, {"CP1256", TextEncoding::kWindows1256}},
    ChosenEncoding{FontEncoding::CP1257, {"CP1257", TextEncoding::kWindows1257}},
    ChosenEncoding{FontEncoding::CP1258, {"CP1258", TextEncoding::kWindows1258}},
    ChosenEncoding{FontEncoding::KOI8_R, {"KOI8-R", TextEncoding::kKoi8R}},
    // To begin with: text may switch to another encoding or font.
    ChosenEncoding{FontEncoding::AUTOMATIC, {"WinAnsiEncoding", TextEncoding::kWindows1252}},
};

/// The encoding of a script's choice; nothing for a number that the enumeration doesn't have.
constexpr std::optional<EncodingPair> FindEncoding(FontEncoding choice) {
  for (const ChosenEncoding &row : kChosenEncodings) {
    if (row.choice == choice) return row.encoding;
  }
  return std::nullopt;
}

}  // namespace quillbar::text
