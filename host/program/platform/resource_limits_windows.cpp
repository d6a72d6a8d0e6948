// SPDX-License-Identifier: MIT
#include "host/program/platform/resource_limits.h"

#include <windows.h>
// After windows.h.
#include <psapi.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/runtime/interruption.h"
#include "host/runtime/platform/wide_text_windows.h"

namespace quillbar::program::platform {
namespace {

[[noreturn]] void Fail(const char *what) {
  throw std::runtime_error(std::string(what) + ": " + host::platform::SystemMessage(GetLastError()));
}

void CALLBACK EndForTime(void *, BOOLEAN) {
  static volatile LONG timeWasUp = 0;
  if (InterlockedExchange(&timeWasUp, 1) == 0) {
    host::Interruption::Request(host::Interruption::kTimeLimit);
    return;
  }
  constexpr std::string_view kMessage =
      "quillbar: error: the limit of --max-time passed within one long operation, which was cut short\n";
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), kMessage.data(), static_cast<DWORD>(kMessage.size()), &written, nullptr);
  TerminateProcess(GetCurrentProcess(), kTimeIsUp);
}

/// The job that holds this process alone; it is never closed.
HANDLE job = nullptr;
SIZE_T mostWithReserve = 0;

bool SetMost(SIZE_T bytes) {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION information{};
  information.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_PROCESS_MEMORY;
  information.ProcessMemoryLimit = bytes;
  return SetInformationJobObject(job, JobObjectExtendedLimitInformation, &information, sizeof information) != FALSE;
}

/// Called when the system refuses memory.
void UseReserve() {
  static bool isUsed = false;
  if (isUsed) throw std::bad_alloc();
  isUsed = true;
  host::Interruption::Request(host::Interruption::kMemoryLimit);
  if (!SetMost(mostWithReserve)) throw std::bad_alloc();
}

}  // namespace

void LimitTime(double seconds) {
  constexpr double kMostMilliseconds = 4e9;  // 46 days, near the end of the type
  const auto due = static_cast<DWORD>(std::min(seconds * 1000, kMostMilliseconds));
  HANDLE timer = nullptr;
  if (CreateTimerQueueTimer(&timer, nullptr, EndForTime, nullptr, due, kGraceSeconds * 1000, WT_EXECUTEDEFAULT) ==
      FALSE) {
    Fail("the time can't be limited");
  }
}

void LimitMemory(std::uint64_t bytes) {
  PROCESS_MEMORY_COUNTERS counters{};
  if (GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) == FALSE) Fail("memory can't be limited");
  constexpr std::uint64_t kGreatest = std::numeric_limits<SIZE_T>::max();
  const std::uint64_t most = counters.PagefileUsage + bytes;
  mostWithReserve = static_cast<SIZE_T>(std::min(kGreatest, most + kReserveBytes));
  job = CreateJobObjectW(nullptr, nullptr);
  if (job == nullptr || !SetMost(static_cast<SIZE_T>(std::min(kGreatest, most))) ||
      AssignProcessToJobObject(job, GetCurrentProcess()) == FALSE) {
    Fail("memory can't be limited");
  }
  std::set_new_handler(UseReserve);
}

}  // namespace quillbar::program::platform
