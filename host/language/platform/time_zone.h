// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

/// Time zones: how far clocks are ahead of UTC, and when.
namespace quillbar::language::platform {

/// A time zone. Moments are seconds since 1970 in UTC. What clocks show is counted the same way, as though they showed
/// UTC: see calendar.h.
class TimeZone {
 public:
  struct Offset {
    std::int64_t seconds = 0;  // ahead of UTC
    std::string abbreviation;  // such as "CEST"; "UTC+02:00" where the zone has none
  };

  explicit TimeZone(std::string zoneName) : name(std::move(zoneName)) {}
  virtual ~TimeZone() = default;
  TimeZone(const TimeZone &) = delete;
  TimeZone &operator=(const TimeZone &) = delete;

  virtual Offset OffsetAt(std::int64_t moment) const = 0;
  /// The moment at which clocks show this. Where they show it twice, the first one; what a change of the clocks leaves
  /// out is as much later as they are put forward.
  virtual std::int64_t MomentOf(std::int64_t shown) const = 0;

  const std::string name;  // as in the system's database; empty when it isn't known
};

using TimeZonePointer = std::shared_ptr<const TimeZone>;

/// The time zone of the machine.
TimeZonePointer CurrentTimeZone();

/// The time zone of this name in the system's database, such as "Europe/Berlin"; null when there is none. On Windows,
/// which has no such database, only UTC has a name.
TimeZonePointer FindTimeZone(const std::string &name);

/// Why `FindTimeZone` finds nothing, for messages.
std::string WhyUnknown(const std::string &name);

/// A time zone that is always as many seconds ahead of UTC.
TimeZonePointer FixedTimeZone(std::int64_t seconds);

}  // namespace quillbar::language::platform
