// SPDX-License-Identifier: MIT
// DateInterval: years, months, days and so on, as they are added to dates.
#include "host/language/library/classes/date_time.h"
#include "host/language/library/classes/language_classes.h"
#include "host/runtime/native_class.h"

namespace quillbar::language {
namespace {

using Self = Instance<"DateInterval">;
using host::NativeClass;
using host::ObjectHandle;
namespace native = host::native;

void Construct(Self *self, Integer years, Integer months, Integer days, Integer hours, Integer minutes, Integer seconds,
               Integer nanoseconds) {
  IntervalOf(self) = {years, months, days, hours, minutes, seconds, nanoseconds};
}

template <std::int64_t Interval::*kPart>
Integer Part(Self *self) {
  return static_cast<Integer>(IntervalOf(self).*kPart);
}
template <std::int64_t Interval::*kPart>
void SetPart(Self *self, std::intptr_t, Integer value) {
  IntervalOf(self).*kPart = value;
}

template <FixedString Name, std::int64_t Interval::*kPart>
using PartProperty = native::Property<Name, "Integer", Part<kPart>, SetPart<kPart>>;

using DateIntervalMembers = Members<
    Methods<native::Method<
        "Constructor(years as Integer = 0, months as Integer = 0, days as Integer = 0, hours as Integer = 0, minutes as Integer = 0, seconds as Integer = 0, nanoseconds as Integer = 0)",
        Construct>>,
    Properties<PartProperty<"Years", &Interval::years>, PartProperty<"Months", &Interval::months>,
               PartProperty<"Days", &Interval::days>, PartProperty<"Hours", &Interval::hours>,
               PartProperty<"Minutes", &Interval::minutes>, PartProperty<"Seconds", &Interval::seconds>,
               PartProperty<"NanoSeconds", &Interval::nanoseconds>>>;

}  // namespace

Interval &IntervalOf(Object dateInterval) { return NativeClass<Interval>::Of(dateInterval); }

ObjectHandle MakeDateInterval(const Interval &interval) {
  ObjectHandle made = host::Host::Current()->Create("DateInterval");
  IntervalOf(made.Get()) = interval;
  return made;
}

ClassRecord &DateIntervalRecord() { return NativeClass<Interval>::Record<DateIntervalMembers>("DateInterval"); }

}  // namespace quillbar::language
