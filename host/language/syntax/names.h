// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "interface/declaration.h"

namespace quillbar::language {

/// A name in the form in which it is compared: the dialect ignores the case of the letters A to Z in names.
std::string FoldName(std::string_view name);

/// The candidate that `name` was most likely meant to be, or an empty text when none is similar enough: at most one
/// edit (a letter changed, missing, added, or two swapped) for names up to four letters, two for longer ones.
std::string_view NearestName(std::string_view name, const std::vector<std::string_view> &candidates);

/// `; did you mean "…"?` for the nearest candidate, or an empty text.
std::string Suggestion(std::string_view name, const std::vector<std::string_view> &candidates);

/// Orders folded or unfolded names without regard to case, for maps.
struct NameLess {
  using is_transparent = void;
  /// Whether `one` comes before `other`.
  bool operator()(std::string_view one, std::string_view other) const;
};

}  // namespace quillbar::language
