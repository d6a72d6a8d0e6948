// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The Gregorian calendar, extended without end in both directions. Times are counted in seconds since the start of
/// 1970, every day 86,400 of them, whatever time zone the clock is in that shows them.
namespace quillbar::language {

struct CalendarTime {
  std::int64_t year;
  int month;  // 1 to 12
  int day;
  int hour;
  int minute;
  int second;
  int weekday;    // 0 is Sunday
  int dayOfYear;  // 1 is January 1
};

CalendarTime CalendarTimeOf(std::int64_t seconds);

/// The seconds of a date and a time of day. Parts beyond their range carry over: month 13 is January of the next year.
std::int64_t CountSeconds(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour,
                          std::int64_t minute, std::int64_t second);

int DaysInMonth(std::int64_t year, int month);

/// The same time of day so many months later, on the last day of a month that is too short.
std::int64_t AddMonths(std::int64_t seconds, std::int64_t months);

}  // namespace quillbar::language
