// SPDX-License-Identifier: MIT
#include "host/runtime/text.h"

#include <algorithm>
#include <cstring>

#include "host/runtime/character_io.h"
#include "host/runtime/platform/letter_case.h"
#include "host/runtime/string_pool.h"
#include "host/runtime/text_encoding.h"

namespace quillbar::host::text {
namespace {

StringHandle Make(std::string_view bytes, TextEncoding encoding) { return StringHandle::FromBytes(bytes, encoding); }

/// Whether the bytes are known to be well-formed; looked up once.
bool IsWellFormed(HostString &string) {
  if (string.encoding != TextEncoding::kUtf8) return false;
  if (string.form == HostString::Form::kUnknown)
    string.form = IsValidUtf8(string.View()) ? HostString::Form::kValid : HostString::Form::kInvalid;
  return string.form == HostString::Form::kValid;
}

CharacterReader ReaderOf(HostString &string) {
  return CharacterReader(string.View(), string.encoding, IsWellFormed(string));
}

bool OneByteEach(const HostString &string) {
  return string.isAscii || string.encoding == TextEncoding::kRawBytes || string.encoding == TextEncoding::kAscii;
}

/// The byte offset of a character counted from 0; the size in bytes when the text is shorter.
std::size_t OffsetOf(HostString &string, std::int64_t character) {
  const std::string_view bytes = string.View();
  if (OneByteEach(string)) return std::min(bytes.size(), static_cast<std::size_t>(character));
  if (character < string.cursorCharacter) {
    string.cursorCharacter = 0;
    string.cursorByte = 0;
  }
  while (string.cursorCharacter < character && string.cursorByte < bytes.size()) {
    DecodeNext(bytes, string.encoding, string.cursorByte);
    ++string.cursorCharacter;
  }
  return string.cursorByte;
}

char32_t Fold(char32_t character) { return platform::LowerCase(platform::UpperCase(character)); }

/// The same for ASCII, without a table.
constexpr char32_t FoldAscii(char32_t character) {
  return character - U'A' < 26 ? character + (U'a' - U'A') : character;
}

/// A character as it is compared.
char32_t Compared(char32_t character, Comparison comparison) {
  return comparison == Comparison::kIgnoreCase && !IsInvalid(character) ? Fold(character) : character;
}

StringHandle MapCharacters(const StringHandle &text, char32_t (*map)(char32_t)) {
  if (text.IsEmpty()) return {};
  // Bytes without an encoding have no letter case.
  if (text.Encoding() == TextEncoding::kRawBytes) return text;
  std::u32string characters = Decode(text.Bytes(), text.Encoding());
  std::ranges::transform(characters, characters.begin(),
                         [map](char32_t character) { return IsInvalid(character) ? character : map(character); });
  return Make(Encode(characters, text.Encoding()), text.Encoding());
}

template <class Number>
int Sign(Number a, Number b) {
  return a < b ? -1 : a > b ? 1 : 0;
}

}  // namespace

std::int64_t Length(const StringHandle &text) {
  if (text.IsEmpty()) return 0;
  HostString &string = *text.Get();
  if (string.length < 0) {
    string.length = 0;
    if (OneByteEach(string)) {
      string.length = static_cast<std::int64_t>(string.View().size());
    } else {
      for (CharacterReader reader = ReaderOf(string); !reader.AtEnd(); ++string.length) reader.Next();
    }
  }
  return string.length;
}

std::int64_t ByteLength(const StringHandle &text) { return static_cast<std::int64_t>(text.Bytes().size()); }

StringHandle Middle(const StringHandle &text, std::int64_t start, std::int64_t length) {
  if (text.IsEmpty() || length == 0) return {};
  HostString &string = *text.Get();
  const std::string_view bytes = string.View();
  const auto size = static_cast<std::int64_t>(bytes.size());
  const std::int64_t first = std::clamp<std::int64_t>(start, 1, size + 1) - 1;
  const std::int64_t count = length < 0 ? size : std::min(length, size);
  const std::size_t begin = OffsetOf(string, first);
  const std::size_t end = OffsetOf(string, first + count);
  if (begin == 0 && end == bytes.size()) return text;
  return Make(bytes.substr(begin, end - begin), string.encoding);
}

StringHandle Left(const StringHandle &text, std::int64_t length) {
  return length <= 0 ? StringHandle() : Middle(text, 1, length);
}

StringHandle Right(const StringHandle &text, std::int64_t length) {
  if (length <= 0) return {};
  return Middle(text, Length(text) - std::min(length, Length(text)) + 1, -1);
}

std::int64_t CodePoint(const StringHandle &text) {
  if (text.IsEmpty()) return 0;
  std::size_t offset = 0;
  const char32_t character = DecodeNext(text.Bytes(), text.Encoding(), offset);
  return static_cast<std::int64_t>(IsInvalid(character) ? character - kInvalidUnit : character);
}

StringHandle Character(std::int64_t codePoint) {
  const bool isCharacter = codePoint >= 0 && codePoint < 0x110000 && (codePoint < 0xD800 || codePoint > 0xDFFF);
  if (!isCharacter) return {};
  const auto character = static_cast<char32_t>(codePoint);
  return Make(Encode({&character, 1}, TextEncoding::kUtf8), TextEncoding::kUtf8);
}

int Compare(const StringHandle &a, const StringHandle &b, Comparison comparison) {
  if (a.IsEmpty() || b.IsEmpty()) return Sign<int>(!a.IsEmpty(), !b.IsEmpty());
  HostString &left = *a.Get();
  HostString &right = *b.Get();
  if (left.losslessOf == right.number || right.losslessOf == left.number) return 0;
  const bool byBytes = (left.isAscii && right.isAscii) || left.encoding == right.encoding;
  if (byBytes && left.View() == right.View()) return 0;
  if (left.isAscii && right.isAscii && comparison == Comparison::kCaseSensitive) {
    return Sign(left.View().compare(right.View()), 0);
  }
  CharacterReader leftReader = ReaderOf(left);
  CharacterReader rightReader = ReaderOf(right);
  while (!leftReader.AtEnd() && !rightReader.AtEnd()) {
    char32_t leftCharacter = leftReader.Next();
    char32_t rightCharacter = rightReader.Next();
    if (leftCharacter != rightCharacter) {
      leftCharacter = Compared(leftCharacter, comparison);
      rightCharacter = Compared(rightCharacter, comparison);
    }
    if (leftCharacter != rightCharacter) return Sign(leftCharacter, rightCharacter);
  }
  return Sign<int>(!leftReader.AtEnd(), !rightReader.AtEnd());
}

std::size_t Hash(const StringHandle &text) {
  if (text.IsEmpty()) return 0;
  HostString &string = *text.Get();
  std::uint64_t hash = 0xCBF29CE484222325;  // Fowler, Noll and Vo's, over characters
  const auto add = [&](char32_t character) { hash = (hash ^ character) * 0x100000001B3; };
  if (string.isAscii) {
    for (const char byte : string.View()) add(FoldAscii(static_cast<unsigned char>(byte)));
  } else {
    for (CharacterReader reader = ReaderOf(string); !reader.AtEnd();) {
      add(Compared(reader.Next(), Comparison::kIgnoreCase));
    }
  }
  return static_cast<std::size_t>(hash ^ hash >> 32);
}

StringHandle Convert(const StringHandle &text, TextEncoding encoding) {
  if (text.IsEmpty() || text.Encoding() == encoding) return text;
  HostString &original = *text.Get();
  const std::string_view bytes = original.View();
  const bool staysAscii = original.isAscii && IsAsciiCompatible(encoding);
  const bool isWellFormed = staysAscii || IsWellFormed(original);
  bool isLossless = staysAscii;
  const std::size_t room = staysAscii ? bytes.size() : TranscodeRoom(bytes.size(), original.encoding, encoding);
  HostString *converted = StringPool::Instance().Create(room, encoding, [&](char *out) {
    if (staysAscii) {
      std::memcpy(out, bytes.data(), bytes.size());
      return bytes.size();
    }
    const Transcoded end = TranscodeInto(out, bytes, original.encoding, encoding, isWellFormed);
    isLossless = end.isLossless;
    return end.byteCount;
  });
  converted->isAscii =
      staysAscii || (IsAsciiCompatible(encoding) && AsciiPrefix(converted->View()) == converted->View().size());
  converted->losslessOf = isLossless ? original.number : 0;
  return StringHandle(converted);
}

StringHandle Define(const StringHandle &text, TextEncoding encoding) {
  if (text.IsEmpty() || text.Encoding() == encoding) return text;
  return Make(text.Bytes(), encoding);
}

StringHandle Concatenate(const StringHandle &a, const StringHandle &b) {
  if (a.IsEmpty()) return b;
  if (b.IsEmpty()) return a;
  std::string bytes;
  if (a.Encoding() == b.Encoding() || (a.Get()->isAscii && b.Get()->isAscii) ||
      (b.Get()->isAscii && IsAsciiCompatible(a.Encoding()))) {
    bytes.reserve(a.Bytes().size() + b.Bytes().size() + 1);
    bytes.append(a.Bytes()).append(b.Bytes());
    return Make(bytes, a.Encoding());
  }
  const TextEncoding encoding =
      a.Get()->isAscii && IsAsciiCompatible(b.Encoding()) ? b.Encoding() : TextEncoding::kUtf8;
  bytes = Transcode(a.Bytes(), a.Encoding(), encoding);
  bytes += Transcode(b.Bytes(), b.Encoding(), encoding);
  return Make(bytes, encoding);
}

void Append(StringHandle &text, const StringHandle &more) {
  const bool isAlone = !text.IsEmpty() && !more.IsEmpty() && text.Get()->hostReferences == 1 &&
                       !text.Get()->PluginMayUse() && !text.Get()->wasGiven;
  const bool staysSame =
      isAlone && (text.Encoding() == more.Encoding() || (more.Get()->isAscii && IsAsciiCompatible(text.Encoding())));
  if (!staysSame || text.Get() == more.Get()) {
    text = Concatenate(text, more);
    return;
  }
  StringPool::Instance().Append(*text.Get(), more.Bytes());
  text.Get()->isAscii = text.Get()->isAscii && more.Get()->isAscii;
}

StringHandle UpperCase(const StringHandle &text) { return MapCharacters(text, platform::UpperCase); }
StringHandle LowerCase(const StringHandle &text) { return MapCharacters(text, platform::LowerCase); }

Search::Search(const StringHandle &part, Comparison comparison)
    : part_(part), comparison_(comparison), isPlain_(part.Get()->isAscii), fallback_(1, 0) {
  for (CharacterReader reader = ReaderOf(*part.Get()); !reader.AtEnd();) {
    characters_ += Compared(reader.Next(), comparison);
  }
  for (const char byte : part.Bytes()) {
    const bool isLetter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    isPlain_ = isPlain_ && (!isLetter || comparison == Comparison::kCaseSensitive);
  }
  for (std::size_t i = 1, matched = 0; i < characters_.size(); ++i) {
    while (matched > 0 && characters_[i] != characters_[matched]) matched = fallback_[matched - 1];
    if (characters_[i] == characters_[matched]) ++matched;
    fallback_.push_back(matched);
  }
}

std::optional<Search::Match> Search::Next(const StringHandle &text, std::size_t from) const {
  if (text.IsEmpty()) return std::nullopt;
  HostString &string = *text.Get();
  const std::string_view bytes = string.View();
  if (isPlain_ && (string.isAscii || string.encoding == TextEncoding::kUtf8)) {
    const std::size_t found = bytes.find(part_.Bytes(), from);
    if (found == std::string_view::npos) return std::nullopt;
    return Match{found, found + part_.Bytes().size()};
  }
  // Where the last characters began, as many as the part has.
  std::vector<std::size_t> begins(characters_.size());
  CharacterReader reader(bytes.substr(from), string.encoding, IsWellFormed(string));
  std::size_t matched = 0;
  for (std::size_t count = 0; !reader.AtEnd(); ++count) {
    begins[count % begins.size()] = bytes.size() - reader.Rest().size();
    const char32_t character = Compared(reader.Next(), comparison_);
    while (matched > 0 && character != characters_[matched]) matched = fallback_[matched - 1];
    if (character == characters_[matched]) ++matched;
    if (matched < characters_.size()) continue;
    return Match{begins[(count + 1) % begins.size()], bytes.size() - reader.Rest().size()};
  }
  return std::nullopt;
}

std::int64_t Find(const StringHandle &text, const StringHandle &part, std::int64_t start, Comparison comparison) {
  const std::int64_t first = std::max<std::int64_t>(start, 1);
  if (text.IsEmpty() || first > Length(text)) return 0;
  if (part.IsEmpty()) return first;
  HostString &string = *text.Get();
  const std::size_t from = OffsetOf(string, first - 1);
  const std::optional<Search::Match> match = Search(part, comparison).Next(text, from);
  if (!match) return 0;
  if (OneByteEach(string)) return static_cast<std::int64_t>(match->begin) + 1;
  std::int64_t position = first;
  const std::string_view skipped = string.View().substr(from, match->begin - from);
  for (CharacterReader reader(skipped, string.encoding, IsWellFormed(string)); !reader.AtEnd(); ++position) {
    reader.Next();
  }
  return position;
}

}  // namespace quillbar::host::text
