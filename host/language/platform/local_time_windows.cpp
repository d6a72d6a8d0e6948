// SPDX-License-Identifier: MIT
#include "host/language/platform/local_time.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>

// The C library's functions know no time before 1970, and on 32 bits none after 2038.
namespace quillbar::language::platform {
namespace {

constexpr std::int64_t kDay = 86400;

/// A date and a time of day, in the Gregorian calendar extended without end in both directions.
std::tm FieldsOf(std::int64_t seconds) {
  const std::int64_t day = seconds >= 0 ? seconds / kDay : (seconds + 1) / kDay - 1;
  const std::int64_t rest = seconds - day * kDay;
  // 400 years have a whole number of weeks, and bring every date into the range of std::chrono.
  constexpr std::int64_t kEraDays = 146097;
  constexpr int kEraYears = 400;
  const std::int64_t era = day >= 0 ? day / kEraDays : (day + 1) / kEraDays - 1;
  const std::chrono::sys_days date{std::chrono::days{static_cast<int>(day - era * kEraDays)}};
  const std::chrono::year_month_day parts{date};
  const std::chrono::sys_days newYear{parts.year() / std::chrono::January / 1};
  std::tm fields{};
  fields.tm_year = static_cast<int>(int{parts.year()} - 1900 + era * kEraYears);
  fields.tm_mon = static_cast<int>(unsigned{parts.month()}) - 1;
  fields.tm_mday = static_cast<int>(unsigned{parts.day()});
  fields.tm_hour = static_cast<int>(rest / 3600);
  fields.tm_min = static_cast<int>(rest / 60 % 60);
  fields.tm_sec = static_cast<int>(rest % 60);
  fields.tm_wday = static_cast<int>(std::chrono::weekday{date}.c_encoding());
  fields.tm_yday = static_cast<int>((date - newYear).count());
  return fields;
}

std::int64_t SecondsOf(const std::tm &fields) {
  std::int64_t years = std::int64_t{fields.tm_year} + 1900;
  std::int64_t months = fields.tm_mon;
  years += months >= 0 ? months / 12 : (months + 1) / 12 - 1;
  months = (months % 12 + 12) % 12;
  const std::int64_t era = years >= 0 ? years / 400 : (years + 1) / 400 - 1;
  const std::chrono::year year{static_cast<int>(years - era * 400)};
  const std::chrono::sys_days first{year / std::chrono::month{static_cast<unsigned>(months) + 1} / 1};
  const std::int64_t day = era * 146097 + first.time_since_epoch().count() + fields.tm_mday - 1;
  return day * kDay + std::int64_t{fields.tm_hour} * 3600 + std::int64_t{fields.tm_min} * 60 + fields.tm_sec;
}

/// The years for which the system knows the time zone's rules.
bool IsInSystemCalendar(const std::tm &fields) {
  return fields.tm_year + 1900 >= 1602 && fields.tm_year + 1900 < 30000;
}

SYSTEMTIME SystemTimeOf(const std::tm &fields) {
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(fields.tm_year + 1900);
  time.wMonth = static_cast<WORD>(fields.tm_mon + 1);
  time.wDay = static_cast<WORD>(fields.tm_mday);
  time.wHour = static_cast<WORD>(fields.tm_hour);
  time.wMinute = static_cast<WORD>(fields.tm_min);
  time.wSecond = static_cast<WORD>(fields.tm_sec);
  return time;
}

std::int64_t SecondsOf(const SYSTEMTIME &time) {
  std::tm fields{};
  fields.tm_year = time.wYear - 1900;
  fields.tm_mon = time.wMonth - 1;
  fields.tm_mday = time.wDay;
  fields.tm_hour = time.wHour;
  fields.tm_min = time.wMinute;
  fields.tm_sec = time.wSecond;
  return SecondsOf(fields);
}

/// How far the zone's winter time is behind UTC, for years without rules.
std::int64_t StandardBias() {
  TIME_ZONE_INFORMATION zone{};
  GetTimeZoneInformation(&zone);
  return std::int64_t{zone.Bias + zone.StandardBias} * 60;
}

}  // namespace

std::optional<std::tm> LocalFields(double secondsFrom1970) {
  constexpr double kAverageYear = 365.2425 * kDay;
  if (!(std::abs(secondsFrom1970) < kAverageYear * (std::numeric_limits<int>::max() - 2000.0))) return std::nullopt;
  const auto seconds = static_cast<std::int64_t>(std::floor(secondsFrom1970));
  const std::tm universal = FieldsOf(seconds);
  if (IsInSystemCalendar(universal)) {
    const SYSTEMTIME time = SystemTimeOf(universal);
    SYSTEMTIME local;
    if (SystemTimeToTzSpecificLocalTime(nullptr, &time, &local) != FALSE) return FieldsOf(SecondsOf(local));
  }
  return FieldsOf(seconds - StandardBias());
}

double SecondsOfLocal(const std::tm &fields) {
  const std::int64_t seconds = SecondsOf(fields);
  const std::tm normal = FieldsOf(seconds);
  if (IsInSystemCalendar(normal)) {
    const SYSTEMTIME local = SystemTimeOf(normal);
    SYSTEMTIME universal;
    if (TzSpecificLocalTimeToSystemTime(nullptr, &local, &universal) != FALSE)
      return static_cast<double>(SecondsOf(universal));
  }
  return static_cast<double>(seconds + StandardBias());
}

}  // namespace quillbar::language::platform
