// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/runtime/handles.h"

/// The string operations of the host language, in one place for the services, the global methods and the script
/// language. Positions and lengths count characters (Unicode code points) unless said otherwise.
namespace quillbar::host::text {

enum class Comparison {
  kIgnoreCase,     // like "=" in scripts; StrComp mode 0 and RuntimeStringCompare
  kCaseSensitive,  // StrComp mode 1
};

/// The number of characters.
std::int64_t Length(const StringHandle &text);
/// The number of bytes of the stored form.
std::int64_t ByteLength(const StringHandle &text);
/// `length` characters from `start`, which counts from 1. What is outside the text is left out; a start below 1 counts
/// as 1. A negative length means up to the end.
StringHandle Middle(const StringHandle &text, std::int64_t start, std::int64_t length);
StringHandle Left(const StringHandle &text, std::int64_t length);
StringHandle Right(const StringHandle &text, std::int64_t length);
/// The code point of the first character; 0 for empty text, the byte itself where it means nothing.
std::int64_t CodePoint(const StringHandle &text);
/// A text of one character; empty for numbers that are not characters.
StringHandle Character(std::int64_t codePoint);

/// Compares two texts: negative, 0 or positive. It compares characters, whatever the two encodings are, so a converted
/// string equals its original exactly when the conversion lost nothing.
int Compare(const StringHandle &a, const StringHandle &b, Comparison comparison);

/// A hash that is equal for texts which `Compare` without regard to case finds equal.
std::size_t Hash(const StringHandle &text);

/// The same text in another encoding; the string itself when it has that encoding already.
StringHandle Convert(const StringHandle &text, TextEncoding encoding);
/// The same bytes tagged with another encoding.
StringHandle Define(const StringHandle &text, TextEncoding encoding);

/// Both texts joined, in the encoding of the first part that isn't empty if both have it, else in UTF-8.
StringHandle Concatenate(const StringHandle &a, const StringHandle &b);

/// Makes `text` the same, in its own memory if nobody else has a reference to it. After an exception it is unchanged.
void Append(StringHandle &text, const StringHandle &more);

/// Unicode's simple one-to-one case mappings, independent of the user's locale.
StringHandle UpperCase(const StringHandle &text);
StringHandle LowerCase(const StringHandle &text);

/// Searches texts for a part, each in time that is linear in the text.
class Search {
 public:
  /// `part` must not be empty.
  Search(const StringHandle &part, Comparison comparison);

  /// Where a text has the part, in bytes.
  struct Match {
    std::size_t begin;
    std::size_t end;
  };
  /// The first match that begins at or after this byte, where a character must begin; nothing when there is none.
  std::optional<Match> Next(const StringHandle &text, std::size_t from) const;

 private:
  StringHandle part_;
  Comparison comparison_;
  bool isPlain_;                       // ASCII without letters: the bytes themselves are what is looked for
  std::u32string characters_;          // as they are compared
  std::vector<std::size_t> fallback_;  // where to go on after a mismatch (Knuth, Morris and Pratt)
};

/// The position of the first `part` in `text` at or after `start`, in characters counted from 1; 0 when there is none.
std::int64_t Find(const StringHandle &text, const StringHandle &part, std::int64_t start, Comparison comparison);

}  // namespace quillbar::host::text
