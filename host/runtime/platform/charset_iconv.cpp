// SPDX-License-Identifier: MIT
#include <iconv.h>

#include <array>
#include <string>

#include "host/runtime/platform/charset.h"

namespace quillbar::host::platform {
namespace {

/// The name under which iconv(3) knows the set; empty when there is none.
std::string IconvName(TextEncoding encoding) {
  const auto countFrom = [encoding](TextEncoding first) {
    return static_cast<std::uint32_t>(encoding) - static_cast<std::uint32_t>(first);
  };
  if (encoding >= TextEncoding::kIso8859_1 && encoding <= TextEncoding::kIso8859_15) {
    const std::uint32_t part = 1 + countFrom(TextEncoding::kIso8859_1);
    return part == 12 ? std::string() : "ISO-8859-" + std::to_string(part);
  }
  if (encoding >= TextEncoding::kWindows1253 && encoding <= TextEncoding::kWindows1258)
    return "CP" + std::to_string(1253 + countFrom(TextEncoding::kWindows1253));
  switch (encoding) {
    case TextEncoding::kMacRoman:
      return "MACINTOSH";
    case TextEncoding::kWindows1252:
      return "CP1252";
    case TextEncoding::kWindows1250:
      return "CP1250";
    case TextEncoding::kWindows1251:
      return "CP1251";
    case TextEncoding::kKoi8R:
      return "KOI8-R";
    case TextEncoding::kWindows932:
      return "CP932";
    case TextEncoding::kWindows936:
      return "CP936";
    case TextEncoding::kWindows949:
      return "CP949";
    case TextEncoding::kWindows950:
      return "CP950";
    default:
      return {};
  }
}

class IconvCharset : public Charset {
 public:
  IconvCharset(iconv_t decoder, iconv_t encoder) : decoder_(decoder), encoder_(encoder) {}
  IconvCharset(const IconvCharset &) = delete;
  IconvCharset &operator=(const IconvCharset &) = delete;
  ~IconvCharset() override {
    iconv_close(decoder_);
    iconv_close(encoder_);
  }

  std::int32_t Decode(std::string_view bytes) override {
    std::array<char, 8> output{};
    const std::size_t size = Run(decoder_, bytes, output);
    if (size != 2) return -1;
    return static_cast<unsigned char>(output[0]) | static_cast<unsigned char>(output[1]) << 8;
  }

  std::int32_t Encode(char16_t character) override {
    const std::array<char, 2> input{static_cast<char>(character & 0xFF), static_cast<char>(character >> 8)};
    std::array<char, 8> output{};
    const std::size_t size = Run(encoder_, {input.data(), input.size()}, output);
    if (size == 1) return static_cast<unsigned char>(output[0]);
    if (size == 2) return static_cast<unsigned char>(output[0]) << 8 | static_cast<unsigned char>(output[1]);
    return -1;
  }

 private:
  /// Converts one character and returns the number of bytes written; 0 on any failure.
  static std::size_t Run(iconv_t converter, std::string_view input, std::array<char, 8> &output) {
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    char *from = const_cast<char *>(input.data());
    std::size_t fromLeft = input.size();
    char *to = output.data();
    std::size_t toLeft = output.size();
    if (iconv(converter, &from, &fromLeft, &to, &toLeft) == static_cast<std::size_t>(-1)) return 0;
    // Sets with combining marks hold a character back until they are flushed.
    if (iconv(converter, nullptr, nullptr, &to, &toLeft) == static_cast<std::size_t>(-1)) return 0;
    return output.size() - toLeft;
  }

  iconv_t decoder_;
  iconv_t encoder_;
};

/// Mac Roman by Apple's table; the C library has two characters of an older one.
class MacRoman : public Charset {
 public:
  explicit MacRoman(std::unique_ptr<Charset> older) : older_(std::move(older)) {}

  std::int32_t Decode(std::string_view bytes) override {
    if (bytes == "\xC6") return kIncrement;
    if (bytes == "\xF0") return kApple;
    return older_->Decode(bytes);
  }

  std::int32_t Encode(char16_t character) override {
    if (character == kIncrement) return 0xC6;
    if (character == kApple) return 0xF0;
    const std::int32_t code = older_->Encode(character);
    return code == 0xC6 || code == 0xF0 ? -1 : code;
  }

 private:
  static constexpr char16_t kIncrement = 0x2206;
  static constexpr char16_t kApple = 0xF8FF;

  std::unique_ptr<Charset> older_;
};

std::unique_ptr<Charset> OpenIconv(TextEncoding encoding) {
  const auto failed = reinterpret_cast<iconv_t>(-1);
  const std::string name = IconvName(encoding);
  if (name.empty()) return nullptr;
  const iconv_t decoder = iconv_open("UTF-16LE", name.c_str());
  if (decoder == failed) return nullptr;
  const iconv_t encoder = iconv_open(name.c_str(), "UTF-16LE");
  if (encoder == failed) {
    iconv_close(decoder);
    return nullptr;
  }
  return std::make_unique<IconvCharset>(decoder, encoder);
}

}  // namespace

std::unique_ptr<Charset> Charset::Open(TextEncoding encoding) {
  std::unique_ptr<Charset> charset = OpenIconv(encoding);
  if (charset == nullptr || encoding != TextEncoding::kMacRoman) return charset;
  return std::make_unique<MacRoman>(std::move(charset));
}

}  // namespace quillbar::host::platform
