// SPDX-License-Identifier: MIT
#include "host/runtime/text_encoding.h"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "host/runtime/character_io.h"
#include "host/runtime/code_page.h"

namespace quillbar::host {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr std::array kEncodings{
    KnownEncoding{TextEncoding::kUtf8, "UTF-8", "UTF8"},
    KnownEncoding{TextEncoding::kUtf16, "UTF-16", "UTF16"},
    KnownEncoding{TextEncoding::kAscii, "ASCII", "ASCII"},
    KnownEncoding{TextEncoding::kRawBytes, "raw bytes", "Bytes"},
    KnownEncoding{TextEncoding::kMacRoman, "Mac Roman", "MacRoman"},
    KnownEncoding{TextEncoding::kIso8859_1, "ISO 8859-1", "ISOLatin1"},
    KnownEncoding{TextEncoding::kIso8859_2, "ISO 8859-2", "ISOLatin2"},
    KnownEncoding{TextEncoding::kIso8859_3, "ISO 8859-3", "ISOLatin3"},
    KnownEncoding{TextEncoding::kIso8859_4, "ISO 8859-4", "ISOLatin4"},
    KnownEncoding{TextEncoding::kIso8859_5, "ISO 8859-5", "ISOLatinCyrillic"},
    KnownEncoding{TextEncoding::kIso8859_6, "ISO 8859-6", "ISOLatinArabic"},
    KnownEncoding{TextEncoding::kIso8859_7, "ISO 8859-7", "ISOLatinGreek"},
    KnownEncoding{TextEncoding::kIso8859_8, "ISO 8859-8", "ISOLatinHebrew"},
    KnownEncoding{TextEncoding::kIso8859_9, "ISO 8859-9", "ISOLatin5"},
    KnownEncoding{TextEncoding::kIso8859_10, "ISO 8859-10", "ISOLatin6"},
    KnownEncoding{TextEncoding::kIso8859_11, "ISO 8859-11", ""},
    KnownEncoding{TextEncoding::kIso8859_13, "ISO 8859-13", "ISOLatin7"},
    KnownEncoding{TextEncoding::kIso8859_14, "ISO 8859-14", "ISOLatin8"},
    KnownEncoding{TextEncoding::kIso8859_15, "ISO 8859-15", "ISOLatin9"},
    KnownEncoding{TextEncoding::kWindows1252, "Windows-1252", "WindowsANSI"},
    KnownEncoding{TextEncoding::kWindows1250, "Windows-1250", "WindowsLatin2"},
    KnownEncoding{TextEncoding::kWindows1251, "Windows-1251", "WindowsCyrillic"},
    KnownEncoding{TextEncoding::kWindows1253, "Windows-1253", "WindowsGreek"},
    KnownEncoding{TextEncoding::kWindows1254, "Windows-1254", "WindowsLatin5"},
    KnownEncoding{TextEncoding::kWindows1255, "Windows-1255", "WindowsHebrew"},
    KnownEncoding{TextEncoding::kWindows1256, "Windows-1256", "WindowsArabic"},
    KnownEncoding{TextEncoding::kWindows1257, "Windows-1257", "WindowsBalticRim"},
    KnownEncoding{TextEncoding::kWindows1258, "Windows-1258", "WindowsVietnamese"},
    KnownEncoding{TextEncoding::kKoi8R, "KOI8-R", "KOI8_R"},
    KnownEncoding{TextEncoding::kWindows932, "Windows-932", "ShiftJIS"},
    KnownEncoding{TextEncoding::kWindows936, "Windows-936", "GBK"},
    KnownEncoding{TextEncoding::kWindows949, "Windows-949", "WindowsKorean"},
    KnownEncoding{TextEncoding::kWindows950, "Windows-950", "Big5"},
};
static_assert(kEncodings.size() == kKnownEncodings);

constexpr std::size_t IndexOf(TextEncoding encoding) {
  std::size_t index = 0;
  while (kEncodings[index].encoding != encoding) ++index;
  return index;
}

constexpr std::size_t kIndexOfUtf8 = IndexOf(TextEncoding::kUtf8);
constexpr std::size_t kIndexOfRawBytes = IndexOf(TextEncoding::kRawBytes);

// The index of an encoding in kEncodings, by its code; kKnownEncodings for codes that mean nothing.
constexpr auto kIndexOfCode = [] {
  std::array<std::uint8_t, 0xA03> table{};
  table.fill(kKnownEncodings);
  for (std::size_t index = 0; index < kEncodings.size(); ++index) {
    const auto code = static_cast<std::uint32_t>(kEncodings[index].encoding);
    if (code < table.size()) table[code] = static_cast<std::uint8_t>(index);
  }
  return table;
}();

unsigned char Byte(std::string_view bytes, std::size_t index) { return static_cast<unsigned char>(bytes[index]); }

char32_t NextUtf8(std::string_view bytes, std::size_t &offset) {
  if (Byte(bytes, offset) < 0x80) return Byte(bytes, offset++);
  const char *start = bytes.data() + offset;
  const char *end = bytes.data() + std::min(bytes.size(), offset + 4);
  if (utf8::find_invalid(start, end) == start) return kInvalidUnit + Byte(bytes, offset++);
  const char *next = start;
  const char32_t character = static_cast<char32_t>(utf8::unchecked::next(next));
  offset += static_cast<std::size_t>(next - start);
  return character;
}

char16_t Utf16Unit(std::string_view bytes, std::size_t offset) {
  const unsigned first = Byte(bytes, offset);
  const unsigned second = Byte(bytes, offset + 1);
  const bool little = std::endian::native == std::endian::little;
  return static_cast<char16_t>(little ? first | second << 8 : first << 8 | second);
}

char32_t NextUtf16(std::string_view bytes, std::size_t &offset) {
  if (bytes.size() - offset < 2) return kInvalidUnit + Byte(bytes, offset++);
  const char32_t unit = Utf16Unit(bytes, offset);
  offset += 2;
  if (unit < 0xD800 || unit > 0xDFFF) return unit;
  if (unit < 0xDC00 && bytes.size() - offset >= 2) {
    const char32_t low = Utf16Unit(bytes, offset);
    if (low >= 0xDC00 && low <= 0xDFFF) {
      offset += 2;
      return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
    }
  }
  return kInvalidUnit + unit;
}

void AppendUtf16Unit(char16_t unit, char *&end) {
  std::memcpy(end, &unit, sizeof unit);
  end += sizeof unit;
}

void AppendUtf16(char32_t character, char *&end) {
  if (character < 0x10000) {
    AppendUtf16Unit(static_cast<char16_t>(character), end);
    return;
  }
  AppendUtf16Unit(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)), end);
  AppendUtf16Unit(static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)), end);
}

