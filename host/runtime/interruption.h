// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

namespace quillbar::host {

/// The wish that the running script ends: the user's, by Ctrl-C, or that of a limit of time or memory. It is expressed at
/// any time, from a signal handler or another thread, and followed where the script is between two statements or a plugin reports progress, so that every
/// file and reference is given back as after an error.
class Interruption {
 public:
  /// In place of a signal's number: the limits that have been reached.
  static constexpr int kTimeLimit = 1000;
  static constexpr int kMemoryLimit = 1001;

  /// Asks for the end. `signal` is the number that the exit status tells (128 and the number): 2 for Ctrl-C. The first
  /// request counts; false when there has been one already.
  static bool Request(int signal) noexcept {
    int none = 0;
    return signal_.compare_exchange_strong(none, signal);
  }

  static bool IsRequested() noexcept { return signal_.load(std::memory_order_relaxed) != 0; }

  /// The number of the first request's signal; 0 when there was none.
  static int Signal() noexcept { return signal_.load(std::memory_order_relaxed); }

  /// Forgets the request.
  static void Clear() noexcept { signal_ = 0; }

 private:
  static_assert(std::atomic<int>::is_always_lock_free, "a signal handler sets it");
  inline static std::atomic<int> signal_ = 0;
};

/// Thrown where a script follows an interruption. Scripts can't catch it.
struct Interrupted {};

}  // namespace quillbar::host
