// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <ostream>

namespace quillbar::program {

/// Shows on a terminal how far a long piece of work is, in one line that is written again and again and goes away at the
/// end. Work that is soon done shows nothing.
class ProgressBar {
 public:
  using Clock = std::chrono::steady_clock;

  /// The bar appears when the work has taken this long, and is written again at most this often.
  static constexpr std::chrono::milliseconds kPatience{500};
  static constexpr std::chrono::milliseconds kPause{100};

  /// `columns` is the width of the terminal behind `screen`; `now` tells the time.
  ProgressBar(std::ostream &screen, int columns, std::function<Clock::time_point()> now = Clock::now);

  /// So much of the work is done, of so much in all. It ends with the report that all of it is, or that there is none.
  void Report(std::uint32_t done, std::uint32_t total);

 private:
  void Clear();
  void Draw(std::uint32_t done, std::uint32_t total);

  std::ostream &screen_;
  int columns_;
  std::function<Clock::time_point()> now_;
  Clock::time_point begun_{};
  Clock::time_point drawn_{};
  bool works_ = false;
  bool isShown_ = false;
};

}  // namespace quillbar::program
