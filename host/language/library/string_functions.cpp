// SPDX-License-Identifier: MIT
// Strings, in both spellings of the dialect: the older functions count characters from 1, the newer methods from 0.

#include <algorithm>
#include <string>
#include <vector>

#include "host/language/library/library.h"
#include "host/runtime/text.h"
#include "host/runtime/text_encoding.h"

namespace quillbar::language {
namespace {

namespace text = host::text;
using host::ArrayHandle;
using host::StringHandle;
using text::Comparison;

constexpr std::int64_t kToTheEnd = -1;

Comparison ComparisonFor(bool isCaseSensitive) {
  return isCaseSensitive ? Comparison::kCaseSensitive : Comparison::kIgnoreCase;
}

// -- Parts ----------------------------------------------------------------------------------------

StringHandle Mid(const StringHandle &string, std::int64_t start, std::int64_t length) {
  return text::Middle(string, start, length);
}

StringHandle Middle(const StringHandle &string, std::int64_t index, std::int64_t length) {
  return text::Middle(string, std::max<std::int64_t>(index, 0) + 1, length);
}

StringHandle BytesFrom(const StringHandle &string, std::int64_t index, std::int64_t length) {
  const std::string_view bytes = string.Bytes();
  if (index < 0 || static_cast<std::uint64_t>(index) >= bytes.size()) return {};
  const std::size_t count = length < 0 ? std::string_view::npos : static_cast<std::size_t>(length);
  return StringHandle::FromBytes(bytes.substr(static_cast<std::size_t>(index), count), string.Encoding());
}

StringHandle MidB(const StringHandle &string, std::int64_t start, std::int64_t length) {
  return BytesFrom(string, start - 1, length);
}
StringHandle LeftB(const StringHandle &string, std::int64_t length) {
  return BytesFrom(string, 0, std::max<std::int64_t>(length, 0));
}
StringHandle RightB(const StringHandle &string, std::int64_t length) {
  const std::int64_t size = text::ByteLength(string);
  return BytesFrom(string, std::max<std::int64_t>(size - std::max<std::int64_t>(length, 0), 0), kToTheEnd);
}

// -- Searching ------------------------------------------------------------------------------------

std::int64_t InStrFrom(std::int64_t start, const StringHandle &string, const StringHandle &part) {
  return text::Find(string, part, std::max<std::int64_t>(start, 1), Comparison::kIgnoreCase);
}

std::int64_t InStr(const StringHandle &string, const StringHandle &part) { return InStrFrom(1, string, part); }

/// The comparison for a value of ComparisonOptions.
Comparison ComparisonOf(std::int64_t options) { return ComparisonFor(options == 1); }

std::int64_t IndexOfFrom(const StringHandle &string, std::int64_t start, const StringHandle &part,
                         std::int64_t options) {
  return text::Find(string, part, std::max<std::int64_t>(start + 1, 1), ComparisonOf(options)) - 1;
}

std::int64_t IndexOf(const StringHandle &string, const StringHandle &part, std::int64_t options) {
  return IndexOfFrom(string, 0, part, options);
}

/// The last match that begins at or before `start`.
std::int64_t LastIndexOfFrom(const StringHandle &string, std::int64_t start, const StringHandle &part,
                             std::int64_t options) {
  const Comparison comparison = ComparisonOf(options);
  std::int64_t last = 0;
  for (std::int64_t at = text::Find(string, part, 1, comparison); at > 0 && at <= start + 1;
       at = text::Find(string, part, at + 1, comparison)) {
    last = at;
  }
  return last - 1;
}

std::int64_t LastIndexOf(const StringHandle &string, const StringHandle &part, std::int64_t options) {
  return LastIndexOfFrom(string, text::Length(string), part, options);
}

bool Contains(const StringHandle &string, const StringHandle &part, std::int64_t options) {
  return IndexOf(string, part, options) >= 0;
}

bool BeginsWith(const StringHandle &string, const StringHandle &part, std::int64_t options) {
  return text::Compare(text::Left(string, text::Length(part)), part, ComparisonOf(options)) == 0;
}

bool EndsWith(const StringHandle &string, const StringHandle &part, std::int64_t options) {
  return text::Compare(text::Right(string, text::Length(part)), part, ComparisonOf(options)) == 0;
}

std::int64_t StrComp(const StringHandle &one, const StringHandle &other, std::int64_t mode) {
  return text::Compare(one, other, ComparisonFor(mode == 0));
}

std::int64_t Compare(const StringHandle &one, const StringHandle &other, std::int64_t options) {
  return text::Compare(one, other, ComparisonOf(options));
}

// -- Replacing ------------------------------------------------------------------------------------

/// Joins many pieces at once. When their encodings differ, those with characters beyond ASCII become UTF-8.
class Builder {
 public:
  void Add(const StringHandle &piece) {
    if (piece.IsEmpty()) return;
    if (pieces_.empty()) encoding_ = piece.Encoding();
    isUniform_ = isUniform_ && piece.Encoding() == encoding_;
    pieces_.push_back(piece);
  }

