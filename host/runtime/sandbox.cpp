// SPDX-License-Identifier: MIT
#include "host/runtime/sandbox.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>

#include "host/runtime/host_error.h"
#include "host/runtime/platform/file_confinement.h"
#include "host/runtime/platform/file_system.h"

namespace quillbar::host {
namespace {

namespace fs = std::filesystem;

/// Where the path leads with links followed; of one that names nothing yet, its folder counts. Empty when that can't
/// be told.
fs::path RealPath(const fs::path &path) {
  fs::path existing = platform::NormalPath(path);
  fs::path missing;
  for (;;) {
    std::error_code error;
    const fs::path real = platform::CanonicalPath(existing, error);
    if (!error) return missing.empty() ? real : real / missing;
    // A link to nothing would be followed by whoever creates a file there.
    const bool isRoot = existing == existing.parent_path();
    if (isRoot || platform::IsTaken(existing)) return {};
    missing = missing.empty() ? existing.filename() : existing.filename() / missing;
    existing = existing.parent_path();
  }
}

}  // namespace

fs::path &Sandbox::Folder() {
  static fs::path folder;
  return folder;
}

void Sandbox::Enter(const fs::path &folder) {
  std::error_code error;
  if (platform::KindOf(folder) != platform::FileKind::kFolder) error = std::make_error_code(std::errc::not_a_directory);
  const fs::path real = error ? fs::path() : platform::CanonicalPath(folder, error);
  if (error) {
    throw HostError(ErrorKind::kFile,
                    fmt::format("--sandbox \"{}\" failed: {}", platform::Utf8Path(folder), platform::ErrorText(error)));
  }
  Folder() = real;
}

bool Sandbox::ConfineProcess(std::span<const fs::path> readable, const fs::path &writable) {
  return platform::ConfineFiles(Folder(), readable, writable);
}

bool Sandbox::Allows(const fs::path &path) {
  if (!IsActive()) return true;
  const fs::path real = RealPath(path);
  const auto [end, ignored] = std::mismatch(Folder().begin(), Folder().end(), real.begin(), real.end());
  return end == Folder().end();
}

void Sandbox::Require(const fs::path &path) {
  if (Allows(path)) return;
  throw HostError(ErrorKind::kFile, fmt::format("permission denied: \"{}\" is not in \"{}\", the folder of --sandbox",
                                                platform::Utf8Path(path), platform::Utf8Path(Folder())));
}

}  // namespace quillbar::host
