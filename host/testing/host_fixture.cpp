// SPDX-License-Identifier: MIT
#include "host/testing/host_fixture.h"

namespace quillbar::host {

Host &HostFixture::StartHost(const std::vector<std::filesystem::path> &plugins, HostOptions options) {
  host_.reset();
  host_ = std::make_unique<Host>(std::move(options));
  for (const std::filesystem::path &plugin : plugins) host_->LoadPlugin(plugin, true);
  return *host_;
}

void HostFixture::ExpectBalancedLedger() {
  const LedgerReport report = host_->InspectLedger();
  EXPECT_TRUE(report.IsBalanced()) << report.Text();
}

void HostFixture::ExpectViolations(const std::vector<ViolationKind> &kinds) {
  const LedgerReport report = host_->InspectLedger();
  std::vector<ViolationKind> noted;
  for (const Violation &violation : report.violations) noted.push_back(violation.kind);
  EXPECT_EQ(noted, kinds) << report.Text();
  host_->ClearViolations();
}

void HostFixture::TearDown() {
  if (host_ != nullptr && checksLedger_) ExpectBalancedLedger();
  host_.reset();
}

}  // namespace quillbar::host
