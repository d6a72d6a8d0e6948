// SPDX-License-Identifier: MIT
// Operators that show text: Tj and ' (ISO 32000-1, table 109).
//
// libharu's do not write text of no width, such as a lone combining mark, and measure a word space that viewers do not
// show in fonts of two-byte codes.
#include "plugin/engine/text/text_showing.h"

#include <hpdf_font.h>
#include <hpdf_utils.h>

#include <iterator>
#include <new>
#include <string>

#include "plugin/engine/fonts/simple_font.h"
#include "plugin/engine/fonts/truetype/truetype_type0_font.h"
#include "plugin/engine/text/text_position.h"
#include "plugin/engine/text/text_width.h"

namespace quillbar::engine {

namespace {

std::string_view OperatorFor(ShownAt place) { return place == ShownAt::kNextLine ? "'" : "Tj"; }

void AppendOperator(ContentWriter &content, ShownAt place) {
  if (place == ShownAt::kNextLine) {
    content.Append("'");
  } else {
    content.Append("Tj");
  }
}

// Text in the codes of an embedded TrueType font, with the word space written after each space: viewers add it to
// codes of one byte only, and these have two. Throws std::bad_alloc.
HPDF_TextWidth WriteCodes(ContentWriter &content, const HPDF_GState_Rec &state, std::string_view text, ShownAt place,
                          const PartOfText &part) {
  const HPDF_REAL space = state.word_space + part.gap;
  if (space == 0 && part.whole == nullptr && IsPlain(state.font, text)) {
    HPDF_TextWidth width{};
    content.AppendString(
        "<>", text, [&](std::string_view piece, char *end) { return WritePlainCodes(state.font, piece, end, width); });
    AppendOperator(content, place);
    return width;
  }
  char distance[HPDF_TMP_BUF_SIZ] = "";
  TextGaps gaps;
  if (space != 0) {
    // In thousandths of the font size, which are taken off the position.
    const char *end = HPDF_FToA(distance, -space * 1000 / state.font_size, std::end(distance) - 1);
    gaps.afterSpace = {distance, end};
  }
  std::string operand;
  const ShownText shown = AppendShownText(state.font, AsBytes(text), part.whole, gaps, operand);
  // No operator moves to the next line and takes distances.
  if (shown.isArray && place == ShownAt::kNextLine) content.Append("T*");
  content.AppendText(operand);
  content.Append(shown.isArray ? std::string_view("TJ") : OperatorFor(place));
  return shown.width;
}

// Text in a font of one-byte codes, as it is.
HPDF_TextWidth WriteBytes(ContentWriter &content, HPDF_Font font, std::string_view text, ShownAt place) {
  HPDF_TextWidth width{};
  content.AppendString("()", text,
                       [&](std::string_view part, char *end) { return WriteShownCodes(font, part, end, width); });
  AppendOperator(content, place);
  return width;
}

// Writes the text, of which `part` tells the order; gives what it counts. Throws std::bad_alloc.
HPDF_TextWidth WriteOrdered(ContentWriter &content, const HPDF_GState_Rec &state, std::string_view text, ShownAt place,
                            const PartOfText &part) {
  HPDF_Font font = state.font;
  switch (static_cast<HPDF_FontAttr>(font->attr)->type) {
    case HPDF_FONT_TYPE0_TT:
      return WriteCodes(content, state, text, place, part);
    case HPDF_FONT_TYPE0_CID:
      content.Write(HexString{text}, OperatorFor(place));
      break;
    default:
      if (part.whole == nullptr) return WriteBytes(content, font, text, place);
      WriteBytes(content, font, OrderedCodes(font, text, *part.whole), place);
      break;
  }
  return CountedWidth(state, text, part.whole);
}

// The same for a text whose order may still have to be found out.
HPDF_TextWidth WriteText(ContentWriter &content, const HPDF_GState_Rec &state, std::string_view text, ShownAt place,
                         PartOfText part) {
  try {
    std::optional<DirectedText> own;
    if (part.whole == nullptr) {
      own = DirectedTextOf(state.font, AsBytes(text));
      if (own) part.whole = &*own;
    }
    return WriteOrdered(content, state, text, place, part);
  } catch (const std::bad_alloc &) {
    content.Fail(HPDF_SetError(state.font->error, HPDF_FAILD_TO_ALLOC_MEM, 0));
    return {};
  }
}

}  // namespace

PageOperator ShowsText(HPDF_Page page) {
  PageOperator call(page, kInText);
  call.RefuseIf([](const PageAttributes &now) { return now.gstate->font == nullptr; }, HPDF_PAGE_FONT_NOT_FOUND);
  return call;
}

HPDF_STATUS ShowText(PageOperator &call, std::string_view text, ShownAt place, const PartOfText &part) {
  HPDF_TextWidth width{};
  const auto write = [&](ContentWriter &content) { width = WriteText(content, *call.Now().gstate, text, place, part); };
  return call.RefuseIf(text.size() > HPDF_LIMIT_MAX_STRING_LEN, HPDF_STRING_OUT_OF_RANGE)
      .WriteBy(write)
      .Then([&](PageAttributes &now) {
        if (place == ShownAt::kNextLine) BeginNextLine(now);
        Advance(now, WidthInState(*now.gstate, width) + part.gap * static_cast<HPDF_REAL>(width.numspace));
      });
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

/// Tj: shows `text`, in bytes of the font's encoding; nothing is written for null and an empty one.
HPDF_STATUS HPDF_Page_ShowText(HPDF_Page page, const char *text) {
  if (text == nullptr || *text == '\0') return PageOperator(page, kInText).Status();
  PageOperator show = ShowsText(page);
  return ShowText(show, text, ShownAt::kPosition);
}

/// ': the same on the next line, which null and an empty text only begin (T*).
HPDF_STATUS HPDF_Page_ShowTextNextLine(HPDF_Page page, const char *text) {
  PageOperator show = ShowsText(page);
  if (text == nullptr || *text == '\0') return show.Write("T*").Then(BeginNextLine);
  return ShowText(show, text, ShownAt::kNextLine);
}

}  // extern "C"
