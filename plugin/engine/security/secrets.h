// SPDX-License-Identifier: MIT
/// What keeps a document's secrets: bytes that nobody can guess, and memory that forgets. Called by libharu.
#pragma once

#include <hpdf_types.h>

#include <cstddef>
#include <span>

namespace quillbar::engine {

/// Fills `bytes` from the system's source of random numbers. False when it has none.
bool FillFromSystem(std::span<std::byte> bytes);

}  // namespace quillbar::engine

extern "C" {

/// Fills `size` bytes from the system's source of random numbers. Where there is none they come from the clock and an
/// address: no two documents have the same, but they could be guessed.
void HPDF_FillWithRandom(void *bytes, HPDF_UINT size);

/// Sets `size` bytes to 0, also where the compiler sees that nothing reads them any more.
void HPDF_Wipe(void *bytes, HPDF_UINT size);
}
