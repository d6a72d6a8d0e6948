// SPDX-License-Identifier: MIT
#include "tests/readers/agreement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "tests/support/process.h"

namespace quillbar::test {
namespace {

constexpr const char *kDirectionMarks[] = {"\u200E", "\u200F", "\u061C", "\u202A", "\u202B", "\u202C",
                                           "\u202D", "\u202E", "\u2066", "\u2067", "\u2068", "\u2069"};
constexpr const char *kWithoutWidth[] = {"\u200B", "\u200C", "\u200D", "\u2060", "\uFEFF", "\u00AD", "\u034F"};
constexpr const char *kBlanks[] = {" ", "\u00A0", "\t"};

template <std::size_t count>
std::string Without(const char *const (&characters)[count], std::string text) {
  for (const std::string_view character : characters) {
    for (std::size_t at; (at = text.find(character)) != std::string::npos;) text.erase(at, character.size());
  }
  return text;
}

// Python's tables are not the ones that any of the readers has. The last words of the script are the two texts.
bool AreEquivalent(const std::string &one, const std::string &other) {
  const ProcessResult result = RunProcess({"/usr/bin/python3", "-c",
                                           "import sys, unicodedata as u\n"
                                           "print(u.normalize('NFC', sys.argv[1]) == u.normalize('NFC', sys.argv[2]))",
                                           one, other});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  return result.output.starts_with("True");
}

std::vector<std::string> SortedCharacters(const std::string &text) {
  std::vector<std::string> characters;
  for (const char byte : text) {
    if ((static_cast<unsigned char>(byte) & 0xC0) == 0x80 && !characters.empty())
      characters.back() += byte;
    else
      characters.emplace_back(1, byte);
  }
  std::ranges::sort(characters);
  return characters;
}

}  // namespace

void PrintTo(Agreement agreement, std::ostream *out) {
  constexpr const char *kNames[] = {"exact",
                                    "right but for directional marks",
                                    "canonically equivalent",
                                    "right but for characters without width",
                                    "right but for spaces",
                                    "in another order",
                                    "another text"};
  *out << kNames[static_cast<int>(agreement)];
}

Agreement AgreementOf(const std::string &shown, const std::string &read) {
  if (shown == read) return Agreement::kExact;
  std::string one = Without(kDirectionMarks, shown), other = Without(kDirectionMarks, read);
  if (one == other) return Agreement::kMarks;
  if (AreEquivalent(one, other)) return Agreement::kNormalized;
  one = Without(kWithoutWidth, one), other = Without(kWithoutWidth, other);
  if (one == other) return Agreement::kZeroWidth;
  one = Without(kBlanks, one), other = Without(kBlanks, other);
  if (one == other) return Agreement::kBlanks;
  return SortedCharacters(one) == SortedCharacters(other) ? Agreement::kOrder : Agreement::kOther;
}

}  // namespace quillbar::test
