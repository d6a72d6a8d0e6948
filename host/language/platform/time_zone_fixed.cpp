// SPDX-License-Identifier: MIT
#include <fmt/format.h>

#include <cstdlib>

#include "host/language/platform/time_zone.h"

namespace quillbar::language::platform {
namespace {

std::string NameOf(std::int64_t seconds) {
  if (seconds == 0) return "UTC";
  const std::int64_t size = std::abs(seconds);
  return fmt::format("UTC{}{:02}:{:02}", seconds < 0 ? '-' : '+', size / 3600, size / 60 % 60);
}

class Fixed final : public TimeZone {
 public:
  explicit Fixed(std::int64_t seconds) : TimeZone(NameOf(seconds)), seconds_(seconds) {}
  Offset OffsetAt(std::int64_t) const override { return {seconds_, name}; }
  std::int64_t MomentOf(std::int64_t shown) const override { return shown - seconds_; }

 private:
  std::int64_t seconds_;
};

}  // namespace

TimeZonePointer FixedTimeZone(std::int64_t seconds) { return std::make_shared<Fixed>(seconds); }

}  // namespace quillbar::language::platform
