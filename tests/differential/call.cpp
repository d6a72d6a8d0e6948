// SPDX-License-Identifier: MIT
#include "tests/differential/call.h"

#include <fmt/format.h>

namespace quillbar::differential {

namespace {

std::string Singles(const Call &call, std::size_t first, std::size_t count) {
  std::string text;
  for (std::size_t index = first; index < first + count; ++index)
    text += fmt::format("{}{:.9g}", text.empty() ? "" : ", ", call.singles[index]);
  return text;
}

std::string Quoted(const std::string &bytes) {
  constexpr std::size_t kMost = 200;
  std::string text = "\"";
  for (const char byte : bytes.substr(0, kMost)) {
    const auto code = static_cast<unsigned char>(byte);
    text += code >= 0x20 && code < 0x7F ? std::string(1, byte) : fmt::format("\\x{:02X}", code);
  }
  return text + (bytes.size() > kMost ? fmt::format("\"… ({} bytes)", bytes.size()) : "\"");
}

}  // namespace

std::string Describe(const Call &call, const Sequence &sequence) {
  const MemberDescription &member = DescriptionOf(call.member);
  const std::string singles = Singles(call, 0, member.singles);
  switch (member.shape) {
    case Shape::kSingles:
      return fmt::format("page.{}({})", member.name, singles);
    case Shape::kSetSingle:
      return fmt::format("page.{} = {}", member.name, singles);
    case Shape::kSetNumber:
      return fmt::format("page.{} = {}", member.name, call.first);
    case Shape::kSetColor:
      return fmt::format("page.{} = &h{:08X}", member.name, static_cast<std::uint32_t>(call.first));
    case Shape::kSetBoolean:
      return fmt::format("page.{} = {}", member.name, call.flag);
    case Shape::kSize:
      return fmt::format("page.{}({}, {})", member.name, call.first, call.second);
    case Shape::kDashPattern: {
      std::string numbers;
      for (const std::uint16_t dash : call.dashes) numbers += fmt::format("{}{}", numbers.empty() ? "" : ", ", dash);
      return fmt::format("page.{}(Array({}), {})", member.name, numbers, call.phase);
    }
    case Shape::kFont: {
      const FontChoice &font = sequence.fonts[static_cast<std::size_t>(call.first)];
      return fmt::format("page.{}(document.GetFont(\"{}\", {}), {})", member.name, font.name, font.encoding, singles);
    }
    case Shape::kMeasure:
    case Shape::kMeasureInto:
      return fmt::format("page.{}({}, {}, {}{})", member.name, Quoted(call.text), singles, call.flag,
                         member.shape == Shape::kMeasure ? "" : ", outWidth");
    case Shape::kCountLines:
      return fmt::format("page.{}({}, {}, lines)", member.name, Quoted(call.text), singles);
    case Shape::kBox:
      return fmt::format("page.{}({}, {}, {}, length)", member.name, Quoted(call.text), singles, call.first);
    case Shape::kDocument:
      return fmt::format("document.{}()", member.name);
  }
  return {};
}

}  // namespace quillbar::differential
