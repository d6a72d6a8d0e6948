// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "host/runtime/host.h"

namespace quillbar::host {

/// A test that runs plugins in a host of its own. At its end the books must be even: whatever was not
/// given back, is still held by a handle, or was a plugin's mistake fails the test with the whole report.
///
/// Keep handles in local variables of the test, so that they are gone when the books are checked.
class HostFixture : public ::testing::Test {
 protected:
  /// Starts the host; a test that calls it again gets a new one, with the plugins loaded afresh.
  Host &StartHost(const std::vector<std::filesystem::path> &plugins, HostOptions options = {});
  Host &host() { return *host_; }

  /// Checks the books now, as the end of the test does. Fails the test when they are not even.
  void ExpectEvenBalance();
  /// Takes note of a mistake that the test provoked: exactly these kinds, in order, must be noted since
  /// the last call. They are forgotten then.
  void ExpectViolations(const std::vector<ViolationKind> &kinds);
  /// For tests whose subject is things that are not given back: the end no longer checks the books.
  void IgnoreBalance() { checksBalance_ = false; }

  void TearDown() override;

 private:
  std::unique_ptr<Host> host_;
  bool checksBalance_ = true;
};

}  // namespace quillbar::host
