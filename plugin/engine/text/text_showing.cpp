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

std::span<const HPDF_BYTE> AsBytes(std::string_view text) {
  return {reinterpret_cast<const HPDF_BYTE *>(text.data()), text.size()};
}

// Text in the codes of an embedded TrueType font. Throws std::bad_alloc.
void WriteCodes(ContentWriter &content, HPDF_Font font, std::string_view text, ShownAt place) {
  std::string codes = "<";
  AppendCodesInHex(font, AsBytes(text), {}, codes);
  content.AppendText(codes += "> ");
  content.Append(OperatorFor(place));
}

// The same with the word space written after each space: viewers add it to codes of one byte only, and these have two.
// No operator moves to the next line and takes distances. Throws std::bad_alloc.
void WriteSpacedCodes(ContentWriter &content, const HPDF_GState_Rec &state, std::string_view text, ShownAt place) {
  // In thousandths of the font size, which are taken off the position.
  char distance[HPDF_TMP_BUF_SIZ];
  HPDF_FToA(distance, -state.word_space * 1000 / state.font_size, std::end(distance) - 1);
  std::string codes = "[<";
  AppendCodesInHex(state.font, AsBytes(text), std::string(">") + distance + '<', codes);
  if (codes.back() == '<') {
    codes.pop_back();
  } else {
    codes.push_back('>');
  }
  if (place == ShownAt::kNextLine) content.Append("T*");
  content.AppendText(codes += "] ");
  content.Append("TJ");
}

void WriteText(ContentWriter &content, const HPDF_GState_Rec &state, std::string_view text, ShownAt place) {
  HPDF_Font font = state.font;
  switch (static_cast<HPDF_FontAttr>(font->attr)->type) {
    case HPDF_FONT_TYPE0_TT:
      try {
        if (state.word_space == 0) {
          WriteCodes(content, font, text, place);
        } else {
          WriteSpacedCodes(content, state, text, place);
        }
      } catch (const std::bad_alloc &) {
        content.Fail(HPDF_SetError(font->error, HPDF_FAILD_TO_ALLOC_MEM, 0));
      }
      break;
    case HPDF_FONT_TYPE0_CID:
      content.Write(HexString{text}, OperatorFor(place));
      break;
    default:
      NoteShownCodes(font, text);
      content.Write(LiteralString{text}, OperatorFor(place));
      break;
  }
}

}  // namespace

PageOperator ShowsText(HPDF_Page page) {
  PageOperator call(page, kInText);
  call.RefuseIf([](const PageAttributes &now) { return now.gstate->font == nullptr; }, HPDF_PAGE_FONT_NOT_FOUND);
  return call;
}

HPDF_STATUS ShowText(PageOperator &call, std::string_view text, ShownAt place) {
  const auto write = [&](ContentWriter &content) { WriteText(content, *call.Now().gstate, text, place); };
  return call.RefuseIf(text.size() > HPDF_LIMIT_MAX_STRING_LEN, HPDF_STRING_OUT_OF_RANGE)
      .WriteBy(write)
      .Then([&](PageAttributes &now) {
        if (place == ShownAt::kNextLine) BeginNextLine(now);
        Advance(now, WidthInState(*now.gstate, CountedWidth(*now.gstate, text)));
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
