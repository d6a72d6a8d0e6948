// SPDX-License-Identifier: MIT
#include <cctz/civil_time.h>
#include <cctz/time_zone.h>
#include <fmt/format.h>

#include <chrono>
#include <cstdlib>

#include "host/language/platform/time_zone.h"

namespace quillbar::language::platform {
namespace {

cctz::time_point<cctz::seconds> PointAt(std::int64_t seconds) {
  return cctz::time_point<cctz::seconds>(cctz::seconds(seconds));
}

const cctz::civil_second kEpoch(1970, 1, 1, 0, 0, 0);

class SystemZone final : public TimeZone {
 public:
  SystemZone(std::string zoneName, const cctz::time_zone &zone) : TimeZone(std::move(zoneName)), zone_(zone) {}

  Offset OffsetAt(std::int64_t moment) const override {
    const cctz::time_zone::absolute_lookup found = zone_.lookup(PointAt(moment));
    return {found.offset, found.abbr};
  }

  std::int64_t MomentOf(std::int64_t shown) const override {
    return zone_.lookup(kEpoch + shown).pre.time_since_epoch().count();
  }

 private:
  cctz::time_zone zone_;
};

}  // namespace

TimeZonePointer CurrentTimeZone() {
  const char *variable = std::getenv("TZ");
  std::string name = variable == nullptr ? "" : variable[0] == ':' ? variable + 1 : variable;
  cctz::time_zone zone;
  if (name.empty() && variable == nullptr) {
    if (cctz::load_time_zone("localtime", &zone)) return std::make_shared<SystemZone>("", zone);
  } else if (cctz::load_time_zone(name, &zone)) {
    return std::make_shared<SystemZone>(std::move(name), zone);
  }
  // TZ may hold rules in place of a name; the C library reads these.
  cctz::load_time_zone("libc:localtime", &zone);
  return std::make_shared<SystemZone>("", zone);
}

TimeZonePointer FindTimeZone(const std::string &name) {
  cctz::time_zone zone;
  // The other names that the library knows aren't the database's: paths, and zones of its own.
  const bool isName = !name.empty() && name.front() != '/' && name.find("..") == std::string::npos &&
                      name.find(':') == std::string::npos;
  if (!isName || !cctz::load_time_zone(name, &zone)) return nullptr;
  return std::make_shared<SystemZone>(name, zone);
}

std::string WhyUnknown(const std::string &name) {
  return fmt::format("the system has no time zone \"{}\"; names are like \"Europe/Berlin\", from the package tzdata",
                     name);
}

}  // namespace quillbar::language::platform
