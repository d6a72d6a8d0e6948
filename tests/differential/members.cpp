// SPDX-License-Identifier: MIT
#include "tests/differential/members.h"

namespace quillbar::differential {

namespace {

// In the order of the enumeration.
constexpr MemberDescription kMembers[] = {
    {Member::kSetSize, "SetSize", Shape::kSize, 0},
    {Member::kWidth, "Width", Shape::kSetSingle, 1},
    {Member::kHeight, "Height", Shape::kSetSingle, 1},
    {Member::kTransformCoordinates, "TransformCoordinates", Shape::kSetBoolean, 0},
    {Member::kRectangle, "Rectangle", Shape::kSingles, 4},
    {Member::kEllipse, "Ellipse", Shape::kSingles, 4},
    {Member::kArc, "Arc", Shape::kSingles, 5},
    {Member::kMoveTo, "MoveTo", Shape::kSingles, 2},
    {Member::kLineTo, "LineTo", Shape::kSingles, 2},
    {Member::kCurveTo, "CurveTo", Shape::kSingles, 6},
    {Member::kCurveTo2, "CurveTo2", Shape::kSingles, 4},
    {Member::kCurveTo3, "CurveTo3", Shape::kSingles, 4},
    {Member::kDraw, "Draw", Shape::kSingles, 0},
    {Member::kFill, "Fill", Shape::kSingles, 0},
    {Member::kFillAndDraw, "FillAndDraw", Shape::kSingles, 0},
    {Member::kEndPath, "EndPath", Shape::kSingles, 0},
    {Member::kSetRGBFill, "SetRGBFill", Shape::kSingles, 3},
    {Member::kSetRGBStroke, "SetRGBStroke", Shape::kSingles, 3},
    {Member::kSetCMYKFill, "SetCMYKFill", Shape::kSingles, 4},
    {Member::kSetCMYKStroke, "SetCMYKStroke", Shape::kSingles, 4},
    {Member::kSetDashPattern, "SetDashPattern", Shape::kDashPattern, 0},
    {Member::kResetDashPattern, "ResetDashPattern", Shape::kSingles, 0},
    {Member::kConcatMatrix, "ConcatMatrix", Shape::kSingles, 6},
    {Member::kClip, "Clip", Shape::kSingles, 0},
    {Member::kSaveState, "SaveState", Shape::kSingles, 0},
    {Member::kRestoreState, "RestoreState", Shape::kSingles, 0},
    {Member::kFillColor, "FillColor", Shape::kSetColor, 0},
    {Member::kStrokeColor, "StrokeColor", Shape::kSetColor, 0},
    {Member::kLineWidth, "LineWidth", Shape::kSetSingle, 1},
    {Member::kLineCapType, "LineCapType", Shape::kSetNumber, 0},
    {Member::kLineJoinType, "LineJoinType", Shape::kSetNumber, 0},
    {Member::kBeginText, "BeginText", Shape::kSingles, 0},
    {Member::kEndText, "EndText", Shape::kSingles, 0},
    {Member::kSetFont, "SetFont", Shape::kFont, 1},
    {Member::kMoveTextPosition, "MoveTextPosition", Shape::kSingles, 2},
    {Member::kMoveTextPositionNextLine, "MoveTextPositionNextLine", Shape::kSingles, 0},
    {Member::kSetTextMatrix, "SetTextMatrix", Shape::kSingles, 6},
    {Member::kSetTextRotation, "SetTextRotation", Shape::kSingles, 3},
    {Member::kTextLeading, "TextLeading", Shape::kSetSingle, 1},
    {Member::kTextRise, "TextRise", Shape::kSetSingle, 1},
    {Member::kWordSpace, "WordSpace", Shape::kSetSingle, 1},
    {Member::kTextRenderingMode, "TextRenderingMode", Shape::kSetNumber, 0},
    {Member::kMeasureText, "MeasureText", Shape::kMeasure, 1},
    {Member::kMeasureTextWidth, "MeasureText", Shape::kMeasureInto, 1},
    {Member::kTextRectMeasure, "TextRectMeasure", Shape::kCountLines, 1},
    {Member::kTextRect, "TextRect", Shape::kBox, 4},
    {Member::kTextRectBaseline, "TextRectBaseline", Shape::kBox, 4},
    {Member::kClearError, "ClearError", Shape::kDocument, 0},
    {Member::kSaveToString, "SaveToString", Shape::kDocument, 0},
};
static_assert(std::size(kMembers) == static_cast<std::size_t>(Member::kCount));

constexpr bool IsInOrder() {
  for (std::size_t index = 0; index < std::size(kMembers); ++index) {
    if (kMembers[index].member != static_cast<Member>(index)) return false;
  }
  return true;
}
static_assert(IsInOrder());

}  // namespace

const MemberDescription &DescriptionOf(Member member) { return kMembers[static_cast<std::size_t>(member)]; }

std::span<const MemberDescription> AllMembers() { return kMembers; }

}  // namespace quillbar::differential
