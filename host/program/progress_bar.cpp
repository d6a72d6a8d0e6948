// SPDX-License-Identifier: MIT
#include "host/program/progress_bar.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

namespace quillbar::program {
namespace {

constexpr int kWidestBar = 40;
constexpr int kAroundBar = 16;                  // "Saving [", "] 100 %" and a free column
constexpr const char *kEraseLine = "\r\x1B[K";  // ECMA-48: to the start of the line, and empty to its end

}  // namespace

ProgressBar::ProgressBar(std::ostream &screen, int columns, std::function<Clock::time_point()> now)
    : screen_(screen), columns_(columns), now_(std::move(now)) {}

void ProgressBar::Report(std::uint32_t done, std::uint32_t total) {
  const Clock::time_point now = now_();
  if (!std::exchange(works_, true)) begun_ = now;
  if (done >= total) {
    works_ = false;
    Clear();
  } else if (now - begun_ >= kPatience && (!isShown_ || now - drawn_ >= kPause)) {
    drawn_ = now;
    Draw(done, total);
  }
}

void ProgressBar::Clear() {
  if (!std::exchange(isShown_, false)) return;
  screen_ << kEraseLine << std::flush;
}

void ProgressBar::Draw(std::uint32_t done, std::uint32_t total) {
  isShown_ = true;
  const auto width = static_cast<std::uint64_t>(std::clamp(columns_ - kAroundBar, 0, kWidestBar));
  const auto full = static_cast<std::size_t>(width * done / total);
  screen_ << fmt::format("\rSaving [{:.<{}}] {:3} %", std::string(full, '#'), width, std::uint64_t{100} * done / total)
          << std::flush;
}

}  // namespace quillbar::program
