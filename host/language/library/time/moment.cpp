// SPDX-License-Identifier: MIT
// Calculating with moments and intervals, and reading them.

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <utility>

#include "host/language/library/classes/date_time.h"
#include "host/language/run/exceptions.h"

namespace quillbar::language {
namespace {

constexpr std::int64_t kSecondsOfDay = 86400;
constexpr std::int64_t kMonthsPerYear = 12;

/// Some three million years; what is further away isn't a date, and sums of what is nearer don't overflow.
constexpr std::int64_t kBeyondCalendar = 100'000'000'000'000;

void RequireInCalendar(std::int64_t number) {
  if (number > -kBeyondCalendar && number < kBeyondCalendar) return;
  throw LibraryError{ExceptionKind::kInvalidArgument, "this moment is beyond the calendar"};
}

/// Carries nanoseconds beyond their range over to the seconds.
Moment Normal(Moment moment) {
  moment.seconds += moment.nanosecond / kNanosecondsPerSecond;
  moment.nanosecond %= kNanosecondsPerSecond;
  if (moment.nanosecond < 0) {
    moment.nanosecond += kNanosecondsPerSecond;
    --moment.seconds;
  }
  RequireInCalendar(moment.seconds);
  return moment;
}

/// The same moment with other clocks: those of its zone show `shown`. A time that they already show is kept as it is,
/// so that the second of two equal hours stays the second.
Moment Showing(Moment moment, std::int64_t shown) {
  if (moment.Shown() != shown) moment.seconds = moment.zone->MomentOf(shown);
  return moment;
}

/// Below, equal to or above 0.
int Order(const Moment &one, const Moment &other) {
  const auto key = [](const Moment &moment) { return std::pair(moment.seconds, moment.nanosecond); };
  return key(one) < key(other) ? -1 : key(one) > key(other) ? 1 : 0;
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text), rest_(text) {}

  [[noreturn]] void Fail() const {
    throw LibraryError{ExceptionKind::kInvalidArgument,
                       fmt::format("\"{}\" is not a date; it is written as 2026-03-01 or 2026-03-01 14:30:00", text_)};
  }

  bool Accept(char character) {
    if (!rest_.starts_with(character)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  void Require(char character) {
    if (!Accept(character)) Fail();
  }

  /// A number of so many digits, between two bounds.
  int Number(std::size_t digits, int least, int most) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + std::min(digits, rest_.size()), number);
    const bool isWhole = error == std::errc() && end == rest_.data() + digits && rest_.front() != '-';
    if (!isWhole || number < least || number > most) Fail();
    rest_.remove_prefix(digits);
    return static_cast<int>(number);
  }

  std::int64_t Nanoseconds() {
    std::int64_t number = 0;
    std::int64_t unit = kNanosecondsPerSecond;
    const std::size_t before = rest_.size();
    for (; !rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9'; rest_.remove_prefix(1)) {
      unit /= 10;
      number += (rest_.front() - '0') * unit;
    }
    if (rest_.size() == before) Fail();
    return number;
  }

  bool IsAtEnd() const { return rest_.empty(); }

 private:
  std::string_view text_;
  std::string_view rest_;
};

/// The zone at the end of a text; null when there is none.
platform::TimeZonePointer ReadZone(Reader &reader) {
  if (reader.Accept('Z')) return platform::FixedTimeZone(0);
  const bool isBehind = reader.Accept('-');
  if (!isBehind && !reader.Accept('+')) return nullptr;
  std::int64_t seconds = reader.Number(2, 0, 18) * 3600;
  if (reader.Accept(':') || !reader.IsAtEnd()) seconds += reader.Number(2, 0, 59) * 60;
  return platform::FixedTimeZone(isBehind ? -seconds : seconds);
}

}  // namespace

Moment MakeMoment(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour, std::int64_t minute,
                  std::int64_t second, std::int64_t nanosecond, platform::TimeZonePointer zone) {
  constexpr std::int64_t kLimit = 1'000'000;
  for (const std::int64_t part : {year, month, day, hour, minute, second}) {
    if (part < -kLimit || part > kLimit) {
      throw LibraryError{ExceptionKind::kInvalidArgument, "a part of the date is beyond the calendar"};
    }
  }
  Moment moment;
  moment.zone = std::move(zone);
  moment.seconds = moment.zone->MomentOf(CountSeconds(year, month, day, hour, minute, second));
  moment.nanosecond = nanosecond;
  return Normal(std::move(moment));
}

