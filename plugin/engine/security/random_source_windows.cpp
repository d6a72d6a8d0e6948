// SPDX-License-Identifier: MIT
// RtlGenRandom, which every Windows has had under this name since XP. It is asked for by name, so that the plugin
// imports no further library.
#include <windows.h>

#include "plugin/engine/security/secrets.h"

namespace quillbar::engine {

bool FillFromSystem(std::span<std::byte> bytes) {
  using GenerateRandom = BOOLEAN(WINAPI *)(void *, ULONG);
  const HMODULE library = LoadLibraryW(L"advapi32.dll");
  if (library == nullptr) return false;
  const auto generate =
      reinterpret_cast<GenerateRandom>(reinterpret_cast<void *>(GetProcAddress(library, "SystemFunction036")));
  const bool isFilled = generate != nullptr && generate(bytes.data(), static_cast<ULONG>(bytes.size())) != FALSE;
  FreeLibrary(library);
  return isFilled;
}

}  // namespace quillbar::engine
