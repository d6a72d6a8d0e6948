// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>
#include <optional>

/// Dates and times of day in the time zone of the machine.
namespace quillbar::language::platform {

/// The date and time that clocks in the machine's time zone show at this moment, in seconds since 1970 in UTC. Nothing
/// when the calendar has no year for it.
std::optional<std::tm> LocalFields(double secondsFrom1970);

/// The moment at which clocks show this date and time, in seconds since 1970 in UTC. Fields beyond their range carry
/// over: month 12 is January of the next year. `tm_wday`, `tm_yday` and `tm_isdst` are ignored.
double SecondsOfLocal(const std::tm &fields);

}  // namespace quillbar::language::platform
