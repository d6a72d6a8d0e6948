// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "interface/values.h"

/// Text in the encodings that the host knows, to and from code points.
///
/// All encodings of TextEncoding are known. Each raw byte is the character of its number, and the four double-byte sets
/// are Microsoft's variants (code pages 932, 936, 949 and 950), because fonts and viewers map these.
namespace quillbar::host {

/// Decoding never fails: a byte (or UTF-16 unit) that means nothing at its position becomes a marker, this number plus
/// the byte or unit, beyond every code point of Unicode. So no two different inputs decode to the same text by
/// accident.
inline constexpr char32_t kInvalidUnit = 0x110000;
/// Whether a decoded character is a marker for an invalid byte or unit.
constexpr bool IsInvalid(char32_t character) { return character >= kInvalidUnit; }

inline constexpr std::size_t kKnownEncodings = 33;

/// An encoding with its name in messages ("Windows-1252") and in scripts ("WindowsANSI", empty when scripts have none).
struct KnownEncoding {
  TextEncoding encoding;
  std::string_view name;
  std::string_view scriptName;
};

/// Every encoding that the host knows.
std::span<const KnownEncoding, kKnownEncodings> KnownEncodings();

/// The index of a known encoding, below `kKnownEncodings`; each has its own.
std::size_t IndexOfEncoding(TextEncoding encoding);

inline bool IsKnownEncoding(TextEncoding encoding) { return IndexOfEncoding(encoding) < kKnownEncodings; }

/// A name for messages, for example "Windows-1252".
std::string_view EncodingName(TextEncoding encoding);

/// The characters of `bytes`. An unknown encoding reads as raw bytes.
std::u32string Decode(std::string_view bytes, TextEncoding encoding);

/// The bytes of `text`. A character that the encoding lacks, or that it could not give back as the same character,
/// becomes one "?"; an invalid marker becomes U+FFFD in encodings that have it, "?" in others.
std::string Encode(std::u32string_view text, TextEncoding encoding);

/// Converts bytes from one encoding to another, by the rules above. Conversion to raw bytes keeps the bytes; raw bytes
/// convert to other encodings as `Decode` reads them.
std::string Transcode(std::string_view bytes, TextEncoding from, TextEncoding to);

/// What `TranscodeInto` has done.
struct Transcoded {
  std::size_t byteCount;
  bool isLossless;  // the bytes decode to the same characters; may be false although they do
};

/// Does what `Transcode` does into `out`, which must have room for `TranscodeRoom` bytes. `isValid` promises that
/// UTF-8 is well-formed.
Transcoded TranscodeInto(char *out, std::string_view bytes, TextEncoding from, TextEncoding to, bool isValid = false);

/// The most bytes that the conversion of `byteCount` bytes can give.
std::size_t TranscodeRoom(std::size_t byteCount, TextEncoding from, TextEncoding to);

/// Whether all bytes are well-formed UTF-8.
bool IsValidUtf8(std::string_view bytes);

/// Whether ASCII text has the same bytes in this encoding: true for all known ones but UTF-16.
constexpr bool IsAsciiCompatible(TextEncoding encoding) { return encoding != TextEncoding::kUtf16; }

/// Decodes one character at `offset` and moves `offset` past it; there must be a byte at `offset`.
char32_t DecodeNext(std::string_view bytes, TextEncoding encoding, std::size_t &offset);

}  // namespace quillbar::host
