// SPDX-License-Identifier: MIT
#include "host/runtime/code_page.h"

#include <memory>

#include "host/runtime/platform/charset.h"
#include "host/runtime/text_encoding.h"

namespace quillbar::host {
namespace {

unsigned char Byte(std::string_view bytes, std::size_t index) { return static_cast<unsigned char>(bytes[index]); }

}  // namespace

const CodePage *CodePage::Find(TextEncoding encoding) {
  struct Entry {
    bool wasSought = false;
    std::unique_ptr<const CodePage> page;
  };
  static std::array<Entry, kKnownEncodings> entries;
  const std::size_t index = IndexOfEncoding(encoding);
  if (index >= entries.size()) return nullptr;
  Entry &entry = entries[index];
  if (!entry.wasSought) {
    entry.wasSought = true;
    if (const std::unique_ptr<platform::Charset> charset = platform::Charset::Open(encoding))
      entry.page.reset(new CodePage(*charset));
  }
  return entry.page.get();
}

CodePage::CodePage(platform::Charset &charset) : encoded_(0x10000, kLacking) {
  bool hasPairs = false;
  for (std::size_t first = 0; first < 256; ++first) {
    const char byte = static_cast<char>(first);
    single_[first] = charset.Decode({&byte, 1});
    if (single_[first] != kUndefined)
      encoded_[static_cast<std::size_t>(single_[first])] = static_cast<std::uint16_t>(first);
  }
  for (std::size_t first = 0x80; first < 256; ++first) {
    if (single_[first] != kUndefined) continue;
    for (std::size_t second = 0x20; second < 256; ++second) {
      const std::array<char, 2> bytes{static_cast<char>(first), static_cast<char>(second)};
      const std::int32_t character = charset.Decode({bytes.data(), bytes.size()});
      if (character == kUndefined) continue;
      if (!hasPairs) pair_.assign(0x10000, 0);
      hasPairs = true;
      isLead_[first] = true;
      pair_[first << 8 | second] = static_cast<char16_t>(character);
    }
  }
  if (!hasPairs) return;
  // Some characters have several codes; the platform knows which one to write.
  for (std::size_t code = 0x8000; code < pair_.size(); ++code) {
    const char16_t character = pair_[code];
    if (character == 0 || encoded_[character] != kLacking) continue;
    const std::int32_t written = charset.Encode(character);
    const bool comesBack = written > 0xFF && pair_[static_cast<std::size_t>(written)] == character;
    encoded_[character] = static_cast<std::uint16_t>(comesBack ? static_cast<std::size_t>(written) : code);
  }
}

char32_t CodePage::DecodePair(std::string_view bytes, std::size_t &offset) const {
  const unsigned char first = Byte(bytes, offset++);
  if (isLead_[first] && offset < bytes.size()) {
    const char16_t character = pair_[static_cast<std::size_t>(first) << 8 | Byte(bytes, offset)];
    if (character != 0) {
      ++offset;
      return character;
    }
  }
  return kInvalidUnit + first;
}

}  // namespace quillbar::host
