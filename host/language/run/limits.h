// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillbar::language {

/// How far a script may go. The program that runs scripts sets them before a run; docs/limits.md lists them.
struct Limits {
  /// Variables of all calls in progress.
  static constexpr std::size_t kVariables = std::size_t{1} << 20;
  /// Bytes of the machine's own stack.
  static constexpr std::size_t kMachineStack = std::size_t{5} << 20;

  static constexpr std::size_t kStringBytes = std::size_t{1} << 30;
  static constexpr std::int64_t kArrayElements = 50'000'000;
  static constexpr std::size_t kCalls = 10'000;

  /// Nested calls; more raise StackOverflowException.
  std::size_t calls = kCalls;
  /// Bytes of a String and elements of an array; more raise OutOfMemoryException.
  std::size_t stringBytes = kStringBytes;
  std::int64_t arrayElements = kArrayElements;

  /// What the program keeps watch over; here for messages alone. 0: unlimited.
  std::uint64_t memoryBytes = 0;
  double seconds = 0;

  /// Those of this process.
  static Limits &Current();
};

/// Throws LibraryError when a String of so many bytes would be too long.
void RequireStringSize(std::size_t bytes);

/// What is wrong with a String that would be too long, or an array with too many elements.
std::string TooLongString();
std::string TooManyElements();

/// The size in the greatest unit of which it is a whole number: "1 GiB", "1500 bytes".
std::string SizeText(std::uint64_t bytes);

}  // namespace quillbar::language
