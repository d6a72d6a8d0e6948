// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/differential/call.h"
#include "tests/differential/intended_differences.h"
#include "tests/differential/observation.h"

namespace quillbar::differential {

/// Widths of a font's 256 bytes in 1/1000 of its size, as the plugin measures them.
using Widths = std::array<int, 256>;
using WidthSource = std::function<const Widths &(const FontChoice &)>;

/// How much of a call's operators is compared.
enum class Comparison : std::uint8_t {
  kAll,
  kShownText,  // the texts shown, and nothing else
  kBeginning,  // up to the first that differs
};

/// What a call wrote into the page.
struct WrittenPart {
  std::size_t end = 0;   // of its bytes in the page's content
  double tolerance = 0;  // how far its numbers may differ, beyond the rounding of printing
  Comparison comparison = Comparison::kAll;
};

/// The reference: a page of unmodified libharu, with guards of its own for which calls do nothing in which mode, which
/// coordinates are flipped when the page works from the top, and what is restored after a call.
class LibraryPage {
 public:
  LibraryPage(const Sequence &sequence, const IntendedDifferences &differences, const WidthSource &widths);
  ~LibraryPage();
  LibraryPage(const LibraryPage &) = delete;
  LibraryPage &operator=(const LibraryPage &) = delete;

  /// Whether a difference after this call would mean something: false where results depend on the last digit of a
  /// Single.
  bool CanJudge(const Call &call) const;
  Observation Make(const Call &call);
  /// Ends what is open, as saving the document does.
  void Finish();

  /// Whether the two sides' pages may differ from here on, by intention.
  bool HasParted() const { return hasParted_; }
  unsigned Mode() const { return HPDF_Page_GetGMode(page_); }
  /// The host's code for the encoding of the page's font.
  std::uint32_t TextEncoding() const;

  /// The page's content, and which part of it each call wrote; the last part is that of `Finish`.
  std::string Content() const;
  const std::vector<WrittenPart> &Parts() const { return parts_; }

  /// The fonts of the sequence.
  const std::array<HPDF_Font, 3> &Fonts() const { return fontHandles_; }
  /// The bytes of a font for which the library has widths that differ from the plugin's.
  const std::vector<std::string> &WrongWidths() const { return wrongWidths_; }

 private:
  // The font in a page's state, besides what the library holds.
  struct TextState {
    int font = -1;
    float size = 0;
  };
  struct Rectangle {
    float left, top, right, bottom;
  };

  static void HPDF_STDCALL Handle(HPDF_STATUS number, HPDF_STATUS detail, void *page);

  bool Holds(IntendedDifference difference) const { return differences_.IsAllowed(difference); }
  void Report(HPDF_STATUS number, HPDF_STATUS detail);
  void EndLibraryCall();
  template <auto Function, class... Arguments>
  auto Do(Arguments... arguments);

  HPDF_PageAttr Attributes() const { return static_cast<HPDF_PageAttr>(page_->attr); }
  bool IsIn(unsigned modes) const { return (Mode() & modes) != 0; }
  float Flip(float y) const { return transforms_ ? height_ - y : y; }
  void ReadHeight();
  void TakeWidths(HPDF_Font font, const FontChoice &choice, const Widths &widths);

  void Dispatch(const Call &call);
  void SetSize(std::int32_t size, std::int32_t direction);
  void Arc(float x, float y, float radius, float angle1, float angle2);
  void SetDashPattern(const Call &call);
  void SetColor(std::int32_t color, bool isFill);
  void SetFont(const Call &call);
  void SetTextMatrix(float a, float b, float c, float d, float x, float y);
  void MoveToNextLine();
  void MeasureText(const Call &call);
  void CountLines(const Call &call);
  void Box(const Call &call, Rectangle box);
  void SetRightAfterBox(std::size_t contentBefore);
  void ReadGetters();
  void Result(double value, double tolerance = 0, bool isComparable = true) {
    observation_.results.push_back({value, tolerance, isComparable});
  }

  IntendedDifferences differences_;
  Sequence fonts_;
  HPDF_Doc document_ = nullptr;
  HPDF_Page page_ = nullptr;
  std::array<HPDF_Font, 3> fontHandles_{};
  std::vector<std::string> wrongWidths_;

  bool transforms_ = false;
  float height_ = 0;
  TextState textState_;
  std::vector<TextState> savedTextStates_;
  double reach_ = 0;         // the largest position that went into the text matrix
  double boxTolerance_ = 0;  // how far positions may differ since the last text box of this text object
  bool hasParted_ = false;

  Observation observation_;
  bool goesOnAfterErrors_ = false;  // whether the running library call is meant to write in spite of an error
  bool wasReported_ = false;        // in the running library call
  std::uint32_t lastError_ = 0;
  std::uint32_t lastDetail_ = 0;
  WrittenPart part_;
  std::vector<WrittenPart> parts_;
};

}  // namespace quillbar::differential
