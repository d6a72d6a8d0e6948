// SPDX-License-Identifier: MIT
#include "plugin/engine/security/secrets.h"

#include <cstdint>
#include <ctime>

extern "C" {

void HPDF_FillWithRandom(void *bytes, HPDF_UINT size) {
  const std::span wanted(static_cast<std::byte *>(bytes), size);
  if (quillbar::engine::FillFromSystem(wanted)) return;  // GCOVR_EXCL_BR_LINE: see below
  static std::uint64_t count = 0;  // GCOVR_EXCL_START: tested in a process that ends before it is counted
  std::uint64_t state = static_cast<std::uint64_t>(std::time(nullptr)) ^
                        static_cast<std::uint64_t>(std::clock()) << 32 ^ reinterpret_cast<std::uintptr_t>(bytes) ^
                        ++count << 48;
  for (std::byte &byte : wanted) {
    // The generator SplitMix64.
    state += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = (state ^ state >> 30) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EBU;
    byte = static_cast<std::byte>(mixed >> 56);
  }  // GCOVR_EXCL_STOP
}

void HPDF_Wipe(void *bytes, HPDF_UINT size) {
  volatile auto *const each = static_cast<volatile unsigned char *>(bytes);
  for (HPDF_UINT i = 0; i < size; ++i) each[i] = 0;
}

}  // extern "C"
