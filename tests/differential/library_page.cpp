// SPDX-License-Identifier: MIT
#include "tests/differential/library_page.h"

#include <fmt/format.h>
#include <hpdf_font.h>
#include <hpdf_fontdef.h>
#include <hpdf_gstate.h>
#include <hpdf_pages.h>
#include <hpdf_streams.h>

#include <algorithm>
#include <cmath>
#include <concepts>
#include <numbers>
#include <stdexcept>
#include <string_view>

#include "plugin/engine/objects/enumeration_numbers.h"
#include "tests/differential/standard_fonts.h"
#include "tests/support/content_operator.h"
#include "tests/support/pdf_file.h"

namespace quillbar::differential {

namespace {

using enum IntendedDifference;

constexpr unsigned kPage = HPDF_GMODE_PAGE_DESCRIPTION;
constexpr unsigned kPath = HPDF_GMODE_PATH_OBJECT;
constexpr unsigned kText = HPDF_GMODE_TEXT_OBJECT;
constexpr unsigned kClipping = HPDF_GMODE_CLIPPING_PATH;

template <class T>
bool IsFinite(const T &value) {
  if constexpr (std::floating_point<T>) return std::isfinite(value);
  return true;
}

bool IsWhiteSpace(char byte) { return std::string_view("\0\t\n\f\r ", 6).find(byte) != std::string_view::npos; }

/// Whether a line of the text may end in more white space than the one byte at which it was broken.
bool HasLongWhiteSpace(std::string_view text) {
  if (!text.empty() && IsWhiteSpace(text.back())) return true;
  for (std::size_t index = 1; index < text.size(); ++index) {
    if (IsWhiteSpace(text[index - 1]) && IsWhiteSpace(text[index])) return true;
  }
  return false;
}

double Determinant(const HPDF_TransMatrix &m) {
  return static_cast<double>(m.a) * static_cast<double>(m.d) - static_cast<double>(m.b) * static_cast<double>(m.c);
}

/// The library's own numbers for enumerations, including numbers that it doesn't know.
template <class Enumeration>
QUILLBAR_ANY_ENUMERATION_NUMBER Enumeration As(std::int32_t number) {
  Enumeration value{};
  static_assert(sizeof value == sizeof number);
  std::memcpy(&value, &number, sizeof value);
  return value;
}

constexpr double kUnset = -7;  // what ByRef arguments hold before the call

}  // namespace

LibraryPage::LibraryPage(const Sequence &sequence, const IntendedDifferences &differences, const WidthSource &widths)
    : differences_(differences), fonts_{sequence.fonts, {}} {
  document_ = HPDF_New(&LibraryPage::Handle, this);
  if (document_ == nullptr) throw std::runtime_error("libharu made no document");
  page_ = HPDF_AddPage(document_);
  for (std::size_t index = 0; index < fontHandles_.size(); ++index) {
    const FontChoice &choice = fonts_.fonts[index];
    const char *encoder = EncodingOf(choice.encoding).encoder;
    if (IsSymbolFont(choice.name) && Holds(kSymbolFonts)) encoder = nullptr;
    fontHandles_[index] = HPDF_GetFont(document_, choice.name, encoder);
    if (fontHandles_[index] == nullptr) throw std::runtime_error("libharu has no such font");
    TakeWidths(fontHandles_[index], choice, widths(choice));
  }
}

// libharu frees only the newest of a page's saved states.
LibraryPage::~LibraryPage() {
  auto *attributes = static_cast<HPDF_PageAttr>(page_->attr);
  while (attributes->gstate->prev != nullptr) {
    attributes->gstate = HPDF_GState_Free(page_->mmgr, attributes->gstate);
  }
  HPDF_Free(document_);
}

// Letters for which the library has no width take the plugin's; the others must have the same.
void LibraryPage::TakeWidths(HPDF_Font font, const FontChoice &choice, const Widths &widths) {
  auto *attributes = static_cast<HPDF_FontAttr>(font->attr);
  const auto *definition = static_cast<HPDF_Type1FontDefAttr>(attributes->fontdef->attr);
  for (unsigned byte = 1; byte < 256; ++byte) {
    const int width = widths[byte];
    if (attributes->widths[byte] == width) continue;
    const HPDF_UNICODE unicode = HPDF_Encoder_ToUnicode(attributes->encoder, static_cast<HPDF_UINT16>(byte));
    const bool isKnown =
        std::any_of(definition->widths, definition->widths + definition->widths_count,
                    [unicode](const HPDF_CharData &one) { return unicode != 0 && one.unicode == unicode; });
    if (isKnown) {
      wrongWidths_.push_back(fmt::format("{}, encoding {}, byte {:02X}: {} here, {} in the library", choice.name,
                                         choice.encoding, byte, width, attributes->widths[byte]));
    }
    if (Holds(kWidthsOfLetters)) attributes->widths[byte] = static_cast<HPDF_INT16>(width);
  }
}

std::uint32_t LibraryPage::TextEncoding() const {
  const std::size_t font = textState_.font < 0 ? 0 : static_cast<std::size_t>(textState_.font);
  return EncodingOf(fonts_.fonts[font].encoding).hostEncoding;
}

void LibraryPage::Report(HPDF_STATUS number, HPDF_STATUS detail) {
  const auto newNumber = static_cast<std::uint32_t>(number);
  const auto newDetail = static_cast<std::uint32_t>(detail);
  observation_.events.push_back({newNumber, newDetail, lastError_, lastDetail_});
  lastError_ = newNumber;
  lastDetail_ = newDetail;
}

void LibraryPage::Handle(HPDF_STATUS number, HPDF_STATUS detail, void *user) {
  auto *page = static_cast<LibraryPage *>(user);
  if (!page->wasReported_ || !page->Holds(kOneEventForACall)) page->Report(number, detail);
  page->wasReported_ = true;
  if (page->goesOnAfterErrors_ || !page->Holds(kRefusedCallsWriteNothing)) HPDF_ResetError(page->document_);
}

void LibraryPage::EndLibraryCall() {
  wasReported_ = false;
  HPDF_ResetError(document_);
}

template <auto Function, class... Arguments>
QUILLBAR_ANY_ENUMERATION_NUMBER auto LibraryPage::Do(Arguments... arguments) {
  using Outcome = decltype(Function(page_, arguments...));
  if (!(IsFinite(arguments) && ...) && Holds(kNumbersThatAreNotFinite)) {
    Report(HPDF_INVALID_PARAMETER, 0);
    if constexpr (std::is_same_v<Outcome, HPDF_STATUS>) return Outcome{HPDF_INVALID_PARAMETER};
    return Outcome();
  }
  const Outcome outcome = Function(page_, arguments...);
  EndLibraryCall();
  return outcome;
}

void LibraryPage::ReadHeight() {
  if (transforms_) height_ = HPDF_Page_GetHeight(page_);
}

bool LibraryPage::CanJudge(const Call &call) const {
  const auto &n = call.singles;
  switch (call.member) {
    case Member::kArc: {
      if (std::isfinite(n[2]) && std::fabs(n[2]) > 1e6F) return false;
      // The library leaves out what remains below a tenth of a degree after whole quarters.
      const double sweep = std::fabs(static_cast<double>(n[4]) - static_cast<double>(n[3]));
      const double rest = std::fmod(sweep, 90);
      if (sweep != 0 && sweep < 0.01) return false;
      return !(sweep > 90) || rest < 0.001 || rest > 0.2;
    }
    case Member::kMeasureText:
    case Member::kMeasureTextWidth:
      return !std::isinf(n[0]);
    case Member::kTextRect:
    case Member::kTextRectBaseline: {
      if (!std::all_of(n.begin(), n.begin() + 4, [](float v) { return !(std::fabs(v) > 1e5F); })) return false;
      const HPDF_TransMatrix &m = Attributes()->text_matrix;
      for (const float v : {m.a, m.b, m.c, m.d}) {
        if (!(std::fabs(v) <= 100)) return false;
      }
      if (!(reach_ <= 1e5) || !(std::fabs(HPDF_Page_GetTextLeading(page_)) <= 1e5F)) return false;
      const double determinant = Determinant(m);
      const float largest = std::max({std::fabs(m.a), std::fabs(m.b), std::fabs(m.c), std::fabs(m.d)});
      return determinant == 0 || std::fabs(determinant) > 0.01 + 0.1 * static_cast<double>(largest * largest);
    }
    default:
      return true;
  }
}

Observation LibraryPage::Make(const Call &call) {
  observation_ = {};
  part_ = {};
  Dispatch(call);
  const HPDF_TransMatrix &matrix = Attributes()->text_matrix;
  for (const float position : {matrix.x, matrix.y}) {
    const double magnitude = std::fabs(static_cast<double>(position));
    if (!(magnitude <= reach_)) reach_ = magnitude;
  }
  if (!IsIn(kText)) boxTolerance_ = 0;
  ReadGetters();
  part_.end = HPDF_Stream_Size(Attributes()->stream);
  parts_.push_back(part_);
  return observation_;
}

void LibraryPage::Finish() {
  part_ = {};
  if (IsIn(kPath) || (IsIn(kClipping) && Holds(kClippingPathWhenSaved))) HPDF_Page_EndPath(page_);
  if (IsIn(kText)) HPDF_Page_EndText(page_);
  if (IsIn(kPage)) {
    while (Attributes()->gstate->prev != nullptr) HPDF_Page_GRestore(page_);
  }
  part_.end = HPDF_Stream_Size(Attributes()->stream);
  parts_.push_back(part_);
}

std::string LibraryPage::Content() const {
  std::string content;
  HPDF_UINT length = 0;
  const HPDF_Stream stream = Attributes()->stream;
  for (HPDF_UINT index = 0;; ++index) {
    const HPDF_BYTE *bytes = HPDF_MemStream_GetBufPtr(stream, index, &length);
    if (bytes == nullptr) break;
    content.append(reinterpret_cast<const char *>(bytes), length);
  }
  HPDF_ResetError(document_);
  return content;
}

QUILLBAR_ANY_ENUMERATION_NUMBER void LibraryPage::Dispatch(const Call &call) {
  const auto &n = call.singles;
  switch (call.member) {
    case Member::kSetSize:
      return SetSize(call.first, call.second);
    case Member::kWidth:
      Do<HPDF_Page_SetWidth>(n[0]);
      return;
    case Member::kHeight:
      Do<HPDF_Page_SetHeight>(n[0]);
      return ReadHeight();
    case Member::kTransformCoordinates:
      if (call.flag == transforms_) return;
      transforms_ = call.flag;
      return ReadHeight();
    case Member::kRectangle: {
      const float top = height_ - n[1];
      Do<HPDF_Page_Rectangle>(n[0], transforms_ ? top - n[3] : n[1], n[2], n[3]);
      return;
    }
    case Member::kEllipse:
      Do<HPDF_Page_Ellipse>(n[0], Flip(n[1]), n[2], n[3]);
      return;
    case Member::kArc:
      return Arc(n[0], Flip(n[1]), n[2], n[3], n[4]);
    case Member::kMoveTo:
      if (IsIn(kPath | kPage)) Do<HPDF_Page_MoveTo>(n[0], Flip(n[1]));
      return;
    case Member::kLineTo:
      if (IsIn(kPath)) Do<HPDF_Page_LineTo>(n[0], Flip(n[1]));
      return;
    case Member::kCurveTo:
      if (IsIn(kPath)) Do<HPDF_Page_CurveTo>(n[0], Flip(n[1]), n[2], Flip(n[3]), n[4], Flip(n[5]));
      return;
    case Member::kCurveTo2:
      if (IsIn(kPath)) Do<HPDF_Page_CurveTo2>(n[0], Flip(n[1]), n[2], Flip(n[3]));
      return;
    case Member::kCurveTo3:
      if (IsIn(kPath)) Do<HPDF_Page_CurveTo3>(n[0], Flip(n[1]), n[2], Flip(n[3]));
      return;
    case Member::kDraw:
      Do<HPDF_Page_Stroke>();
      return;
    case Member::kFill:
      if (IsIn(kPath)) Do<HPDF_Page_Fill>();
      return;
    case Member::kFillAndDraw:
      if (IsIn(kPath)) Do<HPDF_Page_FillStroke>();
      return;
    case Member::kEndPath:
      Do<HPDF_Page_EndPath>();
      return;
    case Member::kSetRGBFill:
      if (IsIn(kPage | kText)) Do<HPDF_Page_SetRGBFill>(n[0], n[1], n[2]);
      return;
    case Member::kSetRGBStroke:
      if (IsIn(kPage | kText)) Do<HPDF_Page_SetRGBStroke>(n[0], n[1], n[2]);
      return;
    case Member::kSetCMYKFill:
      if (IsIn(kPage | kText)) Do<HPDF_Page_SetCMYKFill>(n[0], n[1], n[2], n[3]);
      return;
    case Member::kSetCMYKStroke:
      if (IsIn(kPage | kText)) Do<HPDF_Page_SetCMYKStroke>(n[0], n[1], n[2], n[3]);
      return;
    case Member::kSetDashPattern:
      return SetDashPattern(call);
    case Member::kResetDashPattern:
      Do<HPDF_Page_SetDash>(nullptr, 0U, 0U);
      return;
    case Member::kConcatMatrix:
      Do<HPDF_Page_Concat>(n[0], n[1], n[2], n[3], n[4], Flip(n[5]));
      return;
    case Member::kClip:
      Do<HPDF_Page_Clip>();
      return;
    case Member::kSaveState:
      if (Do<HPDF_Page_GSave>() == HPDF_OK && observation_.events.empty()) savedTextStates_.push_back(textState_);
      return;
    case Member::kRestoreState:
      if (Do<HPDF_Page_GRestore>() == HPDF_OK && observation_.events.empty()) {
        textState_ = savedTextStates_.back();
        savedTextStates_.pop_back();
      }
      return;
    case Member::kFillColor:
    case Member::kStrokeColor:
      return SetColor(call.first, call.member == Member::kFillColor);
    case Member::kLineWidth:
      Do<HPDF_Page_SetLineWidth>(n[0]);
      return;
    case Member::kLineCapType:
      Do<HPDF_Page_SetLineCap>(As<HPDF_LineCap>(call.first));
      return;
    case Member::kLineJoinType:
      Do<HPDF_Page_SetLineJoin>(As<HPDF_LineJoin>(call.first));
      return;
    case Member::kBeginText:
      if (!IsIn(kPage)) return;
      reach_ = 0;
      Do<HPDF_Page_BeginText>();
      return;
    case Member::kEndText:
      if (IsIn(kText)) Do<HPDF_Page_EndText>();
      return;
    case Member::kSetFont:
      return SetFont(call);
    case Member::kMoveTextPosition:
      if (IsIn(kText)) Do<HPDF_Page_MoveTextPos>(n[0], Flip(n[1]));
      return;
    case Member::kMoveTextPositionNextLine:
      return MoveToNextLine();
    case Member::kSetTextMatrix:
      return SetTextMatrix(n[0], n[1], n[2], n[3], n[4], n[5]);
    case Member::kSetTextRotation: {
      const auto radians = static_cast<float>(static_cast<double>(n[0]) / 180.0 * 3.141592);
      const auto cosine = static_cast<float>(std::cos(static_cast<double>(radians)));
      const auto sine = static_cast<float>(std::sin(static_cast<double>(radians)));
      return SetTextMatrix(cosine, sine, -sine, cosine, n[1], n[2]);
    }
    case Member::kTextLeading:
      Do<HPDF_Page_SetTextLeading>(n[0]);
      return;
    case Member::kTextRise:
      Do<HPDF_Page_SetTextRise>(n[0]);
      return;
    case Member::kWordSpace:
      Do<HPDF_Page_SetWordSpace>(n[0]);
      return;
    case Member::kTextRenderingMode:
      Do<HPDF_Page_SetTextRenderingMode>(As<HPDF_TextRenderingMode>(call.first));
      return;
    case Member::kMeasureText:
    case Member::kMeasureTextWidth:
      return MeasureText(call);
    case Member::kTextRectMeasure:
      return CountLines(call);
    case Member::kTextRect:
      return Box(call, {n[0], n[1], n[2], n[3]});
    case Member::kTextRectBaseline: {
      float above = 0;
      if (textState_.font >= 0) {
        const HPDF_Box box = HPDF_Font_GetBBox(fontHandles_[static_cast<std::size_t>(textState_.font)]);
        above = textState_.size * (box.top / 1000.0F);
      }
      const float bottom = n[1] - n[3];
      return Box(call, {n[0], n[1] + above, n[0] + n[2], bottom + above});
    }
    case Member::kClearError:
      lastError_ = 0;
      lastDetail_ = 0;
      return;
    case Member::kSaveToString:
      // Ends whatever is still open on the page.
      return;
    case Member::kCount:
      break;
  }
  throw std::logic_error("a member that the reference doesn't know");
}

QUILLBAR_ANY_ENUMERATION_NUMBER void LibraryPage::SetSize(std::int32_t size, std::int32_t direction) {
  if (static_cast<std::uint32_t>(size) > 12 || static_cast<std::uint32_t>(direction) > 1) return;
  if (size == 12 && Holds(kSizeAfterTheLast)) {
    Report(HPDF_PAGE_INVALID_SIZE, 12);
  } else {
    Do<HPDF_Page_SetSize>(As<HPDF_PageSizes>(size), As<HPDF_PageDirection>(direction));
  }
  ReadHeight();
}

void LibraryPage::Arc(float x, float y, float radius, float angle1, float angle2) {
  constexpr float kTooLarge = 1e5F;  // beyond this, the library takes minutes
  for (const float value : {x, y, radius, angle1, angle2}) {
    // The library would never return.
    if (!std::isfinite(value)) return Report(HPDF_INVALID_PARAMETER, 0);
  }
  const auto magnitude = [](float value) { return std::fabs(static_cast<double>(value)); };
  if (Holds(kArcPrecision)) part_.tolerance = 2e-5 * magnitude(radius) + 2e-7 * (magnitude(x) + magnitude(y));
  if (IsIn(kPage | kPath)) {
    if (radius == 0 && Holds(kArcWithoutRadius)) radius = 1e-6F;
    const double sweep = static_cast<double>(angle2) - static_cast<double>(angle1);
    if (sweep == 0 && Holds(kArcOfNothing)) {
      const double radians = std::fmod(static_cast<double>(angle1), 360) * (std::numbers::pi / 180);
      const auto startX = static_cast<float>(x + radius * std::sin(radians));
      const auto startY = static_cast<float>(y + radius * std::cos(radians));
      if (IsIn(kPath)) {
        Do<HPDF_Page_LineTo>(startX, startY);
      } else {
        Do<HPDF_Page_MoveTo>(startX, startY);
      }
      return;
    }
    const float largest = std::max(std::fabs(angle1), std::fabs(angle2));
    if (largest > kTooLarge || (largest > 720 && Holds(kArcOfManyTurns))) {
      angle1 = std::fmod(angle1, 360.0F);
      angle2 = static_cast<float>(static_cast<double>(angle1) + sweep);
    }
    if (std::fabs(sweep) >= 360 && (std::fabs(sweep) > 1e5 || Holds(kArcOfOneTurn))) {
      // Rounded, so that the library's single precision doesn't make it a little less than a full turn.
      angle1 = std::round(std::fmod(angle1, 360.0F) * 4096) / 4096;
      angle2 = angle1 + static_cast<float>(std::copysign(360, sweep) + std::fmod(sweep, 360));
    }
  }
  // A sweep of a full turn or more is reported, and drawn once the handler has cleared the error.
  goesOnAfterErrors_ = IsIn(kPage | kPath);
  Do<HPDF_Page_Arc>(x, y, radius, angle1, angle2);
  goesOnAfterErrors_ = false;
}

void LibraryPage::SetDashPattern(const Call &call) {
  if (call.dashes.empty()) {
    Do<HPDF_Page_SetDash>(nullptr, 0U, 0U);
    return;
  }
  auto last = static_cast<unsigned>(call.dashes.size()) - 1;
  if (last > 7) {
    last = 7;
  } else if (last == 2 || last == 4 || last == 6) {
    --last;
  }
  if (call.phase > 0x7FFFFFFF && Holds(kDashPhase) && IsIn(kPage | kText))
    return Report(HPDF_PAGE_OUT_OF_RANGE, call.phase);
  Do<HPDF_Page_SetDash>(call.dashes.data(), HPDF_UINT{last + 1}, HPDF_UINT{call.phase});
}

void LibraryPage::SetColor(std::int32_t color, bool isFill) {
  if (!IsIn(kPage | kText)) return;
  const auto part = [color](int shift) {
    return static_cast<float>((static_cast<std::uint32_t>(color) >> shift) & 0xFF) / 255.0F;
  };
  if (isFill) {
    Do<HPDF_Page_SetRGBFill>(part(16), part(8), part(0));
  } else {
    Do<HPDF_Page_SetRGBStroke>(part(16), part(8), part(0));
  }
}

void LibraryPage::SetFont(const Call &call) {
  if (!IsIn(kPage | kText)) return;
  const auto font = static_cast<std::size_t>(call.first);
  const float size = call.singles[0];
  Do<HPDF_Page_SetFontAndSize>(fontHandles_[font], size);
  if (observation_.events.empty()) textState_ = {call.first, size};
}

void LibraryPage::SetTextMatrix(float a, float b, float c, float d, float x, float y) {
  if (Do<HPDF_Page_SetTextMatrix>(a, b, c, d, x, Flip(y)) == HPDF_OK && observation_.events.empty()) {
    reach_ = 0;
    boxTolerance_ = 0;
  }
}

void LibraryPage::MoveToNextLine() {
  if (!IsIn(kText)) return;
  const float before = HPDF_Page_GetTextLeading(page_);
  if (before == 0) {
    const HPDF_Box box = HPDF_Font_GetBBox(HPDF_Page_GetCurrentFont(page_));
    const float height = box.top - box.bottom;
    Do<HPDF_Page_SetTextLeading>(height / 1000.0F * HPDF_Page_GetCurrentFontSize(page_));
  }
  Do<HPDF_Page_MoveToNextLine>();
  if (HPDF_Page_GetTextLeading(page_) != before) Do<HPDF_Page_SetTextLeading>(before);
}

void LibraryPage::MeasureText(const Call &call) {
  const bool givesWidth = call.member == Member::kMeasureTextWidth;
  auto width = static_cast<float>(kUnset);
  if (call.text.empty() || textState_.font < 0) {
    Result(-1);
  } else {
    Result(Do<HPDF_Page_MeasureText>(call.text.c_str(), call.singles[0], HPDF_BOOL{call.flag ? 1 : 0},
                                     givesWidth ? &width : nullptr));
  }
  if (givesWidth) {
    const double value = static_cast<double>(width);
    Result(value, 1e-5 * (1 + std::fabs(value)));
  }
}

void LibraryPage::CountLines(const Call &call) {
  if (!IsIn(kText) || textState_.font < 0 || call.text.empty()) {
    Result(0);
    Result(0);
    return;
  }
  const float width = call.singles[0];
  if (!std::isfinite(width)) {
    Report(HPDF_INVALID_PARAMETER, 0);
    Result(0);
    Result(0);
    return;
  }
  const HPDF_GState state = Attributes()->gstate;
  const float before = state->text_leading;
  if (before == 0) {
    const HPDF_Box box = HPDF_Font_GetBBox(state->font);
    HPDF_Page_SetTextLeading(page_, (box.top - box.bottom) / 1000 * state->font_size);
  }
  unsigned lines = 0;
  for (const char *rest = call.text.c_str(); *rest != '\0';) {
    state->char_space = 0;
    const HPDF_UINT taken = HPDF_Page_MeasureText(page_, rest, width, HPDF_TRUE, nullptr);
    if (taken == 0) break;
    ++lines;
    rest += taken;
  }
  const float height = static_cast<float>(lines) * state->text_leading;
  EndLibraryCall();
  if (state->text_leading != before) Do<HPDF_Page_SetTextLeading>(before);
  Result(static_cast<double>(height), 1e-6 * std::fabs(static_cast<double>(height)));
  Result(lines);
}

QUILLBAR_ANY_ENUMERATION_NUMBER void LibraryPage::Box(const Call &call, Rectangle box) {
  const auto alignment = As<HPDF_TextAlignment>(call.first);
  if (!IsIn(kText) || textState_.font < 0 || call.text.empty()) return Result(0);
  box.top = Flip(box.top);
  box.bottom = Flip(box.bottom);
  const float before = HPDF_Page_GetTextLeading(page_);
  const HPDF_TransMatrix matrix = Attributes()->text_matrix;
  const bool isFinite = IsFinite(box.left) && IsFinite(box.top) && IsFinite(box.right) && IsFinite(box.bottom);
  const auto restoreLeading = [&] {
    if (HPDF_Page_GetTextLeading(page_) != before) Do<HPDF_Page_SetTextLeading>(before);
  };

  if (isFinite && Determinant(matrix) == 0 && Holds(kSingularTextMatrix)) {
    if (before == 0) {
      const HPDF_Box extent = HPDF_Font_GetBBox(Attributes()->gstate->font);
      Do<HPDF_Page_SetTextLeading>((extent.top - extent.bottom) / 1000 * Attributes()->gstate->font_size);
    }
    if (HPDF_Page_MeasureText(page_, call.text.c_str(), box.right - box.left, HPDF_TRUE, nullptr) > 0)
      Report(HPDF_PAGE_OUT_OF_RANGE, 0);
    restoreLeading();
    return Result(0);
  }

  const std::size_t contentBefore = HPDF_Stream_Size(Attributes()->stream);
  HPDF_UINT length = 0;
  const auto eventsBefore = observation_.events.size();
  Do<HPDF_Page_TextRect>(box.left, box.top, box.right, box.bottom, call.text.c_str(), alignment, &length);
  bool isComparable = true;
  if (isFinite) {
    double smallest = std::sqrt(std::fabs(Determinant(matrix)));
    smallest = smallest > 0 ? std::min(1.0, smallest) : 1;
    part_.tolerance =
        (1e-3 + 1e-5 * (reach_ + static_cast<double>(std::fabs(box.top) + std::fabs(box.left) + std::fabs(before)))) /
        smallest;
    boxTolerance_ += part_.tolerance * 100;
    const auto part = [&](Comparison comparison) {
      part_.comparison = comparison;
      hasParted_ = true;
    };
    if (alignment == HPDF_TALIGN_JUSTIFY && observation_.events.size() > eventsBefore && Holds(kJustifiedGaps)) {
      const Event &refused = observation_.events.back();
      lastError_ = refused.numberBefore;
      lastDetail_ = refused.detailBefore;
      observation_.events.pop_back();
      isComparable = false;
      part(Comparison::kBeginning);
    } else if (std::fabs(matrix.a) < 0.02F * std::fabs(matrix.b) && Holds(kTurnedBox)) {
      isComparable = false;
      part(Comparison::kBeginning);
    } else if (call.first >= 1 && call.first <= 3 && HasLongWhiteSpace(call.text) && Holds(kWhiteSpaceAtLineEnds)) {
      // Where rotated lines begin decides how many there are.
      isComparable = matrix.b == 0;
      part(isComparable ? Comparison::kShownText : Comparison::kBeginning);
    } else {
      SetRightAfterBox(contentBefore);
    }
  }
  restoreLeading();
  Result(length, 0, isComparable);
}

// The library adds the width of all the remaining text to the position, even of text that isn't shown, and forgets the
// spacing of the last justified line when it ends a box at a word that is too wide.
void LibraryPage::SetRightAfterBox(std::size_t contentBefore) {
  HPDF_PageAttr page = Attributes();
  float spacing = 0;
  for (const test::ContentOperator &one : test::OperatorsOf(Content().substr(contentBefore))) {
    if (one.name == "Tc") spacing = static_cast<float>(one.operands.at(0).number);
    if (one.name != "'" || !Holds(kPositionAfterABox)) continue;
    const std::string &shown = one.operands.at(0).text;
    page->gstate->char_space = spacing;
    const float width = shown.empty() ? 0 : HPDF_Page_TextWidth(page_, shown.c_str());
    page->text_pos.x = page->text_matrix.x + width * page->text_matrix.a;
    page->text_pos.y = page->text_matrix.y + width * page->text_matrix.b;
  }
  page->gstate->char_space = 0;
  if (spacing != 0 && Holds(kSpacingAfterABox)) Do<HPDF_Page_SetCharSpace>(0.0F);
}

void LibraryPage::ReadGetters() {
  const auto set = [this](Getter getter, double value, double tolerance = 0) {
    observation_[getter] = {value, tolerance};
  };
  const auto setSingle = [&](Getter getter, float single) { set(getter, static_cast<double>(single)); };
  const auto setColor = [&](Getter getter, const HPDF_RGBColor &color) {
    const auto part = [](float value) { return static_cast<int>(value * 255.0F); };
    set(getter, (part(color.r) << 16) | (part(color.g) << 8) | part(color.b));
  };
  setSingle(Getter::kWidth, HPDF_Page_GetWidth(page_));
  setSingle(Getter::kHeight, HPDF_Page_GetHeight(page_));
  set(Getter::kTransformCoordinates, transforms_ ? 1 : 0);
  set(Getter::kGraphicsMode, Mode());
  setColor(Getter::kFillColor, HPDF_Page_GetRGBFill(page_));
  setColor(Getter::kStrokeColor, HPDF_Page_GetRGBStroke(page_));
  setSingle(Getter::kLineWidth, HPDF_Page_GetLineWidth(page_));
  set(Getter::kLineCapType, HPDF_Page_GetLineCap(page_));
  set(Getter::kLineJoinType, HPDF_Page_GetLineJoin(page_));
  setSingle(Getter::kTextLeading, HPDF_Page_GetTextLeading(page_));
  setSingle(Getter::kTextRise, HPDF_Page_GetTextRise(page_));
  setSingle(Getter::kWordSpace, HPDF_Page_GetWordSpace(page_));
  set(Getter::kTextRenderingMode, HPDF_Page_GetTextRenderingMode(page_));
  const HPDF_Box box = HPDF_Font_GetBBox(HPDF_Page_GetCurrentFont(page_));
  const float height = box.top - box.bottom;
  setSingle(Getter::kSuggestedTextLeading, height / 1000.0F * HPDF_Page_GetCurrentFontSize(page_));
  if (IsIn(kText)) {
    const HPDF_Point position = HPDF_Page_GetCurrentTextPos(page_);
    const double tolerance = 1e-6 * reach_ + boxTolerance_;
    set(Getter::kTextPositionX, static_cast<double>(position.x), tolerance);
    set(Getter::kTextPositionY, static_cast<double>(Flip(position.y)), tolerance);
    observation_[Getter::kTextPositionX].isComparable = !hasParted_;
    observation_[Getter::kTextPositionY].isComparable = !hasParted_;
  } else {
    set(Getter::kTextPositionX, kUnset);
    set(Getter::kTextPositionY, kUnset);
  }
  set(Getter::kLastErrorNumber, lastError_);
  set(Getter::kLastErrorDetailNumber, lastDetail_);
}

}  // namespace quillbar::differential
