# SPDX-License-Identifier: MIT
# Linux on 64-bit ARM.
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(QUILLBAR_PLATFORM linux-arm64)
set(quillbar_triplet aarch64-linux-gnu)
set(quillbar_emulator qemu-aarch64)
include("${CMAKE_CURRENT_LIST_DIR}/toolchain.cmake")
