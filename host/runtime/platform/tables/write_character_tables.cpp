// SPDX-License-Identifier: MIT
// Runs on the machine that builds: writes character_tables.cpp to standard output, from what that machine's C library
// knows.
#include <array>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/runtime/platform/charset.h"
#include "host/runtime/platform/letter_case.h"
#include "host/runtime/platform/tables/character_tables.h"

namespace quillbar::host::platform {
namespace {

constexpr std::uint32_t kBeyondEncodings = 0x1000;
constexpr char32_t kBeyondCharacters = 0x110000;

char16_t CharacterOf(Charset &charset, std::string_view bytes) {
  const std::int32_t character = charset.Decode(bytes);
  return character < 0 ? kNoCharacter : static_cast<char16_t>(character);
}

void WriteCharacters(const std::vector<char16_t> &characters) {
  for (std::size_t i = 0; i < characters.size(); ++i) {
    std::cout << (i % 16 == 0 ? "\n    " : " ") << static_cast<unsigned>(characters[i]) << ',';
  }
}

/// The codes of the characters that have several, in ascending order of characters.
using SeveralCodes = std::map<char16_t, std::vector<std::size_t>>;

/// Writes the rows of a set's byte pairs; false when it has none.
bool WriteRows(Charset &charset, const std::vector<char16_t> &single, std::uint32_t encoding, SeveralCodes &codes) {
  bool hasRows = false;
  for (std::size_t first = 0x80; first < 256; ++first) {
    if (single[first] != kNoCharacter) continue;
    std::vector<char16_t> row(256, kNoCharacter);
    bool isEmpty = true;
    for (std::size_t second = 0x20; second < 256; ++second) {
      const std::array<char, 2> bytes{static_cast<char>(first), static_cast<char>(second)};
      row[second] = CharacterOf(charset, {bytes.data(), bytes.size()});
      if (row[second] == kNoCharacter) continue;
      isEmpty = false;
      codes[row[second]].push_back(first << 8 | second);
    }
    if (isEmpty) continue;
    if (!hasRows) std::cout << "constexpr CharsetRow kRows" << encoding << "[] = {\n";
    hasRows = true;
    std::cout << "{" << first << ", {";
    WriteCharacters(row);
    std::cout << "}},\n";
  }
  if (hasRows) std::cout << "};\n";
  std::erase_if(codes, [](const auto &entry) { return entry.second.size() < 2; });
  return hasRows;
}

/// Writes the arrays of one set, whose names end in the encoding's number, and returns its line in the table of sets.
std::string WriteCharset(Charset &charset, std::uint32_t encoding) {
  const std::string number = std::to_string(encoding);
  std::vector<char16_t> single(256, kNoCharacter);
  for (std::size_t first = 0; first < 256; ++first) {
    const char byte = static_cast<char>(first);
    single[first] = CharacterOf(charset, {&byte, 1});
  }
  std::cout << "constexpr char16_t kSingle" << number << "[256] = {";
  WriteCharacters(single);
  std::cout << "};\n";

  SeveralCodes codes;
  const std::string rows = WriteRows(charset, single, encoding, codes) ? "kRows" + number : "{}";
  const std::string preferred = codes.empty() ? "{}" : "kPreferred" + number;
  if (!codes.empty()) {
    std::cout << "constexpr PreferredCode " << preferred << "[] = {\n";
    for (const auto &[character, list] : codes) {
      const std::int32_t code = charset.Encode(character);
      std::cout << "    {" << static_cast<unsigned>(character) << ", "
                << (code < 0 ? static_cast<std::int32_t>(list.front()) : code) << "},\n";
    }
    std::cout << "};\n";
  }
  return "    {" + number + ", kSingle" + number + ", " + rows + ", " + preferred + "},\n";
}

bool WriteCharsets() {
  std::string lines;
  for (std::uint32_t encoding = 0; encoding < kBeyondEncodings; ++encoding) {
    const std::unique_ptr<Charset> charset = Charset::Open(static_cast<TextEncoding>(encoding));
    if (charset != nullptr) lines += WriteCharset(*charset, encoding);
  }
  std::cout << "constexpr CharsetTable kTables[] = {\n" << lines << "};\n";
  return !lines.empty();
}

bool WriteMappings(const char *name, char32_t (*map)(char32_t)) {
  bool mapsAny = false;
  std::cout << "constexpr CaseMapping k" << name << "[] = {\n";
  for (char32_t character = 0x80; character < kBeyondCharacters; ++character) {
    const char32_t mapped = map(character);
    if (mapped == character) continue;
    mapsAny = true;
    std::cout << "    {" << static_cast<std::uint32_t>(character) << ", " << static_cast<std::uint32_t>(mapped)
              << "},\n";
  }
  std::cout << "};\n";
  return mapsAny;
}

bool Write() {
  std::cout << R"(// Written by write_character_tables.cpp.
#include "host/runtime/platform/tables/character_tables.h"

namespace quillbar::host::platform {
namespace {

)";
  const bool isWhole = WriteCharsets() && WriteMappings("Upper", &UpperCase) && WriteMappings("Lower", &LowerCase);
  std::cout << R"(
}  // namespace

const std::span<const CharsetTable> kCharsetTables = kTables;
const std::span<const CaseMapping> kUpperCaseMappings = kUpper;
const std::span<const CaseMapping> kLowerCaseMappings = kLower;

}  // namespace quillbar::host::platform
)" << std::flush;
  return isWhole && std::cout.good();
}

}  // namespace
}  // namespace quillbar::host::platform

int main() {
  if (quillbar::host::platform::Write()) return 0;
  std::cerr << "write_character_tables: this machine's C library lacks the character sets or the letter cases\n";
  return 1;
}
