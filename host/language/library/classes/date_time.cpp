// SPDX-License-Identifier: MIT
// DateTime: a moment, with the time zone whose clocks show it.
#include "host/language/library/classes/date_time.h"

#include <fmt/format.h>

#include <chrono>
#include <cmath>
#include <utility>

#include "host/language/library/classes/language_classes.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/native_class.h"

namespace quillbar::language {

/// How much of a date or time a style shows.
enum class FormatStyles : std::int32_t { kNone, kShort, kMedium, kLong, kFull };

}  // namespace quillbar::language

namespace quillbar {
template <>
inline constexpr FixedString kEnumerationName<language::FormatStyles> = "FormatStyles";
}

namespace quillbar::language {
namespace {

using Self = Instance<"DateTime">;
using IntervalObject = Instance<"DateInterval">;
using ZoneObject = Instance<"TimeZone">;
using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
namespace native = host::native;

struct DateTimeData {
  Moment moment{.zone = platform::CurrentTimeZone()};
};

Self *Give(const Moment &moment) { return native::Give<Self>(MakeDateTime(moment)); }

/// Of an argument, which may be Nil.
const Moment &MomentOrFail(Self *dateTime) {
  if (dateTime == nullptr) throw LibraryError{ExceptionKind::kNilObject, "this needs a DateTime, not Nil"};
  return MomentOf(dateTime);
}

const Interval &IntervalOrFail(IntervalObject *interval) {
  if (interval == nullptr) throw LibraryError{ExceptionKind::kNilObject, "this needs a DateInterval, not Nil"};
  return IntervalOf(interval);
}

void ConstructFromSeconds(Self *self, double seconds, ZoneObject *zone) {
  constexpr double kBeyondCalendar = 1e14;
  if (!(std::abs(seconds) < kBeyondCalendar)) {
    throw LibraryError{ExceptionKind::kInvalidArgument, "this moment is beyond the calendar"};
  }
  const double whole = std::floor(seconds);
  // A Double holds no more than microseconds of today's moments.
  constexpr double kMicroseconds = 1e6;
  auto microsecond = static_cast<std::int64_t>(std::round((seconds - whole) * kMicroseconds));
  std::int64_t second = static_cast<std::int64_t>(whole);
  if (microsecond == 1'000'000) {
    microsecond = 0;
    ++second;
  }
  MomentOf(self) = {second, microsecond * 1000, ZoneOf(zone)};
}

void ConstructFromParts(Self *self, Integer year, Integer month, Integer day, Integer hour, Integer minute,
                        Integer second, Integer nanosecond, ZoneObject *zone) {
  MomentOf(self) = MakeMoment(year, month, day, hour, minute, second, nanosecond, ZoneOf(zone));
}

void ConstructCopy(Self *self, Self *other) { MomentOf(self) = MomentOrFail(other); }

Self *Now(ZoneObject *zone) {
  const auto now =
      std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch());
  return Give({now.count() / kNanosecondsPerSecond, now.count() % kNanosecondsPerSecond, ZoneOf(zone)});
}

Self *FromString(String text, ZoneObject *zone) { return Give(ReadMoment(StringHandle(text).Utf8(), ZoneOf(zone))); }

// -- Parts ----------------------------------------------------------------------------------------

CalendarTime Parts(Self *self) { return CalendarTimeOf(MomentOf(self).Shown()); }

Integer Year(Self *self) { return static_cast<Integer>(Parts(self).year); }
Integer Month(Self *self) { return Parts(self).month; }
Integer Day(Self *self) { return Parts(self).day; }
Integer Hour(Self *self) { return Parts(self).hour; }
Integer Minute(Self *self) { return Parts(self).minute; }
Integer Second(Self *self) { return Parts(self).second; }
Integer Nanosecond(Self *self) { return static_cast<Integer>(MomentOf(self).nanosecond); }
Integer DayOfWeek(Self *self) { return Parts(self).weekday + 1; }
Integer DayOfYear(Self *self) { return Parts(self).dayOfYear; }
Integer Week(Self *self) { return WeekOfYear(Parts(self)); }

double SecondsFrom1970(Self *self) {
  const Moment &moment = MomentOf(self);
  return static_cast<double>(moment.seconds) + static_cast<double>(moment.nanosecond) / 1e9;
}

ZoneObject *Zone(Self *self) { return native::Give<ZoneObject>(MakeTimeZone(MomentOf(self).zone)); }

// -- Calculations ---------------------------------------------------------------------------------

Self *Plus(Self *self, IntervalObject *interval) { return Give(Add(MomentOf(self), IntervalOrFail(interval), 1)); }
Self *Minus(Self *self, IntervalObject *interval) { return Give(Add(MomentOf(self), IntervalOrFail(interval), -1)); }

IntervalObject *Since(Self *self, Self *other) {
  return native::Give<IntervalObject>(MakeDateInterval(Between(MomentOrFail(other), MomentOf(self))));
}

template <int kSign>
Self *Later(Self *self, Integer years, Integer months, Integer days, Integer hours, Integer minutes, Integer seconds,
            Integer nanoseconds) {
  return Give(Add(MomentOf(self), {years, months, days, hours, minutes, seconds, nanoseconds}, kSign));
}

Integer Compare(Self *self, Self *other) {
  if (other == nullptr) return 1;
  const auto key = [](const Moment &moment) { return std::pair(moment.seconds, moment.nanosecond); };
  const auto one = key(MomentOf(self));
  const auto two = key(MomentOf(other));
  return one < two ? -1 : one > two ? 1 : 0;
}

// -- Texts ----------------------------------------------------------------------------------------

String Text(Self *self, std::string_view pattern) {
  const Moment &moment = MomentOf(self);
  return native::Give(StringHandle::FromUtf8(
      FormatTime({Parts(self), moment.nanosecond, moment.zone->OffsetAt(moment.seconds)}, pattern)));
}

String SqlDate(Self *self) { return Text(self, "uuuu-MM-dd"); }
String SqlDateTime(Self *self) { return Text(self, "uuuu-MM-dd HH:mm:ss"); }
String ByPattern(Self *self, String pattern) { return Text(self, StringHandle(pattern).Utf8()); }

String ByStyles(Self *self, FormatStyles date, FormatStyles time) {
  static constexpr std::string_view kDates[] = {"", "M/d/yy", "MMM d, y", "MMMM d, y", "EEEE, MMMM d, y"};
  static constexpr std::string_view kTimes[] = {"", "h:mm a", "h:mm:ss a", "h:mm:ss a z", "h:mm:ss a zzzz"};
  const auto pattern = [](const auto &patterns, FormatStyles style) {
    const auto index = static_cast<std::size_t>(style);
    if (index >= std::size(patterns)) throw LibraryError{ExceptionKind::kInvalidArgument, "this is no style of dates"};
    return patterns[index];
  };
  const std::string_view datePattern = pattern(kDates, date);
  const std::string_view timePattern = pattern(kTimes, time);
  if (datePattern.empty() || timePattern.empty()) return Text(self, fmt::format("{}{}", datePattern, timePattern));
  const bool isLong = date >= FormatStyles::kLong;
  return Text(self, fmt::format("{}{}{}", datePattern, isLong ? " 'at' " : ", ", timePattern));
}

using DateTimeMembers = Members<
    Methods<
        native::Method<
            "Constructor(year as Integer, month as Integer, day as Integer, hour as Integer = 0, minute as Integer = 0, second as Integer = 0, nanosecond as Integer = 0, timeZone as TimeZone = Nil)",
            ConstructFromParts>,
        native::Method<"Constructor(secondsFrom1970 as Double, timeZone as TimeZone = Nil)", ConstructFromSeconds>,
        native::Method<"Constructor(other as DateTime)", ConstructCopy>,
        native::Method<
            "AddInterval(years as Integer = 0, months as Integer = 0, days as Integer = 0, hours as Integer = 0, minutes as Integer = 0, seconds as Integer = 0, nanoseconds as Integer = 0) as DateTime",
            Later<1>>,
        native::Method<
            "SubtractInterval(years as Integer = 0, months as Integer = 0, days as Integer = 0, hours as Integer = 0, minutes as Integer = 0, seconds as Integer = 0, nanoseconds as Integer = 0) as DateTime",
            Later<-1>>,
        native::Method<"Operator_Add(interval as DateInterval) as DateTime", Plus>,
        native::Method<"Operator_Subtract(interval as DateInterval) as DateTime", Minus>,
        native::Method<"Operator_Subtract(other as DateTime) as DateInterval", Since>,
        native::Method<"Operator_Compare(other as DateTime) as Integer", Compare>,
        native::Method<"ToString() as String", SqlDateTime>,
        native::Method<"ToString(format as String) as String", ByPattern>,
        native::Method<"ToString(dateStyle as DateTime.FormatStyles, timeStyle as DateTime.FormatStyles = 2) as String",
                       ByStyles>>,
    Properties<native::ReadOnlyProperty<"Year", "Integer", Year>, native::ReadOnlyProperty<"Month", "Integer", Month>,
               native::ReadOnlyProperty<"Day", "Integer", Day>, native::ReadOnlyProperty<"Hour", "Integer", Hour>,
               native::ReadOnlyProperty<"Minute", "Integer", Minute>,
               native::ReadOnlyProperty<"Second", "Integer", Second>,
               native::ReadOnlyProperty<"Nanosecond", "Integer", Nanosecond>,
               native::ReadOnlyProperty<"DayOfWeek", "Integer", DayOfWeek>,
               native::ReadOnlyProperty<"DayOfYear", "Integer", DayOfYear>,
               native::ReadOnlyProperty<"WeekOfYear", "Integer", Week>,
               native::ReadOnlyProperty<"SecondsFrom1970", "Double", SecondsFrom1970>,
               native::ReadOnlyProperty<"SQLDate", "String", SqlDate>,
               native::ReadOnlyProperty<"SQLDateTime", "String", SqlDateTime>,
               native::ReadOnlyProperty<"Timezone", "TimeZone", Zone>>,
    Events<>,
    Enumerations<Enumeration<FormatStyles, "FormatStyles", "Int32", "None = 0", "Short = 1", "Medium = 2", "Long = 3",
                             "Full = 4">>,
    SharedMethods<
        native::SharedMethod<"Now(timeZone as TimeZone = Nil) as DateTime", Now>,
        native::SharedMethod<"FromString(text as String, timeZone as TimeZone = Nil) as DateTime", FromString>>>;

}  // namespace

Moment &MomentOf(Object dateTime) { return NativeClass<DateTimeData>::Of(dateTime).moment; }

ObjectHandle MakeDateTime(const Moment &moment) {
  ObjectHandle made = host::Host::Current()->Create("DateTime", {host::Value(0.0)});
  MomentOf(made.Get()) = moment;
  return made;
}

ClassRecord &DateTimeRecord() { return NativeClass<DateTimeData>::Record<DateTimeMembers>("DateTime"); }

}  // namespace quillbar::language