/// The tables of a set of one or two bytes; null for the encodings that need none.
const CodePage *PageOf(TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::kUtf8:
    case TextEncoding::kUtf16:
    case TextEncoding::kAscii:
    case TextEncoding::kRawBytes:
      return nullptr;
    default:
      return CodePage::Find(encoding);
  }
}

bool IsScalar(char32_t character) { return character < 0xD800 || (character > 0xDFFF && character < 0x110000); }

}  // namespace

std::span<const KnownEncoding, kKnownEncodings> KnownEncodings() { return kEncodings; }

std::size_t IndexOfEncoding(TextEncoding encoding) {
  const auto code = static_cast<std::uint32_t>(encoding);
  if (code < kIndexOfCode.size()) return kIndexOfCode[code];
  if (encoding == TextEncoding::kUtf8) return kIndexOfUtf8;
  return encoding == TextEncoding::kRawBytes ? kIndexOfRawBytes : kKnownEncodings;
}

std::string_view EncodingName(TextEncoding encoding) {
  return IsKnownEncoding(encoding) ? kEncodings[IndexOfEncoding(encoding)].name : "unknown encoding";
}

char32_t DecodeNext(std::string_view bytes, TextEncoding encoding, std::size_t &offset) {
  switch (encoding) {
    case TextEncoding::kUtf8:
      return NextUtf8(bytes, offset);
    case TextEncoding::kUtf16:
      return NextUtf16(bytes, offset);
    case TextEncoding::kRawBytes:
      return Byte(bytes, offset++);
    case TextEncoding::kAscii: {
      const unsigned char byte = Byte(bytes, offset++);
      return byte < 0x80 ? char32_t{byte} : kInvalidUnit + byte;
    }
    default:
      break;
  }
  if (const CodePage *page = CodePage::Find(encoding)) return page->DecodeNext(bytes, offset);
  return Byte(bytes, offset++);
}

std::u32string Decode(std::string_view bytes, TextEncoding encoding) {
  std::u32string text;
  text.reserve(bytes.size());
  for (CharacterReader reader(bytes, encoding); !reader.AtEnd();) text.push_back(reader.Next());
  return text;
}

