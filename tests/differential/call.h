// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/differential/members.h"

namespace quillbar::differential {

/// One call of a member with its arguments; the member's `Shape` says which of the fields are used.
struct Call {
  Member member = Member::kClearError;
  std::array<float, 6> singles{};
  std::int32_t first = 0;   // a size, an enumeration's number, a colour, an alignment, the number of a font
  std::int32_t second = 0;  // a direction
  std::uint32_t phase = 0;
  bool flag = false;  // of a Boolean property, or word wrap
  std::vector<std::uint16_t> dashes;
  std::string text;  // bytes in the encoding of the page's font
};

/// A font of a sequence's document.
struct FontChoice {
  const char *name = nullptr;
  std::int32_t encoding = 0;  // of Font.FontEncodingEnum
};

/// The start of a sequence of calls: a new document with these fonts and one page.
struct Sequence {
  std::array<FontChoice, 3> fonts{};
  std::vector<Call> calls;
};

/// The call as a script would write it.
std::string Describe(const Call &call, const Sequence &sequence);

}  // namespace quillbar::differential
