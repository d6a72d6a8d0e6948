// SPDX-License-Identifier: MIT
#include "plugin/text/encodings.h"

namespace quillbar {

std::optional<EncodingEntry> FindEncoding(FontEncoding encoding) {
  switch (encoding) {
    case FontEncoding::MAC_ROMAN:
      return EncodingEntry{"MacRomanEncoding", 0, false};
    // Latin 1 as Windows has it, under the name that PDF itself knows; CP1252 is the same text encoding with
    // the library's own table.
    case FontEncoding::WINDOWS_ANSI:
      return EncodingEntry{"WinAnsiEncoding", 1280, false};
    case FontEncoding::ISO8859_2:
      return EncodingEntry{"ISO8859-2", 514, false};
    case FontEncoding::ISO8859_3:
      return EncodingEntry{"ISO8859-3", 515, false};
    case FontEncoding::ISO8859_4:
      return EncodingEntry{"ISO8859-4", 516, false};
    case FontEncoding::ISO8859_5:
      return EncodingEntry{"ISO8859-5", 517, false};
    case FontEncoding::ISO8859_6:
      return EncodingEntry{"ISO8859-6", 518, false};
    case FontEncoding::ISO8859_7:
      return EncodingEntry{"ISO8859-7", 519, false};
    case FontEncoding::ISO8859_8:
      return EncodingEntry{"ISO8859-8", 520, false};
    case FontEncoding::ISO8859_9:
      return EncodingEntry{"ISO8859-9", 521, false};
    case FontEncoding::ISO8859_10:
      return EncodingEntry{"ISO8859-10", 522, false};
    case FontEncoding::ISO8859_13:
      return EncodingEntry{"ISO8859-13", 525, false};
    case FontEncoding::ISO8859_14:
      return EncodingEntry{"ISO8859-14", 526, false};
    case FontEncoding::ISO8859_15:
      return EncodingEntry{"ISO8859-15", 527, false};
    case FontEncoding::CP1250:
      return EncodingEntry{"CP1250", 1281, false};
    case FontEncoding::CP1251:
      return EncodingEntry{"CP1251", 1282, false};
    case FontEncoding::CP1252:
      return EncodingEntry{"CP1252", 1280, false};
    case FontEncoding::CP1253:
      return EncodingEntry{"CP1253", 1283, false};
    case FontEncoding::CP1254:
      return EncodingEntry{"CP1254", 1284, false};
    case FontEncoding::CP1255:
      return EncodingEntry{"CP1255", 1285, false};
    case FontEncoding::CP1256:
      return EncodingEntry{"CP1256", 1286, false};
    case FontEncoding::CP1257:
      return EncodingEntry{"CP1257", 1287, false};
    case FontEncoding::CP1258:
      return EncodingEntry{"CP1258", 1288, false};
    case FontEncoding::KOI8_R:
      return EncodingEntry{"KOI8-R", 2562, false};
    case FontEncoding::AUTOMATIC:
      return EncodingEntry{"WinAnsiEncoding", 1280, true};
  }
  return std::nullopt;
}

}  // namespace quillbar
