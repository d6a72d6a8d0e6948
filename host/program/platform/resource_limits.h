// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Limits of what the process may use. Reaching one asks for the end of the script (host::Interruption), which happens
/// between two statements; when the script doesn't come so far, the system puts an end to it.
namespace quillbar::program::platform {

/// Seconds after the limit of time until the process ends at once, in the midst of whatever it does.
inline constexpr int kGraceSeconds = 5;

/// Bytes beyond the limit of memory with which a script can end in order.
inline constexpr std::uint64_t kReserveBytes = std::uint64_t{16} << 20;

/// The exit status of a process that didn't end in its grace.
inline constexpr int kTimeIsUp = 124;

/// Asks for the end after so many seconds from now.
void LimitTime(double seconds);

/// From now on the process gets at most so many bytes more than it has: the first allocation that is refused asks for
/// the end and gets the reserve; those that the reserve can't serve fail. Throws std::runtime_error where the system
/// sets no such limit.
void LimitMemory(std::uint64_t bytes);

}  // namespace quillbar::program::platform
