// SPDX-License-Identifier: MIT
// HPDF_Page_ShowText, HPDF_Page_ShowTextNextLine and HPDF_Page_ShowTextNextLineEx.
//
// libharu's do not write text of no width, such as a lone combining mark; measure a word space that viewers
// do not show in fonts of two-byte codes; write a text that is too long before they refuse it; and in the
// last one put the spacings inside the text.
#include "plugin/engine/text/show_text.h"

#include <hpdf_utils.h>

#include <new>
#include <string>

#include "plugin/engine/fonts/simple_font.h"
#include "plugin/engine/fonts/truetype/truetype_type0_font.h"
#include "plugin/engine/streams/escaped_text.h"

namespace quillbar::engine {

namespace {

const HPDF_BYTE *AsBytes(std::string_view text) { return reinterpret_cast<const HPDF_BYTE *>(text.data()); }

// Whether the page can show text now; if not, `status` tells how the call ends.
bool CanShow(HPDF_Page page, HPDF_STATUS &status) {
  status = HPDF_Page_CheckState(page, HPDF_GMODE_TEXT_OBJECT);
  if (status != HPDF_OK) return false;
  if (static_cast<HPDF_PageAttr>(page->attr)->gstate->font == nullptr)
    status = HPDF_RaiseError(page->error, HPDF_PAGE_FONT_NOT_FOUND, 0);
  return status == HPDF_OK;
}

// Whether `text` is short enough for the library; if not, `status` tells how the call ends.
bool IsShortEnough(HPDF_Page page, std::string_view text, HPDF_STATUS &status) {
  if (text.size() > HPDF_LIMIT_MAX_STRING_LEN) status = HPDF_RaiseError(page->error, HPDF_STRING_OUT_OF_RANGE, 0);
  return status == HPDF_OK;
}

HPDF_STATUS Show(HPDF_Page page, std::string_view text, std::string_view showOperator) {
  const HPDF_STATUS status = WriteShownText(static_cast<HPDF_PageAttr>(page->attr), text, showOperator);
  return status == HPDF_OK ? status : HPDF_CheckError(page->error);
}

HPDF_STATUS Write(HPDF_Stream stream, std::string_view text) {
  return HPDF_Stream_Write(stream, AsBytes(text), static_cast<HPDF_UINT>(text.size()));
}

// `text` in the codes of an embedded TrueType font, with the operator that shows it.
std::string Codes(HPDF_Font font, std::string_view text, std::string_view showOperator) {
  std::string shown = "<";
  AppendCodesInHex(font, {AsBytes(text), text.size()}, {}, shown);
  shown.push_back('>');
  return shown.append(showOperator);
}

// The same with the word space written behind each space: viewers add it to codes of one byte only, and these
// have two.
std::string SpacedCodes(const HPDF_GState_Rec &state, std::string_view text, std::string_view showOperator) {
  char distance[HPDF_TMP_BUF_SIZ];
  // In thousandths of the font size, which are taken off the position.
  HPDF_FToA(distance, -state.word_space * 1000 / state.font_size, distance + sizeof distance - 1);
  const std::string behindSpace = std::string(">") + distance + '<';
  // No operator moves to the next line and takes distances.
  std::string shown = showOperator == kShowOnNextLine ? "T*\n[<" : "[<";
  AppendCodesInHex(state.font, {AsBytes(text), text.size()}, behindSpace, shown);
  if (shown.back() == '<') {
    shown.pop_back();
  } else {
    shown.push_back('>');
  }
  return shown += "] TJ\n";
}

}  // namespace

HPDF_STATUS WriteShownText(HPDF_PageAttr page, std::string_view text, std::string_view showOperator) {
  HPDF_Font font = page->gstate->font;
  const HPDF_FontType type = static_cast<HPDF_FontAttr>(font->attr)->type;
  if (type == HPDF_FONT_TYPE0_TT) {
    try {
      return Write(page->stream, page->gstate->word_space == 0 ? Codes(font, text, showOperator)
                                                               : SpacedCodes(*page->gstate, text, showOperator));
    } catch (const std::bad_alloc &) {
      return HPDF_SetError(font->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
    }
  }
  if (type == HPDF_FONT_TYPE0_CID) {
    HPDF_STATUS status = HPDF_Stream_WriteChar(page->stream, '<');
    if (status == HPDF_OK) {
      status = HPDF_Stream_WriteBinary(page->stream, AsBytes(text), static_cast<HPDF_UINT>(text.size()), nullptr);
    }
    if (status == HPDF_OK) status = HPDF_Stream_WriteChar(page->stream, '>');
    return status == HPDF_OK ? Write(page->stream, showOperator) : status;
  }
  NoteShownCodes(font, text);
  return WriteLiteralString(page->stream, text, showOperator);
}

void BeginNextLine(HPDF_PageAttr page) {
  HPDF_TransMatrix &matrix = page->text_matrix;
  matrix.x -= page->gstate->text_leading * matrix.c;
  matrix.y -= page->gstate->text_leading * matrix.d;
  page->text_pos.x = matrix.x;
  page->text_pos.y = matrix.y;
}

void Advance(HPDF_PageAttr page, HPDF_REAL width) {
  const HPDF_TransMatrix &matrix = page->text_matrix;
  if (page->gstate->writing_mode == HPDF_WMODE_HORIZONTAL) {
    page->text_pos.x += width * matrix.a;
    page->text_pos.y += width * matrix.b;
  } else {
    page->text_pos.x -= width * matrix.b;
    page->text_pos.y -= width * matrix.a;
  }
}

HPDF_TextWidth CountedWidth(const HPDF_GState_Rec &state, std::string_view text) {
  return HPDF_Font_TextWidth(state.font, AsBytes(text), static_cast<HPDF_UINT>(text.size()));
}

HPDF_REAL WidthInState(const HPDF_GState_Rec &state, const HPDF_TextWidth &width) {
  return state.word_space * static_cast<HPDF_REAL>(width.numspace) +
         static_cast<HPDF_REAL>(width.width) * state.font_size / 1000 +
         state.char_space * static_cast<HPDF_REAL>(width.numchars);
}

HPDF_REAL WidthOfText(HPDF_PageAttr page, std::string_view text) {
  return WidthInState(*page->gstate, CountedWidth(*page->gstate, text));
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

HPDF_STATUS HPDF_Page_ShowText(HPDF_Page page, const char *text) {
  HPDF_STATUS status = HPDF_Page_CheckState(page, HPDF_GMODE_TEXT_OBJECT);
  if (status != HPDF_OK || text == nullptr || *text == '\0') return status;
  const std::string_view shown = text;
  if (!CanShow(page, status) || !IsShortEnough(page, shown, status)) return status;
  auto *attributes = static_cast<HPDF_PageAttr>(page->attr);
  status = Show(page, shown, kShow);
  if (status == HPDF_OK) Advance(attributes, WidthOfText(attributes, shown));
  return status;
}

HPDF_STATUS HPDF_Page_ShowTextNextLine(HPDF_Page page, const char *text) {
  HPDF_STATUS status = HPDF_OK;
  if (!CanShow(page, status)) return status;
  if (text == nullptr || *text == '\0') return HPDF_Page_MoveToNextLine(page);
  const std::string_view shown = text;
  if (!IsShortEnough(page, shown, status)) return status;
  auto *attributes = static_cast<HPDF_PageAttr>(page->attr);
  status = Show(page, shown, kShowOnNextLine);
  if (status != HPDF_OK) return status;
  BeginNextLine(attributes);
  Advance(attributes, WidthOfText(attributes, shown));
  return status;
}

HPDF_STATUS HPDF_Page_ShowTextNextLineEx(HPDF_Page page, HPDF_REAL wordSpace, HPDF_REAL characterSpace,
                                         const char *text) {
  HPDF_STATUS status = HPDF_Page_SetWordSpace(page, wordSpace);
  if (status == HPDF_OK) status = HPDF_Page_SetCharSpace(page, characterSpace);
  return status == HPDF_OK ? HPDF_Page_ShowTextNextLine(page, text) : status;
}

}  // extern "C"
