// SPDX-License-Identifier: MIT
// Landlock, by which a process gives up rights of its own (landlock(7)). Its calls have no functions in the C library,
// and older systems' headers lack the rights of later kernels, so what is needed is stated here.
#include "host/runtime/platform/file_confinement.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>

#include "host/runtime/memory_poison.h"

namespace quillbar::host::platform {
namespace {

namespace fs = std::filesystem;

// The same numbers on every processor.
constexpr long kCreateRuleset = 444, kAddRule = 445, kRestrictSelf = 446;
constexpr unsigned kAskVersion = 1;
constexpr int kRulePathBeneath = 1;

enum : std::uint64_t {
  kExecute = 1U << 0,
  kWriteFile = 1U << 1,
  kReadFile = 1U << 2,
  kReadFolder = 1U << 3,
  kUpToMakeLink = (1U << 13) - 1,  // all rights of the first version
  kRefer = 1U << 13,               // links and renames to another folder, from version 2
  kTruncate = 1U << 14,            // from version 3
};

struct RulesetAttributes {
  std::uint64_t handledFileRights;
};

struct __attribute__((packed)) PathRule {
  std::uint64_t rights;
  std::int32_t folder;
};

class FileDescriptor {
 public:
  explicit FileDescriptor(int number) : number_(number) {}
  ~FileDescriptor() {
    if (number_ >= 0) close(number_);
  }
  FileDescriptor(const FileDescriptor &) = delete;
  FileDescriptor &operator=(const FileDescriptor &) = delete;
  int Number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }

 private:
  int number_;
};

/// Allows what is at the path, and below it, these rights; false when the kernel refuses. What isn't there needs none.
bool Allow(const FileDescriptor &ruleset, const fs::path &path, std::uint64_t rights) {
  const FileDescriptor file(open(path.c_str(), O_PATH | O_CLOEXEC));
  if (!file.IsOpen()) return true;
  const PathRule rule{rights, file.Number()};
  return syscall(kAddRule, ruleset.Number(), kRulePathBeneath, &rule, 0) == 0;
}

}  // namespace

bool ConfineFiles(const fs::path &folder, std::span<const fs::path> readable, const fs::path &writable) {
  const long version = syscall(kCreateRuleset, nullptr, 0, kAskVersion);
  if (version < 1) return false;
  std::uint64_t handled = kUpToMakeLink;
  if (version >= 2) handled |= kRefer;
  if (version >= 3) handled |= kTruncate;
  const RulesetAttributes attributes{handled};
  const FileDescriptor ruleset(static_cast<int>(syscall(kCreateRuleset, &attributes, sizeof attributes, 0)));
  if (!ruleset.IsOpen()) return false;

  bool isAllowed = Allow(ruleset, folder, handled & ~std::uint64_t{kExecute});
  for (const fs::path &file : readable) isAllowed = isAllowed && Allow(ruleset, file, kReadFile);
  if (!writable.empty()) {
    isAllowed = isAllowed && Allow(ruleset, writable, (kReadFile | kWriteFile | kTruncate) & handled);
  }
  // Time zones, and the tables and modules that the C library loads when an encoding is first used.
  for (const char *system : {"/usr/share/zoneinfo", "/usr/lib", "/lib", "/lib64", "/usr/lib64"}) {
    isAllowed = isAllowed && Allow(ruleset, system, kReadFile | kReadFolder | kExecute);
  }
  // The search for leaks at the end reads what the process has mapped.
  if (kChecksMemory) isAllowed = isAllowed && Allow(ruleset, "/proc", kReadFile | kReadFolder);
  for (const char *system : {"/etc/localtime", "/etc/ld.so.cache", "/dev/urandom"}) {
    isAllowed = isAllowed && Allow(ruleset, system, kReadFile);
  }
  // Without this the kernel asks for privileges: what is started later must not gain any.
  return isAllowed && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && syscall(kRestrictSelf, ruleset.Number(), 0) == 0;
}

}  // namespace quillbar::host::platform
