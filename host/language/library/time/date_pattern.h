// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/language/library/time/calendar.h"
#include "host/language/platform/time_zone.h"

namespace quillbar::language {

/// What a pattern can show of a moment.
struct ShownTime {
  CalendarTime calendar;
  std::int64_t nanosecond;
  platform::TimeZone::Offset offset;
};

/// The week of the year: weeks begin on Sundays, and the first one is that of January 1.
int WeekOfYear(const CalendarTime &time);

/// A date and a time by a pattern of Unicode's locale data (UTS #35), in English: "yyyy-MM-dd HH:mm", "d. MMMM yyyy".
/// Letters stand for parts, more of them for wider forms; text in apostrophes, and what isn't a letter, stands for
/// itself. Throws LibraryError (kInvalidArgument) for a letter that stands for nothing.
std::string FormatTime(const ShownTime &time, std::string_view pattern);

}  // namespace quillbar::language
