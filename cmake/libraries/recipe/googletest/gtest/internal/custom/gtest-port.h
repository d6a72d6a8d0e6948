// SPDX-License-Identifier: MIT
// GoogleTest's place for what a platform lacks: GCC 12's win32 thread model has no std::mutex, which
// GoogleTest wants for one class, of use only to tests with threads. Here it waits by asking.
#pragma once

#include <atomic>

#include <windows.h>

#define GTEST_HAS_NOTIFICATION_ 1

namespace testing::internal {

class Notification {
 public:
  Notification() = default;
  Notification(const Notification &) = delete;
  Notification &operator=(const Notification &) = delete;

  void Notify() { notified_ = true; }
  void WaitForNotification() const {
    while (!notified_) Sleep(1);
  }

 private:
  std::atomic<bool> notified_ = false;
};

}  // namespace testing::internal
