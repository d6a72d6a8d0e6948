// SPDX-License-Identifier: MIT
#include "tests/differential/call_generator.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "tests/differential/standard_fonts.h"

namespace quillbar::differential {

namespace {

using enum Member;

// A member is listed as often as it is likely.
constexpr Member kForPage[] = {kSetSize,
                               kWidth,
                               kHeight,
                               kTransformCoordinates,
                               kTransformCoordinates,
                               kRectangle,
                               kEllipse,
                               kArc,
                               kArc,
                               kMoveTo,
                               kMoveTo,
                               kMoveTo,
                               kSetRGBFill,
                               kSetRGBStroke,
                               kSetCMYKFill,
                               kSetCMYKStroke,
                               kSetDashPattern,
                               kSetDashPattern,
                               kConcatMatrix,
                               kSaveState,
                               kSaveState,
                               kSaveState,
                               kRestoreState,
                               kRestoreState,
                               kFillColor,
                               kStrokeColor,
                               kLineWidth,
                               kLineCapType,
                               kLineJoinType,
                               kBeginText,
                               kBeginText,
                               kBeginText,
                               kBeginText,
                               kBeginText,
                               kSetFont,
                               kSetFont,
                               kTextLeading,
                               kTextRise,
                               kWordSpace,
                               kTextRenderingMode,
                               kMeasureTextWidth,
                               kResetDashPattern};
constexpr Member kForPath[] = {kRectangle, kEllipse, kArc,    kArc,         kMoveTo,  kMoveTo,   kLineTo,
                               kLineTo,    kLineTo,  kLineTo, kCurveTo,     kCurveTo, kCurveTo2, kCurveTo3,
                               kDraw,      kDraw,    kFill,   kFillAndDraw, kEndPath, kClip};
constexpr Member kForClipping[] = {kDraw, kEndPath, kEndPath, kFill, kLineTo, kArc};
constexpr Member kForText[] = {kSetFont,
                               kSetFont,
                               kSetFont,
                               kMoveTextPosition,
                               kMoveTextPosition,
                               kMoveTextPosition,
                               kMoveTextPositionNextLine,
                               kMoveTextPositionNextLine,
                               kSetTextMatrix,
                               kSetTextRotation,
                               kTextLeading,
                               kTextLeading,
                               kTextRise,
                               kWordSpace,
                               kWordSpace,
                               kTextRenderingMode,
                               kMeasureText,
                               kMeasureTextWidth,
                               kTextRectMeasure,
                               kTextRectMeasure,
                               kTextRect,
                               kTextRect,
                               kTextRect,
                               kTextRect,
                               kTextRect,
                               kTextRectBaseline,
                               kTextRectBaseline,
                               kEndText,
                               kEndText,
                               kFillColor,
                               kSetRGBFill,
                               kTransformCoordinates,
                               kHeight,
                               kLineWidth};

Member OneOf(RandomNumbers &random, std::span<const Member> members) {
  return members[random.Below(static_cast<unsigned>(members.size()))];
}

}  // namespace

Sequence CallGenerator::Begin() {
  Sequence sequence;
  for (FontChoice &font : sequence.fonts) {
    font.name = kStandardFonts[random_.Below(static_cast<unsigned>(std::size(kStandardFonts)))];
    font.encoding = kEncodings[random_.Below(static_cast<unsigned>(std::size(kEncodings)))].number;
    // The encoding of a symbol font has no effect in the reference, where two of them would be one font.
    for (const FontChoice &other : sequence.fonts) {
      if (&other < &font && other.name == font.name && IsSymbolFont(font.name)) font.encoding = other.encoding;
    }
  }
  return sequence;
}

Member CallGenerator::NextMember(unsigned mode) {
  if (random_.Percent(10)) return static_cast<Member>(random_.Below(static_cast<unsigned>(kCount)));
  switch (mode) {
    case 2:
      return OneOf(random_, kForPath);
    case 4:
      return OneOf(random_, kForText);
    case 8:
      return OneOf(random_, kForClipping);
    default:
      return OneOf(random_, kForPage);
  }
}

/// A number that tends to cause trouble.
float CallGenerator::Any() {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  return random_.OneOf({0.0F,          -0.0F,
                        1e-6F,         -4e-6F,
                        1e-30F,        5e-6F,
                        0.00001F,      -0.1F,
                        0.999995F,     -1.0F,
                        32766.9F,      32767.0F,
                        32768.5F,      -40000.25F,
                        1e6F,          -1e9F,
                        2147483520.0F, 3e38F,
                        -3e38F,        kInfinity,
                        -kInfinity,    std::numeric_limits<float>::quiet_NaN()});
}

float CallGenerator::Coordinate() {
  if (random_.Percent(3)) return Any();
  const auto number = static_cast<float>(random_.Between(-2000, 9000));
  return random_.Percent(50) ? number / 10 : number / 9;
}

float CallGenerator::Length() {
  if (random_.Percent(4)) return Any();
  return static_cast<float>(random_.Between(0, 5000)) / random_.OneOf({10.0F, 16.0F, 7.0F});
}

float CallGenerator::Component() {
  if (random_.Percent(6)) return Any();
  return random_.Percent(3) ? 1.0001F : static_cast<float>(random_.Between(0, 1000)) / 1000;
}

float CallGenerator::Angle() {
  if (random_.Percent(2)) return Any();
  if (random_.Percent(3)) return static_cast<float>(random_.Between(-1000000, 1000000)) / 10;
  if (random_.Percent(50)) return static_cast<float>(random_.Between(-8, 12)) * 45;
  return static_cast<float>(random_.Between(-7200, 7200)) / 10;
}

float CallGenerator::FontSize() {
  if (random_.Percent(6)) {
    return random_.OneOf({0.0F, -0.5F, 600.0F, 600.5F, 5000.0F, 1e6F, 0.001F, std::numeric_limits<float>::quiet_NaN(),
                          std::numeric_limits<float>::infinity()});
  }
  return static_cast<float>(random_.Between(10, 480)) / 10;
}

float CallGenerator::Scale() {
  if (random_.Percent(8)) return random_.OneOf({0.0F, 1e-5F, 1000.0F, -1.0F, 1e-9F});
  return static_cast<float>(random_.Between(-300, 300)) / 100;
}

void CallGenerator::FillMatrix(float *matrix) {
  if (random_.Percent(45)) {
    constexpr float kPlain[][4] = {{1, 0, 0, 1}, {1, 0, 0, -1}, {2, 0, 0, 0.5F}, {1, 0, 0.25F, 1}};
    std::ranges::copy(kPlain[random_.Below(4)], matrix);
  } else if (random_.Percent(25)) {
    constexpr float kSingular[][4] = {{1, 1, 1, 1}, {2, 2, 1, 1}, {0.5F, 1, 1, 2}, {1, 0, 1, 0}, {0, 0, 0, 0}};
    std::ranges::copy(kSingular[random_.Below(5)], matrix);
  } else {
    for (int index = 0; index < 4; ++index) matrix[index] = Scale();
  }
  matrix[4] = Coordinate();
  matrix[5] = Coordinate();
}

std::int32_t CallGenerator::NumberUpTo(std::int32_t last) {
  if (random_.Percent(8)) return random_.OneOf({-1, last + 2, 255, 65536, 0x7FFFFFFF, -0x7FFFFFFF});
  return random_.Between(0, last + 1);
}

std::string CallGenerator::Text() {
  std::string text;
  if (random_.Percent(2)) return text;
  const bool isOneWordLong = random_.Percent(5);
  const bool hasLongSpaces = random_.Percent(15);
  const unsigned words = isOneWordLong ? 1 : 1 + random_.Below(random_.Percent(80) ? 12 : 60);
  for (unsigned word = 0; word < words; ++word) {
    const unsigned length = isOneWordLong ? 60 : 1 + random_.Below(9);
    for (unsigned index = 0; index < length; ++index) {
      // Letters, or any byte that is not white space and doesn't end the text, and none of those that are directional
      // marks in some encodings: text with a mark is ordered, which the reference doesn't do.
      unsigned byte = random_.Percent(70) ? 'a' + random_.Below(26) : 1 + random_.Below(255);
      if (byte <= 32) byte = 33 + byte;
      if (byte == 0xFD || byte == 0xFE) byte = 0xFF;
      text += static_cast<char>(byte);
    }
    if (word + 1 == words && !hasLongSpaces) break;
    if (random_.Percent(8)) {
      text += random_.OneOf({'\n', '\r', '\t', '\f'});
    } else {
      text += ' ';
    }
    if (hasLongSpaces && random_.Percent(30)) text += random_.OneOf({"\r\n", " ", "\n", "  \n", "\n\n"});
  }
  if (random_.Percent(2)) text.insert(0, 1, '\n');
  if (random_.Percent(3)) text.insert(text.size() / 2, 1, static_cast<char>(1 + random_.Below(31)));
  return text;
}

Call CallGenerator::Next(unsigned mode) {
  Call call;
  call.member = NextMember(mode);
  auto &n = call.singles;
  const auto fill = [&](float (CallGenerator::*source)()) {
    for (std::size_t index = 0; index < DescriptionOf(call.member).singles; ++index) n[index] = (this->*source)();
  };
  switch (call.member) {
    case kSetSize:
      call.first = random_.Percent(90) ? random_.Between(0, 12) : random_.OneOf({-1, 13, 255, 0x7FFFFFFF});
      call.second = random_.Percent(90) ? random_.Between(0, 1) : random_.OneOf({-1, 2});
      break;
    case kWidth:
    case kHeight:
      n[0] = random_.Percent(15) ? random_.OneOf({2.9999F, 3.0F, 14400.0F, 14400.5F, -5.0F}) : Length();
      break;
    case kTransformCoordinates:
      call.flag = random_.Percent(60);
      break;
    case kArc:
      n = {Coordinate(), Coordinate(), random_.Percent(6) ? 0.0F : Length(), Angle(), 0, 0};
      n[4] = Angle();
      if (random_.Percent(30)) n[4] = n[3] + static_cast<float>(random_.Between(-3600, 3600)) / 10;
      if (random_.Percent(15)) n[4] = n[3] + random_.OneOf({0.0F, 360.0F});
      break;
    case kRectangle:
    case kEllipse:
      n = {Coordinate(), Coordinate(), Length(), Length(), 0, 0};
      break;
    case kSetRGBFill:
    case kSetRGBStroke:
    case kSetCMYKFill:
    case kSetCMYKStroke:
      fill(&CallGenerator::Component);
      break;
    case kSetDashPattern:
      call.dashes.resize(random_.Below(12));
      for (std::uint16_t &dash : call.dashes)
        dash =
            static_cast<std::uint16_t>(random_.Percent(3) ? random_.OneOf({0, 101, 65535}) : random_.Between(1, 100));
      call.phase =
          random_.Percent(8) ? random_.OneOf({0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 100000U}) : random_.Below(30);
      break;
    case kConcatMatrix:
    case kSetTextMatrix:
      FillMatrix(n.data());
      break;
    case kFillColor:
    case kStrokeColor:
      call.first = static_cast<std::int32_t>(static_cast<std::uint32_t>(random_.Next()));
      break;
    case kLineWidth:
    case kTextLeading:
      n[0] = random_.Percent(20) ? 0 : random_.Percent(10) ? Any() : Length() / 10;
      break;
    case kLineCapType:
    case kLineJoinType:
      call.first = NumberUpTo(2);
      break;
    case kTextRenderingMode:
      call.first = NumberUpTo(7);
      break;
    case kSetFont:
      call.first = random_.Between(0, 2);
      n[0] = FontSize();
      break;
    case kSetTextRotation:
      n = {Angle(), Coordinate(), Coordinate(), 0, 0, 0};
      break;
    case kTextRise:
      n[0] = Coordinate() / 10;
      break;
    case kWordSpace:
      n[0] = random_.Percent(10) ? random_.OneOf({-30.0F, -30.1F, 300.0F, 300.1F}) : Length() / 50;
      break;
    case kMeasureText:
    case kMeasureTextWidth:
    case kTextRectMeasure:
      call.text = Text();
      n[0] = Length();
      call.flag = random_.Percent(50);
      break;
    case kTextRect: {
      call.text = Text();
      const float left = Coordinate(), top = Coordinate();
      n = {left, top, left + Length(), random_.Percent(50) ? top - Length() : top + Length(), 0, 0};
      call.first = random_.Percent(95) ? random_.Between(0, 3) : random_.OneOf({-1, 4, 255});
      break;
    }
    case kTextRectBaseline:
      call.text = Text();
      n = {Coordinate(), Coordinate(), Length(), Length(), 0, 0};
      call.first = random_.Between(0, 3);
      break;
    default:
      fill(&CallGenerator::Coordinate);
      break;
  }
  return call;
}

}  // namespace quillbar::differential
