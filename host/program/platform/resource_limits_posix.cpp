// SPDX-License-Identifier: MIT
#include "host/program/platform/resource_limits.h"

#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <fstream>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "host/runtime/interruption.h"
#include "host/runtime/memory_poison.h"

namespace quillbar::program::platform {
namespace {

volatile std::sig_atomic_t timeWasUp = 0;

extern "C" void EndForTime(int) {
  if (timeWasUp == 0) {
    timeWasUp = 1;
    host::Interruption::Request(host::Interruption::kTimeLimit);
    return;
  }
  constexpr std::string_view kMessage =
      "quillbar: error: the limit of --max-time passed within one long operation, which was cut short\n";
  [[maybe_unused]] const ssize_t ignored = write(STDERR_FILENO, kMessage.data(), kMessage.size());
  _exit(kTimeIsUp);
}

#ifdef __linux__
/// Called when the system refuses memory.
void UseReserve() {
  static bool isUsed = false;
  if (isUsed) throw std::bad_alloc();
  isUsed = true;
  host::Interruption::Request(host::Interruption::kMemoryLimit);
  rlimit limit{};
  if (getrlimit(RLIMIT_DATA, &limit) != 0) throw std::bad_alloc();
  limit.rlim_cur = limit.rlim_max;
  if (setrlimit(RLIMIT_DATA, &limit) != 0) throw std::bad_alloc();
}

/// The bytes that the system counts for this limit now.
std::uint64_t DataBytes() {
  // size, resident, shared, text, lib, data: in pages.
  std::ifstream file("/proc/self/statm");
  std::uint64_t pages = 0;
  for (int field = 0; field < 6; ++field) file >> pages;
  if (!file) throw std::runtime_error("memory can't be limited here: /proc doesn't tell how much is in use");
  return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}
#endif

}  // namespace

void LimitTime(double seconds) {
  struct sigaction action {};
  action.sa_handler = EndForTime;
  sigemptyset(&action.sa_mask);
  // A read that waits ends, so that the script goes on to where it notices the interruption.
  action.sa_flags = 0;
  const double whole = std::floor(seconds);
  itimerval timer{};
  timer.it_value.tv_sec = static_cast<time_t>(whole);
  timer.it_value.tv_usec = static_cast<suseconds_t>((seconds - whole) * 1e6);
  timer.it_interval.tv_sec = kGraceSeconds;
  if (sigaction(SIGALRM, &action, nullptr) != 0 || setitimer(ITIMER_REAL, &timer, nullptr) != 0) {
    throw std::system_error(errno, std::generic_category(), "the time can't be limited");
  }
}

void LimitMemory(std::uint64_t bytes) {
#ifdef __linux__
  if (host::kChecksMemory) throw std::runtime_error("memory can't be limited under AddressSanitizer");
  rlimit limit{};
  if (getrlimit(RLIMIT_DATA, &limit) != 0) {
    throw std::system_error(errno, std::generic_category(), "memory can't be limited");
  }
  const std::uint64_t most = DataBytes() + bytes;
  // A tighter limit of the system's own stays.
  limit.rlim_cur = static_cast<rlim_t>(std::min<std::uint64_t>(limit.rlim_max, most));
  limit.rlim_max = static_cast<rlim_t>(std::min<std::uint64_t>(limit.rlim_max, most + kReserveBytes));
  if (setrlimit(RLIMIT_DATA, &limit) != 0) {
    throw std::system_error(errno, std::generic_category(), "memory can't be limited");
  }
  std::set_new_handler(UseReserve);
#else
  static_cast<void>(bytes);
  throw std::runtime_error("--max-memory is for Linux and Windows; this system has no such limit");
#endif
}

}  // namespace quillbar::program::platform
