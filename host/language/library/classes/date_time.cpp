// SPDX-License-Identifier: MIT
// DateTime: a moment, shown in the time zone of the machine.

#include <fmt/format.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <optional>

#include "host/language/library/classes/language_classes.h"
#include "host/language/platform/local_time.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/native_class.h"

namespace quillbar::language {
namespace {

using Self = Instance<"DateTime">;
using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
namespace native = host::native;

struct DateTimeData {
  double secondsFrom1970 = 0;
};

DateTimeData &Of(Object self) { return NativeClass<DateTimeData>::Of(self); }

std::tm Fields(Self *self) {
  const std::optional<std::tm> fields = platform::LocalFields(Of(self).secondsFrom1970);
  if (!fields) throw LibraryError{ExceptionKind::kOutOfBounds, "this moment is beyond the calendar"};
  return *fields;
}

void ConstructFromSeconds(Self *self, double seconds) {
  constexpr double kBeyondCalendar = 1e14;
  if (!(std::abs(seconds) < kBeyondCalendar)) {
    throw LibraryError{ExceptionKind::kInvalidArgument, "this moment is beyond the calendar"};
  }
  Of(self).secondsFrom1970 = seconds;
}

void Construct(Self *self, Integer year, Integer month, Integer day, Integer hour, Integer minute, Integer second) {
  constexpr Integer kLimit = 1'000'000;
  for (const Integer part : {year, month, day, hour, minute, second}) {
    if (part < -kLimit || part > kLimit) {
      throw LibraryError{ExceptionKind::kInvalidArgument, "a part of the date is beyond the calendar"};
    }
  }
  std::tm fields{};
  fields.tm_year = static_cast<int>(year - 1900);
  fields.tm_mon = static_cast<int>(month - 1);
  fields.tm_mday = static_cast<int>(day);
  fields.tm_hour = static_cast<int>(hour);
  fields.tm_min = static_cast<int>(minute);
  fields.tm_sec = static_cast<int>(second);
  Of(self).secondsFrom1970 = platform::SecondsOfLocal(fields);
}

Self *Now() {
  const ObjectHandle now = host::Host::Current()->Create("DateTime", {host::Value(0.0)});
  Of(now.Get()).secondsFrom1970 =
      std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
  return native::Give<Self>(now);
}

Integer Year(Self *self) { return Fields(self).tm_year + 1900; }
Integer Month(Self *self) { return Fields(self).tm_mon + 1; }
Integer Day(Self *self) { return Fields(self).tm_mday; }
Integer Hour(Self *self) { return Fields(self).tm_hour; }
Integer Minute(Self *self) { return Fields(self).tm_min; }
Integer Second(Self *self) { return Fields(self).tm_sec; }
Integer DayOfWeek(Self *self) { return Fields(self).tm_wday + 1; }
Integer DayOfYear(Self *self) { return Fields(self).tm_yday + 1; }
double SecondsFrom1970(Self *self) { return Of(self).secondsFrom1970; }

std::string DateText(const std::tm &fields) {
  return fmt::format("{:04}-{:02}-{:02}", fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday);
}

String SqlDate(Self *self) { return native::Give(StringHandle::FromUtf8(DateText(Fields(self)))); }

String SqlDateTime(Self *self) {
  const std::tm fields = Fields(self);
  return native::Give(StringHandle::FromUtf8(
      fmt::format("{} {:02}:{:02}:{:02}", DateText(fields), fields.tm_hour, fields.tm_min, fields.tm_sec)));
}

using DateTimeMembers = Members<
    Methods<
        native::Method<
            "Constructor(year as Integer, month as Integer, day as Integer, hour as Integer = 0, minute as Integer = 0, second as Integer = 0)",
            Construct>,
        native::Method<"Constructor(secondsFrom1970 as Double)", ConstructFromSeconds>,
        native::Method<"ToString() as String", SqlDateTime>>,
    Properties<native::ReadOnlyProperty<"Year", "Integer", Year>, native::ReadOnlyProperty<"Month", "Integer", Month>,
               native::ReadOnlyProperty<"Day", "Integer", Day>, native::ReadOnlyProperty<"Hour", "Integer", Hour>,
               native::ReadOnlyProperty<"Minute", "Integer", Minute>,
               native::ReadOnlyProperty<"Second", "Integer", Second>,
               native::ReadOnlyProperty<"DayOfWeek", "Integer", DayOfWeek>,
               native::ReadOnlyProperty<"DayOfYear", "Integer", DayOfYear>,
               native::ReadOnlyProperty<"SecondsFrom1970", "Double", SecondsFrom1970>,
               native::ReadOnlyProperty<"SQLDate", "String", SqlDate>,
               native::ReadOnlyProperty<"SQLDateTime", "String", SqlDateTime>>,
    Events<>, Enumerations<>, SharedMethods<native::SharedMethod<"Now() as DateTime", Now>>>;

}  // namespace

ClassRecord &DateTimeRecord() { return NativeClass<DateTimeData>::Record<DateTimeMembers>("DateTime"); }

}  // namespace quillbar::language
