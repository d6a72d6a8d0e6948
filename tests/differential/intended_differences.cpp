// SPDX-License-Identifier: MIT
#include "tests/differential/intended_differences.h"

#include <fmt/format.h>

namespace quillbar::differential {

namespace {

using enum IntendedDifference;

// In the order of the enumeration.
constexpr DifferenceDescription kDescriptions[] = {
    {kRefusedCallsWriteNothing, "RefusedCallsWriteNothing", "any call that is refused",
     "goes on after the error handler has cleared the error, and still writes the operator",
     "ends with the error; nothing is written and nothing changes",
     "an operator in the wrong place makes a page that viewers refuse"},
    {kOneEventForACall, "OneEventForACall", "a call that fails in two ways", "calls the error handler twice",
     "one `ErrorLog`, for the first failure", "one call, one failure: handlers count them"},
    {kNumbersThatAreNotFinite, "NumbersThatAreNotFinite", "NaN and infinity",
     "prints them as 32767 or as characters that aren't a number", "error 4153", "no viewer can read the page"},
    {kDecimals, "Decimals", "numbers in page content",
     "five decimals, rounded twice in single precision; a number below 0.000005 is lost; 0.999995 becomes 0",
     "decimals that are exact to 0.00001, and small numbers to five digits",
     "exact positions, small scales that aren't zero, and files that are the same on every platform"},
    {kLargeNumbers, "LargeNumbers", "numbers beyond 32,767", "cut down to 32,767", "printed up to 2,147,483,520",
     "a shape that begins far outside of the page keeps its form"},
    {kSizeAfterTheLast, "SizeAfterTheLast", "`SetSize` with size 12", "reads past its table of sizes",
     "error 4180, detail 12", "a size that doesn't exist is refused as the others are"},
    {kDashPhase, "DashPhase", "`SetDashPattern` with a phase of 2,147,483,648 or more",
     "prints it as a negative number", "error 4182 with the phase as detail", "PDF has no negative phase"},
    {kArcOfOneTurn, "ArcOfOneTurn", "`Arc` of 360 degrees or more", "error 4182, and every turn is drawn",
     "error 4182; one whole circle is drawn, then the arc up to the second angle",
     "further turns would cover the first"},
    {kArcOfNothing, "ArcOfNothing", "`Arc` with equal angles", "divides by zero and prints what isn't a number",
     "begins the path, or draws the line to the start of the arc; no curve",
     "a pie slice of zero degrees is still a slice"},
    {kArcWithoutRadius, "ArcWithoutRadius", "`Arc` with radius 0", "divides by zero and prints what isn't a number",
     "curves whose points are all at the centre", "no viewer can read the page"},
    {kArcOfManyTurns, "ArcOfManyTurns", "`Arc` with angles beyond 720 degrees",
     "adds 360 in single precision until both are positive, which loses digits and may never end",
     "exact for every angle", "an application must not hang"},
    {kArcPrecision, "ArcPrecision", "points of `Arc`", "computed with 3.14159", "computed with all digits of pi",
     "lines that end on an arc meet it"},
    {kSingularTextMatrix, "SingularTextMatrix",
     "a text box under a text matrix that can't be inverted, such as (1, 1, 1, 1, x, y)",
     "divides by zero and prints what isn't a number", "error 4182, nothing is set", "there is no place for the text"},
    {kSpacingWrittenOnce, "SpacingWrittenOnce", "character spacing in text boxes",
     "written for each line, even where nothing changes", "written where it changes", "smaller files"},
    {kEmptyLine, "EmptyLine", "an empty line of a text box", "an empty text is shown on the next line",
     "the position moves to the next line", "no empty texts for readers of the page"},
    {kWhiteSpaceAtLineEnds, "WhiteSpaceAtLineEnds",
     "lines of text boxes that end in more than one blank, or in CR LF, not aligned to the left",
     "the blanks before the last count, so the line is too far left", "no white space at the end of a line counts",
     "right edges are straight"},
    {kJustifiedGaps, "JustifiedGaps", "a justified line of one character, or whose gaps would be wider than 300 points",
     "error 4182 in the middle of the box, and the rest of the text is lost",
     "one character stays at the left; gaps end at 300 points", "the text is complete"},
    {kPositionAfterABox, "PositionAfterABox", "the text position after a text box",
     "moved by the width of all the remaining text", "at the end of the last line",
     "the position is where the text ended"},
    {kSpacingAfterABox, "SpacingAfterABox",
     "the character spacing after a justified text box that ends at a word wider than itself",
     "stays that of the last line", "as it was before the box", "text that follows isn't spaced out"},
    {kTurnedBox, "TurnedBox", "a text box under a text matrix rotated by about 90 or 270 degrees",
     "divides by a number next to zero, so lines begin some points away from their place",
     "lines begin where they should", "text along an axis is where it was put"},
    {kWidthsOfLetters, "WidthsOfLetters", "letters of the standard fonts for which the library has no width",
     "all as wide as a missing letter", "as wide as in the fonts that viewers show",
     "Greek, Cyrillic and central European letters don't overlap"},
    {kSymbolFonts, "SymbolFonts", "Symbol and ZapfDingbats with any encoding",
     "bytes are letters of the encoding, which the fonts lack", "bytes are the fonts' own codes",
     "a check mark is `ShowText(\"4\")`"},
    {kClippingPathWhenSaved, "ClippingPathWhenSaved", "a page that is saved after `Clip`, before the path is painted",
     "the path stays open in the file", "the path is ended", "an open path makes a page that viewers refuse"},
};
static_assert(std::size(kDescriptions) == kIntendedDifferenceCount);

constexpr bool IsInOrder() {
  for (std::size_t index = 0; index < std::size(kDescriptions); ++index) {
    if (kDescriptions[index].difference != static_cast<IntendedDifference>(index)) return false;
  }
  return true;
}
static_assert(IsInOrder());

}  // namespace

std::span<const DifferenceDescription> AllIntendedDifferences() { return kDescriptions; }

std::string TableOfIntendedDifferences() {
  std::string table = "| where | libharu 2.3.0 | here | why |\n|---|---|---|---|\n";
  for (const DifferenceDescription &one : kDescriptions)
    table += fmt::format("| {} | {} | {} | {} |\n", one.where, one.library, one.here, one.why);
  return table;
}

}  // namespace quillbar::differential
