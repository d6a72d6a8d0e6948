// SPDX-License-Identifier: MIT
// `Page` as it is registered. Names, declarations and their order are fixed, uneven blanks and "PROJECTING_SCUARE_END"
// included: applications refer to them.
//
// Members with a condition are silent in other graphics modes. Lines that forward without one call the library in every
// mode, which refuses with error 4177 where PDF doesn't allow the operator.
#include "plugin/image/image_members.h"
#include "plugin/navigation/annotation_factories.h"
#include "plugin/navigation/destination.h"
#include "plugin/page/colour.h"
#include "plugin/page/extended_graphics_state.h"
#include "plugin/page/graphics_state.h"
#include "plugin/page/page_data.h"
#include "plugin/page/page_lifecycle.h"
#include "plugin/page/path.h"
#include "plugin/page/size.h"
#include "plugin/script/forward.h"
#include "plugin/script/wrapper.h"
#include "plugin/text/measure.h"
#include "plugin/text/show_text.h"
#include "plugin/text/text_rect.h"
#include "plugin/text/text_state.h"

namespace quillbar {

namespace {

using namespace page;
using namespace text;

using Life = Wrapper<&PageData::document>;
using InPath = In<GraphicsMode::PATH_OBJECT>;
using InText = In<GraphicsMode::TEXT_OBJECT>;
using InPageDescription = In<GraphicsMode::PAGE_DESCRIPTION>;

// clang-format off
using PageProperties = Properties<
    ReadOnlyProperty<"GraphicsMode", "Page.GraphicsModeEnum", GetGraphicsMode>,
    /// In points, from 3 to 14,400; error 4180 outside.
    Property<"Height", "Single", Forwarded<Page, HPDF_Page_GetHeight>::Get, SetHeight>,
    ForwardedProperty<Page, "Width", "Single", HPDF_Page_GetWidth, HPDF_Page_SetWidth>,
    /// Colours as scripts have them; to be set in page description or text. One that was set as CMYK, or never, reads
    /// as black; the top byte is not used and reads as zero.
    Property<"FillColor", "Color", Forwarded<Page, HPDF_Page_GetRGBFill>::Get, SetColor<HPDF_Page_SetRGBFill>>,
    Property<"StrokeColor", "Color", Forwarded<Page, HPDF_Page_GetRGBStroke>::Get, SetColor<HPDF_Page_SetRGBStroke>>,
    /// How lines are stroked: in points, 0 or more, and by the enumerations; error 4182 for other numbers.
    ForwardedProperty<Page, "LineWidth", "Single", HPDF_Page_GetLineWidth, HPDF_Page_SetLineWidth>,
    ForwardedProperty<Page, "LineCapType", "Page.LineCapTypeEnum", HPDF_Page_GetLineCap, HPDF_Page_SetLineCap>,
    ForwardedProperty<Page, "LineJoinType", "Page.LineJoinTypeEnum", HPDF_Page_GetLineJoin, HPDF_Page_SetLineJoin>,
    /// Whether glyphs are filled, stroked or made part of the clipping area; error 4182 for other numbers.
    ForwardedProperty<Page, "TextRenderingMode", "Page.TextRenderingModeEnum", HPDF_Page_GetTextRenderingMode,
                      HPDF_Page_SetTextRenderingMode>,
    /// In points: the distance of lines, the height above the line, and what is added between words, from -30 to 300
    /// (error 4182 outside).
    ForwardedProperty<Page, "TextLeading", "Single", HPDF_Page_GetTextLeading, HPDF_Page_SetTextLeading>,
    ForwardedProperty<Page, "TextRise", "Single", HPDF_Page_GetTextRise, HPDF_Page_SetTextRise>,
    ForwardedProperty<Page, "WordSpace", "Single", HPDF_Page_GetWordSpace, HPDF_Page_SetWordSpace>,
    Property<"TransformCoordinates", "Boolean", GetTransformCoordinates, SetTransformCoordinates>>;

using PageMethods = Methods<
    Method<"Constructor()", Life::Constructor<Page>, kPrivateConstructorFlags>,
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
    /// Strokes the path and ends it; an error where there is none.
    ForwardedMethod<Page, "Draw()", HPDF_Page_Stroke>,
    /// Fills the path by the nonzero winding rule and ends it. After `Clip` nothing happens, and the path stays open.
    ForwardedMethod<Page, "Fill()", HPDF_Page_Fill, InPath>,
    /// Both. After `Clip` nothing happens.
    ForwardedMethod<Page, "FillAndDraw()", HPDF_Page_FillStroke, InPath>,
    /// Begins a text object, where the text's position is at the origin, and ends it.
    ForwardedMethod<Page, "BeginText()", HPDF_Page_BeginText, InPageDescription>,
    ForwardedMethod<Page, "EndText()", HPDF_Page_EndText, InText>,
    /// Ends the path without painting it; an error where there is none.
    ForwardedMethod<Page, "EndPath()", HPDF_Page_EndPath>,
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
    /// The path becomes the clipping area, by the nonzero winding rule, once it is ended; an error where there is none.
    ForwardedMethod<Page, "Clip()", HPDF_Page_Clip>,
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
    /// Components from 0 to 1; an error outside. Page description or text.
    ForwardedMethod<Page, "SetCMYKFill(c as Single, m as Single, y as Single, k as Single)", HPDF_Page_SetCMYKFill,
                    WhereColoursChange>,
    ForwardedMethod<Page, "SetCMYKStroke(c as Single, m as Single, y as Single, k as Single)", HPDF_Page_SetCMYKStroke,
                    WhereColoursChange>,
    ForwardedMethod<Page, "SetRGBFill(r as Single, g as Single, b as Single)", HPDF_Page_SetRGBFill,
                    WhereColoursChange>,
    ForwardedMethod<Page, "SetRGBStroke(r as Single, g as Single, b as Single)", HPDF_Page_SetRGBStroke,
                    WhereColoursChange>,
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
    DescribeClass<Members<PageMethods, PageProperties, Events<>, PageEnumerations>, page::Initialize, page::Finalize>(
        "Page", nullptr, sizeof(PageData));

}  // namespace quillbar
