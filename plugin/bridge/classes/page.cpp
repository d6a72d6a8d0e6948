// SPDX-License-Identifier: MIT
// `Page` as it is registered. Names, declarations and their order are fixed, uneven blanks and
// "PROJECTING_SCUARE_END" included: applications refer to them.
#include "binding/members.h"
#include "plugin/image/image.h"
#include "plugin/navigation/annotation.h"
#include "plugin/navigation/destination.h"
#include "plugin/page/colour.h"
#include "plugin/page/extended_graphics_state.h"
#include "plugin/page/graphics_state.h"
#include "plugin/page/lifecycle.h"
#include "plugin/page/page_data.h"
#include "plugin/page/path.h"
#include "plugin/page/size.h"
#include "plugin/text/measure.h"
#include "plugin/text/show_text.h"
#include "plugin/text/text_state.h"

namespace quillbar {

namespace {

using namespace page;
using namespace text;

// clang-format off
using PageProperties = Properties<
    ReadOnlyProperty<"GraphicsMode", "Page.GraphicsModeEnum", GetGraphicsMode>,
    Property<"Height", "Single", GetHeight, SetHeight>,
    Property<"Width", "Single", GetWidth, SetWidth>,
    Property<"FillColor", "Color", GetFillColor, SetFillColor>,
    Property<"StrokeColor", "Color", GetStrokeColor, SetStrokeColor>,
    Property<"LineWidth", "Single", GetLineWidth, SetLineWidth>,
    Property<"LineCapType", "Page.LineCapTypeEnum", GetLineCapType, SetLineCapType>,
    Property<"LineJoinType", "Page.LineJoinTypeEnum", GetLineJoinType, SetLineJoinType>,
    Property<"TextRenderingMode", "Page.TextRenderingModeEnum", GetTextRenderingMode, SetTextRenderingMode>,
    Property<"TextLeading", "Single", GetTextLeading, SetTextLeading>,
    Property<"TextRise", "Single", GetTextRise, SetTextRise>,
    Property<"WordSpace", "Single", GetWordSpace, SetWordSpace>,
    Property<"TransformCoordinates", "Boolean", GetTransformCoordinates, SetTransformCoordinates>>;

using PageMethods = Methods<
    Method<"Constructor()", page::Constructor, kPrivateConstructorFlags>,
    Method<"SetSize(size as Page.PageSizeEnum,direction as Page.PageDirectionEnum)", SetSize>,
    Method<"Rectangle(x as Single,y as Single,width as Single,height as Single)", page::Rectangle>,
    Method<"Ellipse(x as Single,y as Single,x_radius as Single,y_radius as Single)", page::Ellipse>,
    Method<"Arc(x as Single,y as Single,radius as Single,angle1 as Single, angle2 as Single)", page::Arc>,
    Method<"LineTo(x as Single,y as Single)", page::LineTo>,
    Method<"CurveTo(x1 as Single,y1 as Single, x2 as Single, y2 as Single, x3 as Single, y3 as Single)", CurveTo>,
    Method<"CurveTo2(x2 as Single, y2 as Single, x3 as Single, y3 as Single)", CurveTo2>,
    Method<"CurveTo3(x1 as Single, y1 as Single, x3 as Single, y3 as Single)", CurveTo3>,
    Method<"MoveTo(x as Single,y as Single)", MoveTo>,
    Method<"SetDashPattern(dashPattern() as UInt16,phase as UInt32)", SetDashPattern>,
    Method<"ResetDashPattern()", ResetDashPattern>,
    Method<"Draw()", Draw>,
    Method<"Fill()", Fill>,
    Method<"FillAndDraw()", FillAndDraw>,
    Method<"BeginText()", BeginText>,
    Method<"EndText()", EndText>,
    Method<"EndPath()", page::EndPath>,
    Method<"SetFont(fontType as Font, size as Single)", SetFont>,
    Method<"MoveTextPosition(x as Single, y as Single)", MoveTextPosition>,
    Method<"MoveTextPositionNextLine()", MoveTextPositionNextLine>,
    Method<"ShowText(text as String)", ShowText>,
    Method<"ShowTextNextLine(text as String)", ShowTextNextLine>,
    Method<"MeasureText(text as String, width as Single, wordWrap as Boolean) as Integer", MeasureText>,
    Method<"MeasureText(text as String, width as Single, wordWrap as Boolean, ByRef outWidth as Single) as Integer",
           MeasureTextWidth>,
    Method<"TextRectMeasure(text as String, width as Single, Byref outLineCount as Integer) as Single",
           TextRectMeasure>,
    Method<"TextRect(text as String, left as Single, top as Single, right as Single, bottom as Single, "
           "alignment as Page.TextAlignmentEnum, ByRef length as Integer)", TextRect>,
    Method<"TextRectBaseline(text as String, left as Single, baseline as Single, width as Single, height as Single, "
           "alignment as Page.TextAlignmentEnum, ByRef length as Integer)", TextRectBaseline>,
    Method<"DrawImage(image as Image, x as Single, y as Single, width as Single, height as Single)",
           image::DrawImage>,
    Method<"Clip()", Clip>,
    Method<"SaveState()", SaveState>,
    Method<"RestoreState()", RestoreState>,
    Method<"SetExtendedState(state as ExtendedGraphicsState)", extended_graphics_state::SetExtendedState>,
    Method<"CreateTextAnnotation(annotationText as String, left as Single, top as Single, right as Single, "
           "bottom as Single) as TextAnnotation", annotation::CreateTextAnnotation>,
    Method<"CreateURLAnnotation(url as String, left as Single, top as Single, right as Single, "
           "bottom as Single) as URLAnnotation", annotation::CreateURLAnnotation>,
    Method<"CreateLinkAnnotation(target as Destination, left as Single, top as Single, right as Single, "
           "bottom as Single) as LinkAnnotation", annotation::CreateLinkAnnotation>,
    Method<"CreateDestination() as Destination", destination::CreateDestination>,
    Method<"SuggestedTextLeading() as Single", SuggestedTextLeading>,
    Method<"SetCMYKFill(c as Single, m as Single, y as Single, k as Single)", SetCMYKFill>,
    Method<"SetCMYKStroke(c as Single, m as Single, y as Single, k as Single)", SetCMYKStroke>,
    Method<"SetRGBFill(r as Single, g as Single, b as Single)", SetRGBFill>,
    Method<"SetRGBStroke(r as Single, g as Single, b as Single)", SetRGBStroke>,
    Method<"ConcatMatrix(a as Single, b as Single, c as Single, d as Single, x as Single, y as Single)",
           ConcatMatrix>,
    Method<"GetCurrentTextPosition(ByRef x as Single, ByRef y as Single)", GetCurrentTextPosition>,
    Method<"SetTextMatrix(a as Single, b as Single, c as Single, d as Single, x as Single, y as Single)",
           SetTextMatrix>,
    Method<"SetTextRotation(angle as Single, x as Single, y as Single)", SetTextRotation>>;

using PageEnumerations = Enumerations<
    Enumeration<PageSize, "PageSizeEnum", "Integer",
                "LETTER = 0", "LEGAL = 1", "A3 = 2", "A4 = 3", "A5 = 4", "B4 = 5", "B5 = 6", "EXECUTIVE = 7",
                "US4x6 = 8", "US4x8 = 9", "US5x7 = 10", "COMM10 = 11">,
    Enumeration<PageDirection, "PageDirectionEnum", "Integer", "PORTRAIT = 0", "LANDSCAPE = 1">,
    Enumeration<TextAlignment, "TextAlignmentEnum", "Integer", "LEFT = 0", "RIGHT = 1", "CENTER = 2", "JUSTIFY = 3">,
    Enumeration<LineJoinType, "LineJoinTypeEnum", "Integer", "MITER = 0", "ROUND = 1", "BEVEL = 2">,
    Enumeration<LineCapType, "LineCapTypeEnum", "Integer",
                "BUTT_END = 0", "ROUND_END = 1", "PROJECTING_SCUARE_END = 2">,
    Enumeration<GraphicsMode, "GraphicsModeEnum", "UInt16",
                "PAGE_DESCRIPTION = &h0001", "PATH_OBJECT = &h0002", "TEXT_OBJECT = &h0004",
                "CLIPPING_PATH = &h0008", "SHADING = &h0010", "INLINE_IMAGE = &h0020", "EXTERNAL_OBJECT = &h0040">,
    Enumeration<TextRenderingMode, "TextRenderingModeEnum", "Integer",
                "FILL = 0", "STROKE = 1", "FILL_THEN_STROKE = 2", "INVISIBLE = 3", "FILL_CLIPPING = 4",
                "STROKE_CLIPPING = 5", "FILL_STROKE_CLIPPING = 6", "CLIPPING = 7">>;
// clang-format on

}  // namespace

constinit ClassRecord PageData::definition =
    DescribeClass<Members<PageMethods, PageProperties, Events<>, PageEnumerations>>("Page", nullptr, sizeof(PageData),
                                                                                    page::Initialize, page::Finalize);

}  // namespace quillbar
