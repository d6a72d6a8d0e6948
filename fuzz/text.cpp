// SPDX-License-Identifier: MIT
// The input is text: two bytes that name its encodings, two that name a part of it, then the text, which is compared
// with the rest as another encoding has it.
#include "host/runtime/text.h"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "fuzz/demand.h"
#include "host/runtime/text_encoding.h"

namespace {

using namespace quillbar;
using host::Decode;
using host::StringHandle;
namespace text = host::text;

/// Every known encoding once, and one that is unknown.
constexpr auto kEncodings = std::to_array<std::uint32_t>(
    {0x08000100, 0x100, 0x600, 0xFFFF, 0,     0x201, 0x202, 0x203, 0x204, 0x205,  0x206, 0x207,
     0x208,      0x209, 0x20A, 0x20B,  0x20D, 0x20E, 0x20F, 0x500, 0x501, 0x502,  0x503, 0x504,
     0x505,      0x506, 0x507, 0x508,  0xA02, 0x420, 0x421, 0x422, 0x423, 0x12345});
static_assert(kEncodings.size() == host::kKnownEncodings + 1);

TextEncoding EncodingAt(std::uint8_t number) {
  return static_cast<TextEncoding>(kEncodings[number % kEncodings.size()]);
}

void CheckTranscoding(std::string_view bytes, TextEncoding from, TextEncoding to) {
  // As much memory as was promised to be enough, and not a byte more.
  const std::size_t room = host::TranscodeRoom(bytes.size(), from, to);
  const auto buffer = std::make_unique_for_overwrite<char[]>(room);
  const bool isValid = from == TextEncoding::kUtf8 && host::IsValidUtf8(bytes);
  const host::Transcoded result = host::TranscodeInto(buffer.get(), bytes, from, to, isValid);
  fuzz::Demand(result.byteCount <= room, "a conversion stays inside its room");
  const std::string_view converted(buffer.get(), result.byteCount);
  fuzz::Demand(host::Transcode(bytes, from, to) == converted, "a promise of valid UTF-8 changes no conversion");
  if (result.isLossless) {
    fuzz::Demand(Decode(converted, to) == Decode(bytes, from), "a lossless conversion keeps the characters");
  }
  if (to == TextEncoding::kUtf8 && from != to)
    fuzz::Demand(host::IsValidUtf8(converted), "a conversion to UTF-8 is well-formed");
}

int Order(const std::u32string &a, const std::u32string &b) { return a < b ? -1 : a > b ? 1 : 0; }

void CheckParts(const StringHandle &string, std::int64_t start, std::int64_t length) {
  const std::u32string characters = Decode(string.Bytes(), string.Encoding());
  const auto count = static_cast<std::int64_t>(characters.size());
  fuzz::Demand(text::Length(string) == count, "the length counts the characters");
  const auto first = static_cast<std::size_t>(std::clamp<std::int64_t>(start, 1, count + 1) - 1);
  const std::size_t most = length < 0 ? std::u32string::npos : static_cast<std::size_t>(length);
  const StringHandle middle = text::Middle(string, start, length);
  fuzz::Demand(Decode(middle.Bytes(), middle.Encoding()) == characters.substr(first, most),
               "the middle of a text has the characters that stand there");
  const StringHandle right = text::Right(string, length);
  fuzz::Demand(text::Length(right) == std::clamp<std::int64_t>(length, 0, count),
               "the right end is as long as was asked for");
}

void CheckComparison(const StringHandle &a, const StringHandle &b) {
  using text::Comparison;
  const int order = text::Compare(a, b, Comparison::kCaseSensitive);
  fuzz::Demand(order == Order(Decode(a.Bytes(), a.Encoding()), Decode(b.Bytes(), b.Encoding())),
               "texts are ordered by their characters");
  const int folded = text::Compare(a, b, Comparison::kIgnoreCase);
  fuzz::Demand(folded == -text::Compare(b, a, Comparison::kIgnoreCase), "the order has two sides");
  fuzz::Demand(order != 0 || folded == 0, "what is equal is equal in any case of letters");
  const std::int64_t found = text::Find(a, b, 1, Comparison::kCaseSensitive);
  fuzz::Demand(a.IsEmpty() || b.IsEmpty() ||
                   (found > 0) ==
                       (Decode(a.Bytes(), a.Encoding()).find(Decode(b.Bytes(), b.Encoding())) != std::u32string::npos),
               "a part is found at its position");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  constexpr std::size_t kHead = 4;
  if (size < kHead) return 0;
  const TextEncoding from = EncodingAt(data[0]), to = EncodingAt(data[1]);
  const auto start = static_cast<std::int8_t>(data[2]), length = static_cast<std::int8_t>(data[3]);
  const std::string_view bytes(reinterpret_cast<const char *>(data) + kHead, size - kHead);

  fuzz::Demand(host::IsValidUtf8(bytes) == utf8::is_valid(bytes.begin(), bytes.end()),
               "UTF-8 is what the Unicode Standard calls well-formed");
  CheckTranscoding(bytes, from, to);

  const std::size_t half = bytes.size() / 2;
  const StringHandle one = StringHandle::FromBytes(bytes.substr(0, half), from);
  const StringHandle other = StringHandle::FromBytes(bytes.substr(half), to);
  CheckParts(one, start, length);
  CheckParts(one, length, start);
  CheckComparison(one, other);
  CheckComparison(one, text::Convert(one, to));
  CheckComparison(text::Concatenate(one, other), other);
  CheckComparison(text::UpperCase(one), text::LowerCase(one));
  return 0;
}
