// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quillbar::differential {

/// The members of Page and PDFDocument that are judged.
enum class Member : std::uint8_t {
  kSetSize,
  kWidth,
  kHeight,
  kTransformCoordinates,
  kRectangle,
  kEllipse,
  kArc,
  kMoveTo,
  kLineTo,
  kCurveTo,
  kCurveTo2,
  kCurveTo3,
  kDraw,
  kFill,
  kFillAndDraw,
  kEndPath,
  kSetRGBFill,
  kSetRGBStroke,
  kSetCMYKFill,
  kSetCMYKStroke,
  kSetDashPattern,
  kResetDashPattern,
  kConcatMatrix,
  kClip,
  kSaveState,
  kRestoreState,
  kFillColor,
  kStrokeColor,
  kLineWidth,
  kLineCapType,
  kLineJoinType,
  kBeginText,
  kEndText,
  kSetFont,
  kMoveTextPosition,
  kMoveTextPositionNextLine,
  kSetTextMatrix,
  kSetTextRotation,
  kTextLeading,
  kTextRise,
  kWordSpace,
  kTextRenderingMode,
  kMeasureText,
  kMeasureTextWidth,
  kTextRectMeasure,
  kTextRect,
  kTextRectBaseline,
  kClearError,
  kSaveToString,
  kCount
};

/// How a member is called.
enum class Shape : std::uint8_t {
  kSingles,      // a method whose arguments are all Singles
  kSetSingle,    // a property, set
  kSetNumber,    // the same with an enumeration
  kSetColor,     // the same with a Color
  kSetBoolean,   // the same with a Boolean
  kSize,         // size, direction
  kDashPattern,  // numbers, phase
  kFont,         // font, size
  kMeasure,      // text, width, word wrap
  kMeasureInto,  // text, width, word wrap, ByRef width
  kCountLines,   // text, width, ByRef lines
  kBox,          // text, four Singles, alignment, ByRef length
  kDocument      // a method of PDFDocument without arguments
};

/// What is known of a member.
struct MemberDescription {
  Member member;
  const char *name;
  Shape shape;
  std::size_t singles;  // how many of its arguments are Singles
};

const MemberDescription &DescriptionOf(Member member);
std::span<const MemberDescription> AllMembers();

}  // namespace quillbar::differential
