// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "host/runtime/code_page.h"
#include "host/runtime/text_encoding.h"

/// Whole texts, character by character. What an encoding needs is looked up once for a text, not for each character as
/// `DecodeNext` does.
namespace quillbar::host {

/// Eight bytes at once.
inline std::uint64_t EightBytes(const char *bytes) {
  std::uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

/// The top bits of eight bytes: 0 when all of them are ASCII.
inline std::uint64_t BeyondAscii(std::uint64_t word) { return word & 0x8080808080808080; }

/// How many bytes come before the first one that isn't ASCII. There must be such a byte.
inline std::size_t BytesBefore(std::uint64_t beyondAscii) {
  const bool isLittle = std::endian::native == std::endian::little;
  return static_cast<std::size_t>(isLittle ? std::countr_zero(beyondAscii) : std::countl_zero(beyondAscii)) / 8;
}

/// How many ASCII bytes `bytes` begins with.
inline std::size_t AsciiPrefix(std::string_view bytes) {
  std::size_t count = 0;
  for (; bytes.size() - count >= 8; count += 8) {
    const std::uint64_t others = BeyondAscii(EightBytes(bytes.data() + count));
    if (others != 0) return count + BytesBefore(others);
  }
  while (count < bytes.size() && static_cast<unsigned char>(bytes[count]) < 0x80) ++count;
  return count;
}

/// Reads the characters of a text by the rules of `Decode`. The bytes must outlive the reader.
class CharacterReader {
 public:
  /// `isValid` promises that UTF-8 is well-formed, so that it need not be checked.
  CharacterReader(std::string_view bytes, TextEncoding encoding, bool isValid = false);

  bool AtEnd() const { return offset_ == bytes_.size(); }
  /// The bytes that have not been read yet.
  std::string_view Rest() const { return bytes_.substr(offset_); }
  void Skip(std::size_t byteCount) { offset_ += byteCount; }

  /// Whether the next character is ASCII. Call it only before the end.
  bool IsAtAscii() const { return asciiFirst_ && static_cast<unsigned char>(bytes_[offset_]) < 0x80; }
  /// Reads the next character and moves past it. Call it only before the end.
  char32_t Next() {
    if (IsAtAscii()) return static_cast<unsigned char>(bytes_[offset_++]);
    return page_ != nullptr ? page_->DecodeNext(bytes_, offset_) : NextOther();
  }

 private:
  char32_t NextOther();

  std::string_view bytes_;
  TextEncoding encoding_;
  const CodePage *page_;
  bool asciiFirst_;
  std::size_t offset_ = 0;
  std::size_t validEnd_;  // UTF-8 up to here is well-formed
};

/// Writes characters as bytes by the rules of `Encode`.
class CharacterWriter {
 public:
  /// The longest code of a character.
  static constexpr std::size_t kLongestCode = 4;

  /// `start` must have room for every character that is appended.
  CharacterWriter(char *start, TextEncoding encoding);

  /// Appends one character.
  void Append(char32_t character) {
    if (character < 0x80 && asciiFirst_) {
      *end_++ = static_cast<char>(character);
    } else if (!(page_ != nullptr ? page_->Append(character, end_) : AppendOther(character))) {
      lostAny_ = true;
    }
  }
  /// Appends the ASCII bytes at the start of `bytes` and returns how many they are. Only for encodings in which ASCII
  /// keeps its bytes; there must be room for eight more bytes than that.
  std::size_t AppendAsciiPrefix(std::string_view bytes) {
    std::size_t count = 0;
    for (; bytes.size() - count >= 8; count += 8) {
      const std::uint64_t word = EightBytes(bytes.data() + count);
      std::memcpy(end_ + count, &word, sizeof word);
      if (const std::uint64_t others = BeyondAscii(word); others != 0) {
        count += BytesBefore(others);
        end_ += count;
        return count;
      }
    }
    for (; count < bytes.size() && static_cast<unsigned char>(bytes[count]) < 0x80; ++count) end_[count] = bytes[count];
    end_ += count;
    return count;
  }

  /// One past the last byte written.
  char *End() const { return end_; }
  /// Whether a character had to be replaced.
  bool LostAny() const { return lostAny_; }

 private:
  bool AppendOther(char32_t character);

  char *end_;
  TextEncoding encoding_;
  const CodePage *page_;
  bool asciiFirst_;
  bool lostAny_ = false;
};

}  // namespace quillbar::host
