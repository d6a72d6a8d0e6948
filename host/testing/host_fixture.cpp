// SPDX-License-Identifier: MIT
#include "host/testing/host_fixture.h"

namespace quillbar::host {

Host &HostFixture::StartHost(const std::vector<std::filesystem::path> &plugins, HostOptions options) {
  host_.reset();
  host_ = std::make_unique<Host>(std::move(options));
  for (const std::filesystem::path &plugin : plugins) host_->LoadPlugin(plugin, true);
  return *host_;
}

void HostFixture::ExpectEvenBalance() {
  const Balance balance = host_->balance();
  EXPECT_TRUE(balance.IsEven()) << balance.Report();
}

void HostFixture::ExpectViolations(const std::vector<ViolationKind> &kinds) {
  const Balance balance = host_->balance();
  std::vector<ViolationKind> noted;
  for (const Violation &violation : balance.violations) noted.push_back(violation.kind);
  EXPECT_EQ(noted, kinds) << balance.Report();
  host_->ClearViolations();
}

void HostFixture::TearDown() {
  if (host_ != nullptr && checksBalance_) ExpectEvenBalance();
  host_.reset();
}

}  // namespace quillbar::host
