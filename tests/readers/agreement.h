// SPDX-License-Identifier: MIT
// How well a text that a reader copied agrees with the one that was shown.
#pragma once

#include <ostream>
#include <string>

namespace quillbar::test {

/// From the best to the worst. Each is what is left when all better ones don't hold.
enum class Agreement {
  kExact,
  kMarks,       // the same but for directional marks
  kNormalized,  // canonically equivalent, in Unicode's sense
  kZeroWidth,   // the same but for joiners and other characters without width
  kBlanks,      // the same but for spaces
  kOrder,       // the same characters in another order, or brackets turned round
  kOther,
};
void PrintTo(Agreement agreement, std::ostream *out);

/// Both texts are UTF-8.
Agreement AgreementOf(const std::string &shown, const std::string &read);

}  // namespace quillbar::test
