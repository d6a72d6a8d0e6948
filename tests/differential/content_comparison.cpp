// SPDX-License-Identifier: MIT
#include "tests/differential/content_comparison.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "tests/support/pdf_file.h"

namespace quillbar::differential {

namespace {

using enum IntendedDifference;
using test::ContentOperator;
using test::Operand;

/// The largest number that the library prints.
constexpr double kLibraryLimit = 32767;

class OperandComparison {
 public:
  OperandComparison(const IntendedDifferences &differences, double tolerance)
      : differences_(differences), tolerance_(tolerance) {}

  bool IsSame(const Operand &plugin, const Operand &reference) const {
    if (plugin.kind != reference.kind) return false;
    switch (plugin.kind) {
      case Operand::Kind::kNumber:
        return IsSame(plugin.number, reference.number);
      case Operand::Kind::kArray:
        return std::ranges::equal(plugin.elements, reference.elements,
                                  [this](const Operand &a, const Operand &b) { return IsSame(a, b); });
      default:
        return plugin.text == reference.text;
    }
  }

 private:
  bool IsSame(double plugin, double reference) const {
    if (std::fabs(reference) >= kLibraryLimit && differences_.IsAllowed(kLargeNumbers))
      return std::signbit(plugin) == std::signbit(reference) && std::fabs(plugin) >= kLibraryLimit - 0.01 - tolerance_;
    // The library loses the whole part where rounding the decimals gives 100,000 of them.
    const bool losesOne = reference == std::trunc(reference) && std::fabs(plugin) > std::fabs(reference) + 0.99998 &&
                          std::fabs(plugin) < std::fabs(reference) + 1.00001;
    if (losesOne && differences_.IsAllowed(kDecimals)) return true;
    // Half a unit of the fifth decimal on both sides, and a digit that the library loses now and then.
    const double printing = differences_.IsAllowed(kDecimals) ? 1.1e-5 + 6e-8 * std::fabs(reference) : 1e-9;
    return std::fabs(plugin - reference) <= printing + tolerance_;
  }

  const IntendedDifferences &differences_;
  double tolerance_;
};

/// Removes each operator that sets the character spacing to what it is already.
void LeaveOutRepeatedSpacing(std::vector<ContentOperator> &operators) {
  std::vector<double> saved;
  double spacing = 0;
  std::erase_if(operators, [&](const ContentOperator &one) {
    if (one.name == "q") saved.push_back(spacing);
    if (one.name == "Q" && !saved.empty()) {
      spacing = saved.back();
      saved.pop_back();
    }
    if (one.name != "Tc" || one.operands.empty()) return false;
    const double before = spacing;
    spacing = one.operands[0].number;
    return std::fabs(spacing - before) < 1e-5;
  });
}

/// The library shows an empty text where only the position has to move.
void MoveInsteadOfShowingNothing(std::vector<ContentOperator> &operators) {
  for (ContentOperator &one : operators) {
    if (one.name == "'" && one.operands.size() == 1 && one.operands[0].text.empty()) {
      one.name = "T*";
      one.operands.clear();
    }
  }
}

std::vector<std::string> ShownTexts(std::span<const ContentOperator> operators) {
  std::vector<std::string> texts;
  for (const ContentOperator &one : operators) {
    if (one.name == "'") texts.push_back(one.operands.at(0).text);
    if (one.name == "T*") texts.emplace_back();
  }
  return texts;
}

std::string Text(std::span<const ContentOperator> operators, std::size_t index) {
  if (index >= operators.size()) return "nothing";
  std::ostringstream text;
  text << operators[index];
  return text.str();
}

}  // namespace

std::optional<ContentDifference> CompareContent(std::vector<ContentOperator> plugin, const std::string &content,
                                                const std::vector<WrittenPart> &parts,
                                                const IntendedDifferences &differences) {
  std::vector<ContentOperator> reference = test::OperatorsOf(content);
  if (differences.IsAllowed(kSpacingWrittenOnce)) {
    LeaveOutRepeatedSpacing(plugin);
    LeaveOutRepeatedSpacing(reference);
  }
  if (differences.IsAllowed(kEmptyLine)) MoveInsteadOfShowingNothing(reference);

  std::size_t next = 0;
  for (std::size_t call = 0; call < parts.size(); ++call) {
    const WrittenPart &part = parts[call];
    const OperandComparison operands(differences, part.tolerance);
    if (part.comparison == Comparison::kShownText) {
      const auto isOfCall = [&part](const ContentOperator &one) { return one.offset < part.end; };
      const auto end =
          std::find_if_not(reference.begin() + static_cast<std::ptrdiff_t>(next), reference.end(), isOfCall);
      const auto first = static_cast<std::ptrdiff_t>(next);
      const auto expected = ShownTexts({reference.begin() + first, end});
      auto shown = ShownTexts(std::span(plugin).subspan(std::min(next, plugin.size())));
      if (shown == expected) return std::nullopt;
      return ContentDifference{
          call, fmt::format("texts shown by the box: {} by the plugin, {} by the reference, or other ones",
                            shown.size(), expected.size())};
    }
    for (; next < reference.size() && reference[next].offset < part.end; ++next) {
      const bool isSame = next < plugin.size() && plugin[next].name == reference[next].name &&
                          std::ranges::equal(plugin[next].operands, reference[next].operands,
                                             [&](const Operand &a, const Operand &b) { return operands.IsSame(a, b); });
      if (isSame) continue;
      if (part.comparison == Comparison::kBeginning) return std::nullopt;
      return ContentDifference{call, fmt::format("operator {}: the plugin's \"{}\", the reference's \"{}\"", next,
                                                 Text(plugin, next), Text(reference, next))};
    }
    if (part.comparison == Comparison::kBeginning) return std::nullopt;
  }
  if (next != plugin.size())
    return ContentDifference{
        parts.size() - 1,
        fmt::format("operator {}: the plugin's \"{}\", the reference has no more", next, Text(plugin, next))};
  return std::nullopt;
}

}  // namespace quillbar::differential
