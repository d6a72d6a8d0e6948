// SPDX-License-Identifier: MIT
// The kernel's own call, where there is one, without the C library's function, which old systems lack; otherwise the
// device.
#include <fcntl.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/syscall.h>
#endif

#include <cerrno>

#include "platform/sanitizers.h"
#include "plugin/engine/security/secrets.h"

namespace quillbar::engine {

namespace {

// Fills by `read`, which returns how many bytes it gave, and gives up where it fails.
template <class Read>
bool Fill(std::span<std::byte> bytes, Read read) {
  while (!bytes.empty()) {
    const auto count = read(bytes);
    if (count > 0) {  // GCOVR_EXCL_BR_LINE: see below
      bytes = bytes.subspan(static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {  // GCOVR_EXCL_LINE: tested in a process that ends before it is counted
      return false;                             // GCOVR_EXCL_LINE: the same
    }
  }
  return true;
}

}  // namespace

bool FillFromSystem(std::span<std::byte> bytes) {
#ifdef SYS_getrandom
  // Without waiting: a system that has just started has no random numbers yet, but the device has some.
  constexpr unsigned kWithoutWaiting = 1;
  if (Fill(bytes, [](std::span<std::byte> rest) {  // GCOVR_EXCL_BR_LINE: the same
        return syscall(SYS_getrandom, rest.data(), rest.size(), kWithoutWaiting);
      })) {
    MarkAsSet(bytes.data(), bytes.size());  // by the kernel, without a function that sanitizers know
    return true;
  }
#endif
  const int device = open("/dev/urandom", O_RDONLY | O_CLOEXEC);  // GCOVR_EXCL_START: the same
  if (device < 0) return false;
  const bool isFilled =
      Fill(bytes, [device](std::span<std::byte> rest) { return read(device, rest.data(), rest.size()); });
  close(device);
  return isFilled;
}  // GCOVR_EXCL_STOP

}  // namespace quillbar::engine