Moment Add(const Moment &moment, const Interval &interval, int sign) {
  for (const std::int64_t part :
       {interval.years, interval.months, interval.days, interval.hours, interval.minutes, interval.seconds}) {
    // Even as hours it stays within what can be counted.
    RequireInCalendar(part);
  }
  const std::int64_t months = sign * (interval.years * kMonthsPerYear + interval.months);
  constexpr std::int64_t kAverageMonth = 2'629'746;
  RequireInCalendar(months);
  if (months > kBeyondCalendar / kAverageMonth || months < -kBeyondCalendar / kAverageMonth) {
    RequireInCalendar(kBeyondCalendar);
  }
  if (interval.days > kBeyondCalendar / kSecondsOfDay || interval.days < -kBeyondCalendar / kSecondsOfDay) {
    RequireInCalendar(kBeyondCalendar);
  }
  std::int64_t shown = moment.Shown();
  if (months != 0) shown = AddMonths(shown, months);
  shown += sign * interval.days * kSecondsOfDay;
  RequireInCalendar(shown);
  Moment sum = Showing(moment, shown);
  sum.seconds += sign * (interval.hours * 3600 + interval.minutes * 60 + interval.seconds);
  sum.seconds += sign * (interval.nanoseconds / kNanosecondsPerSecond);
  sum.nanosecond += sign * (interval.nanoseconds % kNanosecondsPerSecond);
  return Normal(std::move(sum));
}

Interval Between(const Moment &from, const Moment &to) {
  Moment start = from;
  start.zone = to.zone;
  const int sign = Order(from, to) <= 0 ? 1 : -1;
  // Whether a step of the calendar goes beyond the end.
  const auto passes = [&](const Interval &interval) { return Order(Add(start, interval, 1), to) * sign > 0; };

  Interval interval;
  const CalendarTime first = CalendarTimeOf(start.Shown());
  const CalendarTime last = CalendarTimeOf(to.Shown());
  std::int64_t months = (last.year - first.year) * kMonthsPerYear + last.month - first.month;
  const auto setMonths = [&](std::int64_t count) {
    interval.years = count / kMonthsPerYear;
    interval.months = count % kMonthsPerYear;
  };
  setMonths(months);
  while (months != 0 && passes(interval)) setMonths(months -= sign);
  while (true) {
    Interval next = interval;
    next.days += sign;
    if (passes(next)) break;
    interval = next;
  }
  const Moment reached = Add(start, interval, 1);
  std::int64_t seconds = to.seconds - reached.seconds;
  std::int64_t nanoseconds = to.nanosecond - reached.nanosecond;
  if (nanoseconds * sign < 0) {
    nanoseconds += sign * kNanosecondsPerSecond;
    seconds -= sign;
  }
  interval.hours = seconds / 3600;
  interval.minutes = seconds / 60 % 60;
  interval.seconds = seconds % 60;
  interval.nanoseconds = nanoseconds;
  return interval;
}

Moment ReadMoment(std::string_view text, platform::TimeZonePointer zone) {
  Reader reader(text);
  const int year = reader.Number(4, 0, 9999);
  reader.Require('-');
  const int month = reader.Number(2, 1, 12);
  reader.Require('-');
  const int day = reader.Number(2, 1, DaysInMonth(year, month));
  int hour = 0;
  int minute = 0;
  int second = 0;
  std::int64_t nanosecond = 0;
  if (reader.Accept(' ') || reader.Accept('T')) {
    hour = reader.Number(2, 0, 23);
    reader.Require(':');
    minute = reader.Number(2, 0, 59);
    if (reader.Accept(':')) {
      second = reader.Number(2, 0, 59);
      if (reader.Accept('.')) nanosecond = reader.Nanoseconds();
    }
    if (platform::TimeZonePointer written = ReadZone(reader)) zone = std::move(written);
  }
  if (!reader.IsAtEnd()) reader.Fail();
  return MakeMoment(year, month, day, hour, minute, second, nanosecond, std::move(zone));
}

}  // namespace quillbar::language
