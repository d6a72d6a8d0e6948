// SPDX-License-Identifier: MIT
#include <cmath>

#include "host/language/platform/local_time.h"

namespace quillbar::language::platform {

std::optional<std::tm> LocalFields(double secondsFrom1970) {
  const auto seconds = static_cast<std::time_t>(std::floor(secondsFrom1970));
  std::tm fields{};
  if (localtime_r(&seconds, &fields) == nullptr) return std::nullopt;
  return fields;
}

double SecondsOfLocal(const std::tm &fields) {
  std::tm copy = fields;
  copy.tm_isdst = -1;
  return static_cast<double>(std::mktime(&copy));
}

}  // namespace quillbar::language::platform
