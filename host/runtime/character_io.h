#pragma once

#include <string>
#include <string_view>

#include "host/runtime/code_page.h"
#include "host/runtime/text_encoding.h"

/// Whole texts, character by character. Unlike `DecodeNext`, what an encoding needs is looked up once.
namespace quillbar::host {

/// Reads the characters of a text by the rules of `Decode`. The bytes must outlive the reader.
class CharacterReader {
 public:
  CharacterReader(std::string_view bytes, TextEncoding encoding);

  bool AtEnd() const { return offset_ == bytes_.size(); }

  /// Only while not at the end.
  char32_t Next() {
    if (asciiFirst_) {
      const auto byte = static_cast<unsigned char>(bytes_[offset_]);
      if (byte < 0x80) {
        ++offset_;
        return byte;
      }
    }
    return page_ != nullptr ? page_->DecodeNext(bytes_, offset_) : NextOther();
  }

 private:
  char32_t NextOther();

  std::string_view bytes_;
  TextEncoding encoding_;
  const CodePage *page_;
  bool asciiFirst_;
  std::size_t offset_ = 0;
  std::size_t validEnd_ = 0;  // UTF-8 up to here has been checked
};

/// Appends characters to bytes by the rules of `Encode`.
class CharacterWriter {
 public:
  CharacterWriter(std::string &bytes, TextEncoding encoding);

  void Append(char32_t character) {
    if (character < 0x80 && asciiFirst_) {
      bytes_.push_back(static_cast<char>(character));
    } else if (page_ != nullptr) {
      page_->Append(character, bytes_);
    } else {
      AppendOther(character);
    }
  }

 private:
  void AppendOther(char32_t character);

  std::string &bytes_;
  TextEncoding encoding_;
  const CodePage *page_;
  bool asciiFirst_;
};

}  // namespace quillbar::host
