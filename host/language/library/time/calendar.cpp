// SPDX-License-Identifier: MIT
#include "host/language/library/time/calendar.h"

#include <algorithm>
#include <chrono>

namespace quillbar::language {
namespace {

constexpr std::int64_t kDay = 86400;
// 400 years have a whole number of weeks, and bring every date into the range of std::chrono.
constexpr std::int64_t kEraDays = 146097;
constexpr std::int64_t kEraYears = 400;

std::int64_t DivideDown(std::int64_t number, std::int64_t by) {
  return number >= 0 ? number / by : (number + 1) / by - 1;
}

}  // namespace

CalendarTime CalendarTimeOf(std::int64_t seconds) {
  const std::int64_t day = DivideDown(seconds, kDay);
  const std::int64_t rest = seconds - day * kDay;
  const std::int64_t era = DivideDown(day, kEraDays);
  const std::chrono::sys_days date{std::chrono::days{static_cast<int>(day - era * kEraDays)}};
  const std::chrono::year_month_day parts{date};
  const std::chrono::sys_days newYear{parts.year() / std::chrono::January / 1};
  return {.year = int{parts.year()} + era * kEraYears,
          .month = static_cast<int>(unsigned{parts.month()}),
          .day = static_cast<int>(unsigned{parts.day()}),
          .hour = static_cast<int>(rest / 3600),
          .minute = static_cast<int>(rest / 60 % 60),
          .second = static_cast<int>(rest % 60),
          .weekday = static_cast<int>(std::chrono::weekday{date}.c_encoding()),
          .dayOfYear = static_cast<int>((date - newYear).count()) + 1};
}

std::int64_t CountSeconds(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour,
                          std::int64_t minute, std::int64_t second) {
  const std::int64_t years = year + DivideDown(month - 1, 12);
  const auto monthOfYear = static_cast<unsigned>(month - 1 - DivideDown(month - 1, 12) * 12) + 1;
  const std::int64_t era = DivideDown(years, kEraYears);
  const std::chrono::sys_days first{std::chrono::year{static_cast<int>(years - era * kEraYears)} /
                                    std::chrono::month{monthOfYear} / 1};
  const std::int64_t days = era * kEraDays + first.time_since_epoch().count() + day - 1;
  return days * kDay + hour * 3600 + minute * 60 + second;
}

int DaysInMonth(std::int64_t year, int month) {
  return static_cast<int>((CountSeconds(year, month + 1, 1, 0, 0, 0) - CountSeconds(year, month, 1, 0, 0, 0)) / kDay);
}

std::int64_t AddMonths(std::int64_t seconds, std::int64_t months) {
  const CalendarTime time = CalendarTimeOf(seconds);
  const CalendarTime month = CalendarTimeOf(CountSeconds(time.year, time.month + months, 1, 0, 0, 0));
  return CountSeconds(month.year, month.month, std::min(time.day, DaysInMonth(month.year, month.month)), time.hour,
                      time.minute, time.second);
}

}  // namespace quillbar::language
