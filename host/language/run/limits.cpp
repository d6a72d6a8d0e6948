// SPDX-License-Identifier: MIT
#include "host/language/run/limits.h"

#include <fmt/format.h>

#include <string_view>

#include "host/language/run/exceptions.h"

namespace quillbar::language {

Limits &Limits::Current() {
  static Limits limits;
  return limits;
}

void RequireStringSize(std::size_t bytes) {
  if (bytes > Limits::Current().stringBytes) throw LibraryError{ExceptionKind::kOutOfMemory, TooLongString()};
}

std::string TooLongString() {
  return fmt::format("this String would be longer than {}, the limit of --max-string",
                     SizeText(Limits::Current().stringBytes));
}

std::string TooManyElements() {
  return fmt::format("an array has at most {} elements, the limit of --max-elements", Limits::Current().arrayElements);
}

std::string SizeText(std::uint64_t bytes) {
  constexpr std::string_view kUnits[] = {"GiB", "MiB", "KiB"};
  int shift = 30;
  for (const std::string_view unit : kUnits) {
    if (bytes >> shift != 0 && bytes % (std::uint64_t{1} << shift) == 0)
      return fmt::format("{} {}", bytes >> shift, unit);
    shift -= 10;
  }
  return fmt::format("{} bytes", bytes);
}

}  // namespace quillbar::language
