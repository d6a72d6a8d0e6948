// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "host/runtime/handles.h"

/// The string operations of the host language, in one place for the services, the global methods and the
/// script language. Positions and lengths count characters (Unicode code points) unless said
/// otherwise.
namespace quillbar::host::text {

enum class Comparison {
  kIgnoreCase,     // like "=" in scripts; StrComp mode 0 and RuntimeStringCompare
  kCaseSensitive,  // StrComp mode 1
};

std::int64_t Length(const StringHandle &text);
/// Bytes of the stored form.
std::int64_t ByteLength(const StringHandle &text);
/// `start` counts from 1. What lies outside the text is left out; a start below 1 counts as 1. A negative
/// length means to the end.
StringHandle Middle(const StringHandle &text, std::int64_t start, std::int64_t length);
StringHandle Left(const StringHandle &text, std::int64_t length);
StringHandle Right(const StringHandle &text, std::int64_t length);
/// The code point of the first character, 0 for empty text, the byte itself where it means nothing.
std::int64_t CodePoint(const StringHandle &text);
/// One character; empty for numbers that are no character.
StringHandle Character(std::int64_t codePoint);

/// Below 0, 0 or above 0. Compares characters, whatever the two encodings are, so a converted string
/// equals its original exactly when the conversion lost nothing.
int Compare(const StringHandle &a, const StringHandle &b, Comparison comparison);

/// The same text in another encoding; the string itself when it has that encoding already.
StringHandle Convert(const StringHandle &text, TextEncoding encoding);
/// The same bytes, taken as another encoding.
StringHandle Define(const StringHandle &text, TextEncoding encoding);

/// In the encoding of the first non-empty part if both have it, else in UTF-8.
StringHandle Concatenate(const StringHandle &a, const StringHandle &b);

/// Unicode's simple one-to-one case mappings, independent of the user's locale.
StringHandle UpperCase(const StringHandle &text);
StringHandle LowerCase(const StringHandle &text);

/// The character position of `part` in `text`, counted from 1, at or behind `start`; 0 when absent.
std::int64_t Find(const StringHandle &text, const StringHandle &part, std::int64_t start, Comparison comparison);

}  // namespace quillbar::host::text
