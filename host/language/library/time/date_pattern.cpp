// SPDX-License-Identifier: MIT
#include "host/language/library/time/date_pattern.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>

#include "host/language/run/exceptions.h"

namespace quillbar::language {
namespace {

constexpr std::string_view kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                        "July",    "August",   "September", "October", "November", "December"};
constexpr std::string_view kDays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

constexpr std::size_t kShort = 3;   // "Jan"
constexpr std::size_t kFull = 4;    // "January"
constexpr std::size_t kNarrow = 5;  // "J"

std::string Number(std::int64_t number, std::size_t digits) { return fmt::format("{:0{}}", number, digits); }

std::string Name(std::string_view name, std::size_t width) {
  return std::string(width >= kNarrow ? name.substr(0, width == kNarrow ? 1 : 2)
                     : width == kFull ? name
                                      : name.substr(0, kShort));
}

/// "+02:00", "+0200" or "+02"; with `zulu`, "Z" for UTC.
std::string OffsetText(std::int64_t seconds, bool zulu, bool hasColon, bool minutesMayBeMissing) {
  if (seconds == 0 && zulu) return "Z";
  const std::int64_t size = std::abs(seconds);
  std::string text = fmt::format("{}{:02}", seconds < 0 ? '-' : '+', size / 3600);
  if (minutesMayBeMissing && size % 3600 == 0) return text;
  return text + fmt::format("{}{:02}", hasColon ? ":" : "", size / 60 % 60);
}

/// "GMT+2", or "GMT+02:00" when long.
std::string GmtText(std::int64_t seconds, bool isLong) {
  if (seconds == 0) return "GMT";
  if (isLong) return "GMT" + OffsetText(seconds, false, true, false);
  const std::int64_t size = std::abs(seconds);
  return fmt::format("GMT{}{}{}", seconds < 0 ? '-' : '+', size / 3600,
                     size % 3600 == 0 ? "" : fmt::format(":{:02}", size / 60 % 60));
}

std::string Quarter(int month, std::size_t width) {
  const int quarter = (month + 2) / 3;
  static constexpr std::string_view kOrdinals[] = {"1st", "2nd", "3rd", "4th"};
  if (width == kShort) return fmt::format("Q{}", quarter);
  if (width == kFull) return fmt::format("{} quarter", kOrdinals[quarter - 1]);
  return Number(quarter, width == 2 ? 2 : 1);
}

std::string Fraction(std::int64_t nanosecond, std::size_t digits) {
  std::string text = Number(nanosecond, 9);
  text.resize(digits, '0');
  return text;
}

std::string Part(const ShownTime &time, char letter, std::size_t width) {
  const CalendarTime &at = time.calendar;
  const std::int64_t eraYear = at.year > 0 ? at.year : 1 - at.year;
  const int hour12 = at.hour % 12;
  switch (letter) {
    case 'G':
      return at.year > 0 ? (width == kFull ? "Anno Domini" : "AD") : (width == kFull ? "Before Christ" : "BC");
    case 'y':
      return width == 2 ? Number(eraYear % 100, 2) : Number(eraYear, width);
    case 'u':
      return Number(at.year, width);
    case 'Q':
    case 'q':
      return Quarter(at.month, width);
    case 'M':
    case 'L':
      return width < kShort ? Number(at.month, width) : Name(kMonths[at.month - 1], width);
    case 'w':
      return Number(WeekOfYear(at), width);
    case 'd':
      return Number(at.day, width);
    case 'D':
      return Number(at.dayOfYear, width);
    case 'E':
      return Name(kDays[at.weekday], width);
    case 'e':
    case 'c':
      return width < kShort ? Number(at.weekday + 1, width) : Name(kDays[at.weekday], width);
    case 'a':
      return at.hour < 12 ? "AM" : "PM";
    case 'h':
      return Number(hour12 == 0 ? 12 : hour12, width);
    case 'H':
      return Number(at.hour, width);
    case 'K':
      return Number(hour12, width);
    case 'k':
      return Number(at.hour == 0 ? 24 : at.hour, width);
    case 'm':
      return Number(at.minute, width);
    case 's':
      return Number(at.second, width);
    case 'S':
      return Fraction(time.nanosecond, width);
    case 'z':
      return width == kFull ? GmtText(time.offset.seconds, true) : time.offset.abbreviation;
    case 'O':
      return GmtText(time.offset.seconds, width == kFull);
    case 'Z':
      return width == kFull ? GmtText(time.offset.seconds, true)
                            : OffsetText(time.offset.seconds, width == 5, width == 5, false);
    case 'X':
    case 'x':
      return OffsetText(time.offset.seconds, letter == 'X', width == 3 || width == 5, width == 1);
    default:
      break;
  }
  throw LibraryError{ExceptionKind::kInvalidArgument,
                     fmt::format("\"{}\" stands for no part of a date; put text into apostrophes", letter)};
}

bool IsLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

}  // namespace

int WeekOfYear(const CalendarTime &time) {
  const int weekdayOfNewYear = ((time.weekday - (time.dayOfYear - 1)) % 7 + 7) % 7;
  return (time.dayOfYear - 1 + weekdayOfNewYear) / 7 + 1;
}

std::string FormatTime(const ShownTime &time, std::string_view pattern) {
  constexpr std::size_t kWidest = 20;
  std::string text;
  for (std::size_t at = 0; at < pattern.size();) {
    const char character = pattern[at];
    if (character == '\'') {
      // Two apostrophes are one, inside of quoted text too.
      if (pattern.substr(at, 2) == "''") {
        text += '\'';
        at += 2;
        continue;
      }
      for (++at; at < pattern.size(); ++at) {
        if (pattern[at] == '\'') {
          if (pattern.substr(at, 2) != "''") break;
          ++at;
        }
        text += pattern[at];
      }
      ++at;
      continue;
    }
    if (!IsLetter(character)) {
      text += character;
      ++at;
      continue;
    }
    const std::size_t end = std::min(pattern.find_first_not_of(character, at), pattern.size());
    if (end - at > kWidest) {
      throw LibraryError{ExceptionKind::kInvalidArgument, fmt::format("too many \"{}\" in a row", character)};
    }
    text += Part(time, character, end - at);
    at = end;
  }
  return text;
}

}  // namespace quillbar::language