std::string Encode(std::u32string_view text, TextEncoding encoding) {
  std::string bytes(text.size() * CharacterWriter::kLongestCode, '\0');
  CharacterWriter writer(bytes.data(), encoding);
  for (const char32_t character : text) writer.Append(character);
  bytes.resize(static_cast<std::size_t>(writer.End() - bytes.data()));
  return bytes;
}

std::size_t TranscodeRoom(std::size_t byteCount, TextEncoding from, TextEncoding to) {
  constexpr std::size_t kBlock = 8;  // ASCII is copied in blocks, past its end
  // A byte of a small set, or one that means nothing, becomes a character of the basic plane or U+FFFD.
  if (to == TextEncoding::kUtf8) return byteCount * 3 + kBlock;
  // No character is shorter in UTF-8 than in a set of one or two bytes.
  const bool neverGrows = from == TextEncoding::kUtf8 && to != TextEncoding::kUtf16;
  return (neverGrows || to == TextEncoding::kRawBytes ? byteCount : byteCount * 2) + kBlock;
}

Transcoded TranscodeInto(char *out, std::string_view bytes, TextEncoding from, TextEncoding to, bool isValid) {
  if (from == to || to == TextEncoding::kRawBytes) {
    if (!bytes.empty()) std::memcpy(out, bytes.data(), bytes.size());
    return {bytes.size(), from == to};
  }
  CharacterReader reader(bytes, from, isValid);
  CharacterWriter writer(out, to);
  const bool copiesAscii = IsAsciiCompatible(from) && IsAsciiCompatible(to);
  while (!reader.AtEnd()) {
    if (copiesAscii && reader.IsAtAscii()) reader.Skip(writer.AppendAsciiPrefix(reader.Rest()));
    if (!reader.AtEnd()) writer.Append(reader.Next());
  }
  return {static_cast<std::size_t>(writer.End() - out), !writer.LostAny()};
}

std::string Transcode(std::string_view bytes, TextEncoding from, TextEncoding to) {
  std::string converted(TranscodeRoom(bytes.size(), from, to), '\0');
  converted.resize(TranscodeInto(converted.data(), bytes, from, to).byteCount);
  return converted;
}

bool IsValidUtf8(std::string_view bytes) {
  const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
  for (bytes.remove_prefix(AsciiPrefix(bytes)); !bytes.empty(); bytes.remove_prefix(AsciiPrefix(bytes))) {
    const auto end = std::ranges::find_if(bytes, isAscii);
    if (utf8::find_invalid(bytes.begin(), end) != end) return false;
    bytes.remove_prefix(static_cast<std::size_t>(end - bytes.begin()));
  }
  return true;
}

// -- Whole texts ----------------------------------------------------------------------------------

CharacterReader::CharacterReader(std::string_view bytes, TextEncoding encoding, bool isValid)
    : bytes_(bytes),
      encoding_(encoding),
      page_(PageOf(encoding)),
      asciiFirst_(IsAsciiCompatible(encoding)),
      validEnd_(isValid ? bytes.size() : 0) {}

char32_t CharacterReader::NextOther() {
  if (encoding_ != TextEncoding::kUtf8) return DecodeNext(bytes_, encoding_, offset_);
  const char *start = bytes_.data() + offset_;
  if (offset_ >= validEnd_) {
    const char *invalid = utf8::find_invalid(start, bytes_.data() + bytes_.size());
    if (invalid == start) return kInvalidUnit + Byte(bytes_, offset_++);
    validEnd_ = static_cast<std::size_t>(invalid - bytes_.data());
  }
  const char *next = start;
  const char32_t character = static_cast<char32_t>(utf8::unchecked::next(next));
  offset_ += static_cast<std::size_t>(next - start);
  return character;
}

CharacterWriter::CharacterWriter(char *start, TextEncoding encoding)
    : end_(start), encoding_(encoding), page_(PageOf(encoding)), asciiFirst_(IsAsciiCompatible(encoding)) {}

bool CharacterWriter::AppendOther(char32_t character) {
  switch (encoding_) {
    case TextEncoding::kUtf8:
      end_ = utf8::unchecked::append(IsScalar(character) ? character : kReplacement, end_);
      return IsScalar(character);
    case TextEncoding::kUtf16:
      AppendUtf16(IsScalar(character) ? character : kReplacement, end_);
      return IsScalar(character);
    case TextEncoding::kAscii:
      *end_++ = '?';  // what it holds has been written already
      return false;
    default:
      *end_++ = character < 0x100 ? static_cast<char>(character) : '?';
      return character < 0x100;
  }
}

}  // namespace quillbar::host
