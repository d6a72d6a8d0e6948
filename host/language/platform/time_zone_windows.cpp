// SPDX-License-Identifier: MIT
#define WIN32_LEAN_AND_MEAN
#include <fmt/format.h>
#include <windows.h>

#include "host/language/library/time/calendar.h"
#include "host/language/platform/time_zone.h"
#include "interface/declaration.h"

// The C library's functions know no time before 1970, and on 32 bits none after 2038.
namespace quillbar::language::platform {
namespace {

/// The years for which the system knows the time zone's rules.
bool IsInSystemCalendar(const CalendarTime &time) { return time.year >= 1602 && time.year < 30000; }

SYSTEMTIME SystemTimeOf(const CalendarTime &time) {
  SYSTEMTIME result{};
  result.wYear = static_cast<WORD>(time.year);
  result.wMonth = static_cast<WORD>(time.month);
  result.wDay = static_cast<WORD>(time.day);
  result.wHour = static_cast<WORD>(time.hour);
  result.wMinute = static_cast<WORD>(time.minute);
  result.wSecond = static_cast<WORD>(time.second);
  return result;
}

std::int64_t SecondsOf(const SYSTEMTIME &time) {
  return CountSeconds(time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond);
}

/// How far the zone's winter time is ahead of UTC, for years without rules.
std::int64_t StandardOffset() {
  TIME_ZONE_INFORMATION zone{};
  GetTimeZoneInformation(&zone);
  return std::int64_t{zone.Bias + zone.StandardBias} * -60;
}

class MachineZone final : public TimeZone {
 public:
  MachineZone() : TimeZone("") {}

  Offset OffsetAt(std::int64_t moment) const override {
    const std::int64_t seconds = SecondsAt(moment);
    return {seconds, FixedTimeZone(seconds)->name};
  }

  std::int64_t MomentOf(std::int64_t shown) const override {
    // The clocks of the day before are those from before a change: the first moment, or one past a gap.
    constexpr std::int64_t kDay = 86400;
    const std::int64_t before = shown - SecondsAt(shown - kDay);
    if (before + SecondsAt(before) == shown) return before;
    const std::int64_t after = shown - SecondsAt(shown + kDay);
    return after + SecondsAt(after) == shown ? after : before;
  }

 private:
  static std::int64_t SecondsAt(std::int64_t moment) {
    const CalendarTime universal = CalendarTimeOf(moment);
    if (IsInSystemCalendar(universal)) {
      const SYSTEMTIME time = SystemTimeOf(universal);
      SYSTEMTIME local;
      if (SystemTimeToTzSpecificLocalTime(nullptr, &time, &local) != FALSE) return SecondsOf(local) - moment;
    }
    return StandardOffset();
  }
};

}  // namespace

TimeZonePointer CurrentTimeZone() { return std::make_shared<MachineZone>(); }

TimeZonePointer FindTimeZone(const std::string &name) {
  for (const std::string_view universal : {"UTC", "GMT", "Etc/UTC"}) {
    if (SameName(universal, name)) return FixedTimeZone(0);
  }
  return nullptr;
}

std::string WhyUnknown(const std::string &name) {
  return fmt::format(
      "this system has no database of time zones, so \"{}\" isn't known; New TimeZone(seconds) makes one by its "
      "distance from UTC",
      name);
}

}  // namespace quillbar::language::platform