  StringHandle Take() const {
    std::string bytes;
    for (const StringHandle &piece : pieces_) {
      bytes += isUniform_ ? piece.Bytes() : text::Convert(piece, TextEncoding::kUtf8).Bytes();
      RequireStringSize(bytes.size());
    }
    return StringHandle::FromBytes(bytes, isUniform_ ? encoding_ : TextEncoding::kUtf8);
  }

 private:
  std::vector<StringHandle> pieces_;
  TextEncoding encoding_ = TextEncoding::kUtf8;
  bool isUniform_ = true;
};

/// The text between two bytes of a string.
StringHandle Part(const StringHandle &string, std::size_t begin, std::size_t end = std::string_view::npos) {
  return StringHandle::FromBytes(string.Bytes().substr(begin, end - begin), string.Encoding());
}

StringHandle ReplaceSome(const StringHandle &string, const StringHandle &find, const StringHandle &with, bool all) {
  if (string.IsEmpty() || find.IsEmpty()) return string;
  const text::Search search(find, Comparison::kIgnoreCase);
  Builder result;
  std::size_t start = 0;
  for (auto match = search.Next(string, 0); match; match = search.Next(string, start)) {
    result.Add(Part(string, start, match->begin));
    result.Add(with);
    start = match->end;
    if (!all) break;
  }
  if (start == 0) return string;
  result.Add(Part(string, start));
  return result.Take();
}

StringHandle Replace(const StringHandle &string, const StringHandle &find, const StringHandle &with) {
  return ReplaceSome(string, find, with, false);
}
StringHandle ReplaceAll(const StringHandle &string, const StringHandle &find, const StringHandle &with) {
  return ReplaceSome(string, find, with, true);
}

// -- Fields ---------------------------------------------------------------------------------------

/// Calls `visit` with the bytes where each field begins and ends, until it returns false.
template <class Visit>
void ForEachField(const StringHandle &string, const StringHandle &separator, Visit visit) {
  std::size_t start = 0;
  if (!string.IsEmpty() && !separator.IsEmpty()) {
    const text::Search search(separator, Comparison::kIgnoreCase);
    for (auto match = search.Next(string, 0); match; match = search.Next(string, start)) {
      if (!visit(start, match->begin)) return;
      start = match->end;
    }
  }
  visit(start, string.Bytes().size());
}

ArrayHandle Split(const StringHandle &string, const StringHandle &separator) {
  ArrayHandle fields = ArrayHandle::Create(host::TypeKind::kString);
  if (string.IsEmpty()) return fields;
  if (separator.IsEmpty()) {
    for (std::int64_t i = 1; i <= text::Length(string); ++i) fields.Append(text::Middle(string, i, 1));
    return fields;
  }
  ForEachField(string, separator, [&](std::size_t begin, std::size_t end) {
    fields.Append(Part(string, begin, end));
    return true;
  });
  return fields;
}

std::int64_t CountFields(const StringHandle &string, const StringHandle &separator) {
  if (string.IsEmpty()) return 0;
  std::int64_t count = 0;
  ForEachField(string, separator, [&](std::size_t, std::size_t) {
    ++count;
    return true;
  });
  return count;
}

StringHandle NthField(const StringHandle &string, const StringHandle &separator, std::int64_t number) {
  StringHandle result;
  std::int64_t at = 0;
  ForEachField(string, separator, [&](std::size_t begin, std::size_t end) {
    if (++at != number) return true;
    result = Part(string, begin, end);
    return false;
  });
  return result;
}

StringHandle Join(const ArrayHandle &list, const StringHandle &separator) {
  Builder result;
  for (std::size_t i = 0; i < list.Size(); ++i) {
    if (i > 0) result.Add(separator);
    result.Add(list.At(static_cast<std::int64_t>(i)).AsString());
  }
  return result.Take();
}

// -- Letters --------------------------------------------------------------------------------------

bool IsWhiteSpace(std::int64_t codePoint) {
  return (codePoint >= 9 && codePoint <= 13) || codePoint == 32 || codePoint == 0x85 || codePoint == 0xA0 ||
         codePoint == 0x1680 || (codePoint >= 0x2000 && codePoint <= 0x200A) || codePoint == 0x2028 ||
         codePoint == 0x2029 || codePoint == 0x202F || codePoint == 0x205F || codePoint == 0x3000;
}

StringHandle TrimEnds(const StringHandle &string, bool atStart, bool atEnd) {
  const std::string_view bytes = string.Bytes();
  std::size_t first = bytes.size();
  std::size_t last = 0;
  for (std::size_t offset = 0; offset < bytes.size();) {
    const std::size_t begin = offset;
    if (IsWhiteSpace(static_cast<std::int64_t>(host::DecodeNext(bytes, string.Encoding(), offset)))) continue;
    first = std::min(first, begin);
    last = offset;
  }
  if (!atStart) first = 0;
  if (!atEnd) last = bytes.size();
  if (first == 0 && last == bytes.size()) return string;
  return first < last ? Part(string, first, last) : StringHandle();
}

StringHandle Trim(const StringHandle &string) { return TrimEnds(string, true, true); }
StringHandle LTrim(const StringHandle &string) { return TrimEnds(string, true, false); }
StringHandle RTrim(const StringHandle &string) { return TrimEnds(string, false, true); }

StringHandle Titlecase(const StringHandle &string) {
  Builder result;
  bool startsWord = true;
  for (std::int64_t i = 1; i <= text::Length(string); ++i) {
    const StringHandle character = text::Middle(string, i, 1);
    result.Add(startsWord ? text::UpperCase(character) : text::LowerCase(character));
    startsWord = IsWhiteSpace(text::CodePoint(character));
  }
  return result.Take();
}

std::int64_t AscB(const StringHandle &string) {
  return string.IsEmpty() ? 0 : static_cast<unsigned char>(string.Bytes().front());
}

StringHandle ChrB(std::int64_t byte) {
  const char value = static_cast<char>(byte);
  return StringHandle::FromBytes({&value, 1}, TextEncoding::kRawBytes);
}

StringHandle LineFeed() { return StringHandle::FromUtf8("\n"); }
StringHandle CarriageReturn() { return StringHandle::FromUtf8("\r"); }
StringHandle BothReturns() { return StringHandle::FromUtf8("\r\n"); }

// -- Encodings ------------------------------------------------------------------------------------

TextEncoding ToEncoding(std::int64_t code) { return static_cast<TextEncoding>(static_cast<std::uint32_t>(code)); }

StringHandle DefineEncoding(const StringHandle &string, std::int64_t encoding) {
  return text::Define(string, ToEncoding(encoding));
}
StringHandle ConvertEncoding(const StringHandle &string, std::int64_t encoding) {
  return text::Convert(string, ToEncoding(encoding));
}
std::int64_t EncodingOf(const StringHandle &string) { return static_cast<std::int64_t>(string.Encoding()); }

using namespace library;

constexpr LibraryFunction kStringFunctions[] = {
    kFunction<"Len(text As String) As Integer", &text::Length>,
    kFunction<"LenB(text As String) As Integer", &text::ByteLength>,
    kFunction<"Left(text As String, count As Integer) As String", &text::Left>,
    kFunction<"LeftB(text As String, count As Integer) As String", &LeftB>,
    kFunction<"Right(text As String, count As Integer) As String", &text::Right>,
    kFunction<"RightB(text As String, count As Integer) As String", &RightB>,
    kFunction<"Mid(text As String, start As Integer, length As Integer = -1) As String", &Mid>,
    kFunction<"MidB(text As String, start As Integer, length As Integer = -1) As String", &MidB>,
    kFunction<"InStr(text As String, find As String) As Integer", &InStr>,
    kFunction<"InStr(start As Integer, text As String, find As String) As Integer", &InStrFrom>,
    kFunction<"Replace(text As String, find As String, replacement As String) As String", &Replace>,
    kFunction<"ReplaceAll(text As String, find As String, replacement As String) As String", &ReplaceAll>,
    kFunction<"Split(text As String, delimiter As String = \" \") As String()", &Split>,
    kFunction<"Join(list() As String, delimiter As String = \" \") As String", &Join>,
    kFunction<"CountFields(text As String, separator As String) As Integer", &CountFields>,
    kFunction<"NthField(text As String, separator As String, number As Integer) As String", &NthField>,
    kFunction<"Trim(text As String) As String", &Trim>,
    kFunction<"LTrim(text As String) As String", &LTrim>,
    kFunction<"RTrim(text As String) As String", &RTrim>,
    kFunction<"Uppercase(text As String) As String", &text::UpperCase>,
    kFunction<"Lowercase(text As String) As String", &text::LowerCase>,
    kFunction<"Titlecase(text As String) As String", &Titlecase>,
    kFunction<"StrComp(one As String, other As String, mode As Integer) As Integer", &StrComp>,
    kFunction<"Asc(text As String) As Integer", &text::CodePoint>,
    kFunction<"AscB(text As String) As Integer", &AscB>,
    kFunction<"Chr(codePoint As Integer) As String", &text::Character>,
    kFunction<"ChrB(byte As Integer) As String", &ChrB>,
    kFunction<"EndOfLine() As String", &LineFeed>,
    kFunction<"DefineEncoding(text As String, encoding As TextEncoding) As String", &DefineEncoding>,
    kFunction<"ConvertEncoding(text As String, encoding As TextEncoding) As String", &ConvertEncoding>,
    kFunction<"Encoding(text As String) As TextEncoding", &EncodingOf>,

    kMethod<"String", "Length() As Integer", &text::Length>,
    kMethod<"String", "Len() As Integer", &text::Length>,
    kMethod<"String", "Bytes() As Integer", &text::ByteLength>,
    kMethod<"String", "LenB() As Integer", &text::ByteLength>,
    kMethod<"String", "Left(count As Integer) As String", &text::Left>,
    kMethod<"String", "LeftBytes(count As Integer) As String", &LeftB>,
    kMethod<"String", "Right(count As Integer) As String", &text::Right>,
    kMethod<"String", "RightBytes(count As Integer) As String", &RightB>,
    kMethod<"String", "Mid(start As Integer, length As Integer = -1) As String", &Mid>,
    kMethod<"String", "Middle(index As Integer, length As Integer = -1) As String", &Middle>,
    kMethod<"String", "MiddleBytes(index As Integer, length As Integer = -1) As String", &BytesFrom>,
    kMethod<"String", "InStr(find As String) As Integer", &InStr>,
    kMethod<"String", "IndexOf(find As String, options As ComparisonOptions = 0) As Integer", &IndexOf>,
    kMethod<"String", "IndexOf(start As Integer, find As String, options As ComparisonOptions = 0) As Integer",
            &IndexOfFrom>,
    kMethod<"String", "LastIndexOf(find As String, options As ComparisonOptions = 0) As Integer", &LastIndexOf>,
    kMethod<"String", "LastIndexOf(start As Integer, find As String, options As ComparisonOptions = 0) As Integer",
            &LastIndexOfFrom>,
    kMethod<"String", "Contains(find As String, options As ComparisonOptions = 0) As Boolean", &Contains>,
    kMethod<"String", "BeginsWith(start As String, options As ComparisonOptions = 0) As Boolean", &BeginsWith>,
    kMethod<"String", "EndsWith(ending As String, options As ComparisonOptions = 0) As Boolean", &EndsWith>,
    kMethod<"String", "Compare(other As String, options As ComparisonOptions = 0) As Integer", &Compare>,
    kMethod<"String", "Replace(find As String, replacement As String) As String", &Replace>,
    kMethod<"String", "ReplaceAll(find As String, replacement As String) As String", &ReplaceAll>,
    kMethod<"String", "Split(delimiter As String = \" \") As String()", &Split>,
    kMethod<"String", "ToArray(delimiter As String = \" \") As String()", &Split>,
    kMethod<"String", "CountFields(separator As String) As Integer", &CountFields>,
    kMethod<"String", "NthField(separator As String, number As Integer) As String", &NthField>,
    kMethod<"String", "Trim() As String", &Trim>,
    kMethod<"String", "TrimLeft() As String", &LTrim>,
    kMethod<"String", "LTrim() As String", &LTrim>,
    kMethod<"String", "TrimRight() As String", &RTrim>,
    kMethod<"String", "RTrim() As String", &RTrim>,
    kMethod<"String", "Uppercase() As String", &text::UpperCase>,
    kMethod<"String", "Lowercase() As String", &text::LowerCase>,
    kMethod<"String", "Titlecase() As String", &Titlecase>,
    kMethod<"String", "Asc() As Integer", &text::CodePoint>,
    kMethod<"String", "AscByte() As Integer", &AscB>,
    kMethod<"String", "DefineEncoding(encoding As TextEncoding) As String", &DefineEncoding>,
    kMethod<"String", "ConvertEncoding(encoding As TextEncoding) As String", &ConvertEncoding>,
    kMethod<"String", "Encoding() As TextEncoding", &EncodingOf>,

    kShared<"String", "FromArray(list() As String, delimiter As String = \" \") As String", &Join>,
    kShared<"String", "Chr(codePoint As Integer) As String", &text::Character>,
    kShared<"String", "ChrByte(byte As Integer) As String", &ChrB>,

    kShared<"EndOfLine", "Windows() As String", &BothReturns>,
    kShared<"EndOfLine", "CRLF() As String", &BothReturns>,
    kShared<"EndOfLine", "UNIX() As String", &LineFeed>,
    kShared<"EndOfLine", "Linux() As String", &LineFeed>,
    kShared<"EndOfLine", "macOS() As String", &LineFeed>,
    kShared<"EndOfLine", "LF() As String", &LineFeed>,
    kShared<"EndOfLine", "Macintosh() As String", &CarriageReturn>,
    kShared<"EndOfLine", "CR() As String", &CarriageReturn>,
};

}  // namespace

std::span<const LibraryFunction> StringFunctions() { return kStringFunctions; }

}  // namespace quillbar::language
