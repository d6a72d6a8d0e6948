// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/simple_font.h"

#include <algorithm>
#include <cstring>

#include "plugin/engine/fonts/to_unicode_map.h"
#include "plugin/engine/streams/escaped_text.h"

namespace quillbar::engine {

std::vector<char32_t> SimpleFont::ShownCharacters() const {
  std::vector<char32_t> characters(kOneByteCodes);
  for (int code = 0; code < kOneByteCodes; ++code) {
    const auto index = static_cast<std::size_t>(code);
    if (isShown_[index]) characters[index] = EncodedCharacter(code);
  }
  return characters;
}

std::optional<DecodedText> SimpleFont::DecodeDirected(std::span<const HPDF_BYTE> text) const {
  if (!CanBeDirected()) return std::nullopt;
  DecodedText decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    // The codes of white space are what they are in every encoding; others without a meaning are no letters.
    const HPDF_UNICODE character = EncodedCharacter(text[i]);
    decoded.characters.push_back(character != 0 ? char32_t{character} : char32_t{text[i]});
    decoded.ends.push_back(static_cast<std::uint32_t>(i + 1));
  }
  return decoded;
}

std::string SimpleFont::Ordered(std::string_view bytes, const DirectedText &whole) const {
  std::string ordered;
  ordered.reserve(bytes.size());
  const auto add = [&](char byte, bool isMirrored) {
    const auto code = static_cast<HPDF_BYTE>(byte);
    if (IsMarkCode(code)) return;
    if (isMirrored) {
      const char32_t other = MirroredCharacter(EncodedCharacter(code));
      // The brackets of these encodings have the same codes as in Unicode.
      if (other < kOneByteCodes && EncodedCharacter(static_cast<int>(other)) == other) byte = static_cast<char>(other);
    }
    ordered.push_back(byte);
  };
  const auto *data = reinterpret_cast<const HPDF_BYTE *>(bytes.data());
  for (const VisualRun &run : whole.OrderOf({data, bytes.size()}).runs) {
    const std::string_view part = bytes.substr(run.start, run.length);
    if (run.IsRightToLeft()) {
      std::for_each(part.rbegin(), part.rend(), [&](char byte) { add(byte, true); });
    } else {
      for (const char byte : part) add(byte, false);
    }
  }
  return ordered;
}

HPDF_STATUS SimpleFont::Refresh(HPDF_Dict font) {
  if (!HasToUnicodeMap()) return HPDF_OK;
  toUnicode_->filter = font->filter;
  return ReplaceToUnicodeMap(toUnicode_, ShownCharacters(), CodeLength::kOneByte);
}

HPDF_STATUS SimpleFont::CreateToUnicodeMap(HPDF_Dict font) {
  HPDF_Dict map = HPDF_DictStream_New(font->mmgr, xref);
  if (map == nullptr) return HPDF_Error_GetCode(font->error);
  const HPDF_STATUS status = HPDF_Dict_Add(font, "ToUnicode", map);
  if (status == HPDF_OK) toUnicode_ = map;
  return status;
}

// One question to a table for each byte, where libharu asks six; and four bytes at a time.
HPDF_TextWidth SimpleFont::SumOfWidths(std::span<const HPDF_BYTE> text) const {
  HPDF_UINT width = 0, spaces = 0;
  const auto add = [&](HPDF_BYTE byte) {
    width += static_cast<HPDF_UINT>(widthOfCode_[byte]);
    spaces += kIsWhiteSpace[byte];
  };
  std::size_t i = 0;
  for (; text.size() - i >= 4; i += 4) {
    add(text[i]);
    add(text[i + 1]);
    add(text[i + 2]);
    add(text[i + 3]);
  }
  for (; i < text.size(); ++i) add(text[i]);
  HPDF_TextWidth result{};
  result.numchars = static_cast<HPDF_UINT>(text.size());
  result.width = width;
  result.numspace = spaces;
  result.numwords = spaces + (!text.empty() && kIsWhiteSpace[text.back()] == 0 ? 1 : 0);
  return result;
}

char *SimpleFont::WriteShown(std::string_view bytes, char *end, HPDF_TextWidth &width) {
  constexpr std::size_t kStride = 8;
  width.numchars += static_cast<HPDF_UINT>(bytes.size());
  for (; bytes.size() >= kStride; bytes.remove_prefix(kStride)) {
    ShownByte sum = 0;
    for (std::size_t i = 0; i < kStride; ++i) sum += shownBytes_[static_cast<HPDF_BYTE>(bytes[i])];
    if (sum >= kIsSpecial) [[unlikely]] {
      end = WriteSpecial(bytes.substr(0, kStride), end, width);
      continue;
    }
    std::memcpy(end, bytes.data(), kStride);
    end += kStride;
    width.width += static_cast<HPDF_UINT>(sum);
    width.numspace += static_cast<HPDF_UINT>(sum >> kSpacesPlace);
  }
  return WriteSpecial(bytes, end, width);
}

char *SimpleFont::WriteSpecial(std::string_view bytes, char *end, HPDF_TextWidth &width) {
  for (const char byte : bytes) {
    const auto code = static_cast<HPDF_BYTE>(byte);
    ShownByte &shown = shownBytes_[code];
    if (!isNoted_[code]) [[unlikely]] {
      NoteShown(code);
      isNoted_[code] = true;
      const bool isPlain = !NeedsEscape(byte) && widthOfCode_[code] >= 0;
      if (isPlain) shown = static_cast<HPDF_UINT>(widthOfCode_[code]) | ShownByte{kIsWhiteSpace[code]} << kSpacesPlace;
    }
    if (shown == kIsSpecial) {
      end = EscapeText({&byte, 1}, end);
    } else {
      *end++ = byte;
    }
    width.width += static_cast<HPDF_UINT>(widthOfCode_[code]);
    width.numspace += kIsWhiteSpace[code];
  }
  return end;
}

void SimpleFont::AppendWidths(int first, int last, std::string &entries) const {
  entries += "/Widths [\n";
  for (int code = first; code <= last; ++code) {
    entries += std::to_string(widthOfCode_[static_cast<std::size_t>(code)]) + ' ';
    if ((code + 1) % 16 == 0) entries += '\n';
  }
  entries += "]\n";
}

}  // namespace quillbar::engine
