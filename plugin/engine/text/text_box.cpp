// SPDX-License-Identifier: MIT
// Text broken into lines inside a rectangle.
//
// libharu measures the whole rest of the text after each line, so the time grows with the square of its length; divides
// by zero when it justifies a line of one character; and forgets the page's character spacing. Lines of text that is
// ordered by direction are ordered as their paragraphs are; joined letters are not spaced out.
#include <hpdf_utils.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "plugin/engine/errors/out_of_memory.h"
#include "plugin/engine/fonts/font_object.h"
#include "plugin/engine/objects/enumeration_numbers.h"
#include "plugin/engine/text/text_showing.h"
#include "plugin/engine/text/text_width.h"

namespace quillbar::engine {

namespace {

struct Line {
  std::string_view shown;  // without the white space at its end
  std::size_t taken;       // bytes of the text that the line uses up
  bool endsParagraph;
  HPDF_REAL width;  // of what is shown, in text space units
  HPDF_UINT characters;
  HPDF_UINT spaces;
};

// Sets lines below each other, each with operators of its own: a failure leaves the lines before it on the page.
class TextBox {
 public:
  // `whole` is the order of the text, null if it is not ordered.
  TextBox(HPDF_Page page, const HPDF_Rect &box, HPDF_UINT alignment, const DirectedText *whole)
      : page_(page),
        now_(AttributesOf(page)),
        state_(*now_.gstate),
        box_(box),
        alignment_(alignment),
        whole_(whole),
        characterSpace_(state_.char_space) {}

  // Sets as much of `text` as fits; `length` receives the bytes used up by the lines that were set. The status is
  // HPDF_PAGE_INSUFFICIENT_SPACE if some of it didn't fit.
  HPDF_STATUS Set(std::string_view text, HPDF_UINT &length) {
    if (state_.text_leading == 0) {
      const HPDF_STATUS status = HPDF_Page_SetTextLeading(page_, DefaultLeading(state_));
      if (status != HPDF_OK) return status;
    }
    const HPDF_Box extent = HPDF_Font_GetBBox(state_.font);
    top_ = box_.top - extent.top / 1000 * state_.font_size + state_.text_leading;
    const HPDF_REAL bottom = box_.bottom - extent.bottom / 1000 * state_.font_size;

    HPDF_STATUS end = HPDF_OK;
    if (!RunsLevel()) rest_ = CountedWidth(state_, text, whole_);
    while (!text.empty()) {
      const Line line = NextLine(text);
      if (line.taken == 0) {
        end = HPDF_PAGE_INSUFFICIENT_SPACE;
        break;
      }
      const std::string_view taken = text.substr(0, line.taken);
      text.remove_prefix(line.taken);
      end = SetLine(line, text.empty());
      if (end != HPDF_OK) break;
      length += static_cast<HPDF_UINT>(line.taken);
      if (!text.empty() && Height() - state_.text_leading < bottom) {
        end = HPDF_PAGE_INSUFFICIENT_SPACE;
        break;
      }
      if (!RunsLevel()) Subtract(CountedWidth(state_, taken, whole_));
    }
    const HPDF_STATUS status = SetCharacterSpace(characterSpace_);
    return status == HPDF_OK ? end : status;
  }

 private:
  HPDF_REAL Width() const { return box_.right - box_.left; }

  bool RunsLevel() const { return state_.writing_mode == HPDF_WMODE_HORIZONTAL && now_.text_matrix.b == 0; }

  // By what the library decides whether another line goes in: how high on the page the current line would end if it
  // held all the text that was left for it. Where text runs level that is the height of the line.
  HPDF_REAL Height() const {
    const HPDF_TransMatrix &matrix = now_.text_matrix;
    if (RunsLevel()) return matrix.y;
    const HPDF_REAL width = WidthInState(state_, rest_);
    return state_.writing_mode == HPDF_WMODE_HORIZONTAL ? matrix.y + width * matrix.b : matrix.y - width * matrix.a;
  }

  void Subtract(const HPDF_TextWidth &taken) {
    rest_.numchars -= taken.numchars;
    rest_.numspace -= taken.numspace;
    rest_.width -= taken.width;
  }

  // Lines are broken with the page's own character spacing, whatever a line is justified with.
  Line NextLine(std::string_view text) const {
    Line line{};
    line.taken = LengthOfLine(state_, text, Width(), characterSpace_, whole_);
    std::size_t shown = line.taken;
    while (shown > 0 && HPDF_IS_WHITE_SPACE(text[shown - 1])) {
      --shown;
      if (text[shown] == '\n' || text[shown] == '\r') line.endsParagraph = true;
    }
    line.shown = text.substr(0, shown);
    const HPDF_TextWidth width = CountedWidth(state_, line.shown, whole_);
    line.characters = width.numchars;
    line.spaces = width.numspace;
    line.width = static_cast<HPDF_REAL>(width.width) * state_.font_size / 1000 +
                 state_.word_space * static_cast<HPDF_REAL>(width.numspace) +
                 characterSpace_ * static_cast<HPDF_REAL>(std::max(width.numchars, HPDF_UINT{1}) - 1);
    return line;
  }

