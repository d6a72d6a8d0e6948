// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "host/runtime/host.h"

namespace quillbar::host {

/// A test that runs plugins in a host of its own. At its end the reference ledger must balance: whatever was not given
/// back, is still held by a handle, or was a plugin's mistake fails the test with the whole report.
///
/// Keep handles in local variables of the test, so that they are destroyed before the ledger is checked.
class HostFixture : public ::testing::Test {
 protected:
  /// Starts the host. A test that calls it again gets a new host, with the plugins loaded afresh.
  Host &StartHost(const std::vector<std::filesystem::path> &plugins, HostOptions options = {});
  Host &host() { return *host_; }

  /// Checks the ledger now, as the end of the test does. Fails the test unless it balances.
  void ExpectBalancedLedger();
  /// Expects mistakes that the test provoked: exactly these kinds, in this order, must have been noted since the last
  /// call. They are then forgotten.
  void ExpectViolations(const std::vector<ViolationKind> &kinds);
  /// For tests about things that are not given back: the ledger is no longer checked at the end.
  void IgnoreLedger() { checksLedger_ = false; }

  void TearDown() override;

 private:
  std::unique_ptr<Host> host_;
  bool checksLedger_ = true;
};

}  // namespace quillbar::host
