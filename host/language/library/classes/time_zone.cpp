// SPDX-License-Identifier: MIT
// TimeZone: a zone of the system's database, or a fixed distance from UTC.
#include "host/language/platform/time_zone.h"

#include <chrono>

#include "host/language/library/classes/date_time.h"
#include "host/language/library/classes/language_classes.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/native_class.h"

namespace quillbar::language {
namespace {

using Self = Instance<"TimeZone">;
using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
namespace native = host::native;

struct TimeZoneData {
  platform::TimeZonePointer zone;
};

platform::TimeZonePointer &Of(Object self) { return NativeClass<TimeZoneData>::Of(self).zone; }

void ConstructByName(Self *self, String name) {
  const std::string text = StringHandle(name).Utf8();
  Of(self) = platform::FindTimeZone(text);
  if (!Of(self)) throw LibraryError{ExceptionKind::kInvalidArgument, platform::WhyUnknown(text)};
}

void ConstructFixed(Self *self, Integer secondsFromGmt) {
  constexpr Integer kMost = 18 * 3600;
  if (secondsFromGmt < -kMost || secondsFromGmt > kMost) {
    throw LibraryError{ExceptionKind::kInvalidArgument, "a time zone is at most 18 hours ahead of UTC, or behind it"};
  }
  Of(self) = platform::FixedTimeZone(secondsFromGmt);
}

Self *Current() { return native::Give<Self>(MakeTimeZone(platform::CurrentTimeZone())); }

platform::TimeZone::Offset OffsetNow(Self *self) {
  const auto now =
      std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch());
  return ZoneOf(self)->OffsetAt(now.count());
}

Integer SecondsFromGmt(Self *self) { return static_cast<Integer>(OffsetNow(self).seconds); }
String Abbreviation(Self *self) { return native::Give(StringHandle::FromUtf8(OffsetNow(self).abbreviation)); }
String Name(Self *self) { return native::Give(StringHandle::FromUtf8(ZoneOf(self)->name)); }

using TimeZoneMembers =
    Members<Methods<native::Method<"Constructor(name as String)", ConstructByName>,
                    native::Method<"Constructor(secondsFromGMT as Integer)", ConstructFixed>>,
            Properties<native::ReadOnlyProperty<"SecondsFromGMT", "Integer", SecondsFromGmt>,
                       native::ReadOnlyProperty<"Abbreviation", "String", Abbreviation>,
                       native::ReadOnlyProperty<"Name", "String", Name>>,
            Events<>, Enumerations<>, SharedMethods<native::SharedMethod<"Current() as TimeZone", Current>>>;

}  // namespace

platform::TimeZonePointer ZoneOf(Object timeZone) {
  return timeZone == nullptr || !Of(timeZone) ? platform::CurrentTimeZone() : Of(timeZone);
}

ObjectHandle MakeTimeZone(const platform::TimeZonePointer &zone) {
  ObjectHandle made = host::Host::Current()->Create("TimeZone", {host::Value(Integer{0})});
  Of(made.Get()) = zone;
  return made;
}

ClassRecord &TimeZoneRecord() { return NativeClass<TimeZoneData>::Record<TimeZoneMembers>("TimeZone"); }

}  // namespace quillbar::language