  HPDF_STATUS SetLine(const Line &line, bool isLast) {
    HPDF_REAL left = box_.left;
    HPDF_REAL characterSpace = characterSpace_;
    HPDF_REAL gap = 0;
    switch (alignment_) {
      case HPDF_TALIGN_RIGHT:
        left = box_.right - line.width;
        break;
      case HPDF_TALIGN_CENTER:
        left = box_.left + (Width() - line.width) / 2;
        break;
      case HPDF_TALIGN_JUSTIFY:
        // A paragraph's last line stays as it is, and one character has no gap to widen.
        if (!line.endsParagraph && !isLast && line.characters > 1) {
          if (line.spaces > 0 && HoldsTogether(state_, line.shown, whole_)) {
            gap = (Width() - line.width) / static_cast<HPDF_REAL>(line.spaces);
            break;
          }
          characterSpace += (Width() - line.width) / static_cast<HPDF_REAL>(line.characters - 1);
          characterSpace = std::clamp(characterSpace, HPDF_REAL{HPDF_MIN_CHARSPACE}, HPDF_REAL{HPDF_MAX_CHARSPACE});
        }
        break;
      default:
        break;
    }
    HPDF_STATUS status = MoveTo(left);
    if (status == HPDF_OK) status = SetCharacterSpace(characterSpace);
    if (status != HPDF_OK) return status;
    if (line.shown.empty()) return HPDF_Page_MoveToNextLine(page_);
    PageOperator show = ShowsText(page_);
    return ShowText(show, line.shown, ShownAt::kNextLine, {whole_, gap});
  }

  // The position is given on the page; the operator moves within the text matrix, from the start of the line
  // before.
  HPDF_STATUS MoveTo(HPDF_REAL left) {
    const HPDF_TransMatrix &m = now_.text_matrix;
    const HPDF_REAL x = left - m.x, y = top_ - m.y;
    const HPDF_REAL determinant = m.a * m.d - m.b * m.c;
    HPDF_REAL along = (x * m.d - y * m.c) / determinant;
    HPDF_REAL across = (y * m.a - x * m.b) / determinant;
    if (isPlaced_) {
      if (alignment_ != HPDF_TALIGN_RIGHT && alignment_ != HPDF_TALIGN_CENTER) return HPDF_OK;
      across = 0;
    }
    if (!std::isfinite(along) || !std::isfinite(across))
      return HPDF_RaiseError(page_->error, HPDF_PAGE_OUT_OF_RANGE, 0);
    isPlaced_ = true;
    return HPDF_Page_MoveTextPos(page_, along, across);
  }

  HPDF_STATUS SetCharacterSpace(HPDF_REAL value) {
    return value == state_.char_space ? HPDF_OK : HPDF_Page_SetCharSpace(page_, value);
  }

  HPDF_Page page_;
  const PageAttributes &now_;
  const HPDF_GState_Rec &state_;
  HPDF_Rect box_;
  HPDF_UINT alignment_;  // as a number: scripts may have passed one without a name
  const DirectedText *whole_;
  HPDF_REAL characterSpace_;  // the page's own
  HPDF_REAL top_ = 0;
  HPDF_TextWidth rest_{};  // of the text from the current line on, unless it runs level
  bool isPlaced_ = false;
};

}  // namespace

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS HPDF_Page_TextRect(HPDF_Page page, HPDF_REAL left, HPDF_REAL top,
                                                                          HPDF_REAL right, HPDF_REAL bottom,
                                                                          const char *text,
                                                                          HPDF_TextAlignment alignment,
                                                                          HPDF_UINT *length) {
  if (length != nullptr) *length = 0;
  const std::string_view whole = text == nullptr ? std::string_view() : std::string_view(text);
  PageOperator call = ShowsText(page);
  call.RefuseIf(whole.size() > HPDF_LIMIT_MAX_STRING_LEN, HPDF_STRING_OUT_OF_RANGE);
  if (!call.IsAllowed() || whole.empty()) return call.Status();

  HPDF_UINT taken = 0;
  const auto alignmentNumber = static_cast<HPDF_UINT>(alignment);
  const HPDF_STATUS end = OrOutOfMemory(page->error, [&] {
    const std::optional<DirectedText> order = DirectedTextOf(call.Now().gstate->font, AsBytes(whole));
    return TextBox(page, {left, bottom, right, top}, alignmentNumber, order ? &*order : nullptr).Set(whole, taken);
  });
  if (length != nullptr) *length = taken;
  return end;
}
