// SPDX-License-Identifier: MIT
// The types and functions that the cases of this folder bind. Each case is a file with one wrong table line and, where
// RIGHT_LINE is defined, the right line in its place.
#pragma once

#include "binding/members.h"

namespace quillbar {

enum class LineCapType : Integer {};
template <>
inline constexpr FixedString kEnumerationName<LineCapType>{"Page.LineCapTypeEnum"};

enum class LineJoinType : Integer {};
template <>
inline constexpr FixedString kEnumerationName<LineJoinType>{"Page.LineJoinTypeEnum"};

using Page = Instance<"Page">;
using Font = Instance<"Font">;
using Image = Instance<"Image">;

void MoveTo(Page *page, Single x, Single y);
void SetFont(Page *page, Font *font, Single size);
void SetLineCap(Page *page, LineCapType cap);
void SetDash(Page *page, ArrayOf<std::uint16_t> *pattern, std::uint32_t phase);
void GetPosition(Page *page, Single *x, Single *y);
Integer MeasureText(Page *page, String text, Single width);
Single GetHeight(Page *page);
void SetHeight(Page *page, Integer parameter, Single height);
void SetHeightInteger(Page *page, Integer parameter, Integer height);
void SetHeightWithoutParameter(Page *page, Single height);
Integer GetFontAscent(Font *font);
void SetFontHeight(Font *font, Integer parameter, Single height);
void MoveAnywhere(Single x, Single y);
void FontConstructor(Font *font);

}  // namespace quillbar
