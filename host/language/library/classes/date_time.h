// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "host/language/library/time/date_pattern.h"
#include "host/language/platform/time_zone.h"
#include "host/runtime/handles.h"
#include "interface/values.h"

namespace quillbar::language {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

/// A moment, and the time zone whose clocks show it.
struct Moment {
  std::int64_t seconds = 0;  // since 1970 in UTC
  std::int64_t nanosecond = 0;
  platform::TimeZonePointer zone;

  /// What the zone's clocks show, in seconds; see calendar.h.
  std::int64_t Shown() const { return seconds + zone->OffsetAt(seconds).seconds; }
};

/// A span of time in the units in which people give it.
struct Interval {
  std::int64_t years = 0;
  std::int64_t months = 0;
  std::int64_t days = 0;
  std::int64_t hours = 0;
  std::int64_t minutes = 0;
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;
};

Moment &MomentOf(Object dateTime);
Interval &IntervalOf(Object dateInterval);
/// The zone that a TimeZone object holds; the machine's for Nil.
platform::TimeZonePointer ZoneOf(Object timeZone);

host::ObjectHandle MakeDateTime(const Moment &moment);
host::ObjectHandle MakeDateInterval(const Interval &interval);
host::ObjectHandle MakeTimeZone(const platform::TimeZonePointer &zone);

/// The moment that clocks of this zone show. Throws LibraryError (kInvalidArgument) for parts beyond the calendar.
Moment MakeMoment(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour, std::int64_t minute,
                  std::int64_t second, std::int64_t nanosecond, platform::TimeZonePointer zone);

/// The moment later by an interval: first years and months, then days, by the calendar, so that the time of day stays;
/// then hours, minutes and seconds as they pass. `sign` is 1, or -1 for earlier.
Moment Add(const Moment &moment, const Interval &interval, int sign);

/// The interval that leads from `from` to `to`, in the units of the calendar of `to`'s time zone; all of its parts are
/// of one sign.
Interval Between(const Moment &from, const Moment &to);

/// A date, or a date and a time, as SQL and ISO 8601 write them: "2026-03-01", "2026-03-01 14:30", "14:30:15.25",
/// with "T" for the blank, and "Z" or "+02:00" at the end. Throws LibraryError (kInvalidArgument) for anything else.
Moment ReadMoment(std::string_view text, platform::TimeZonePointer zone);

}  // namespace quillbar::language
