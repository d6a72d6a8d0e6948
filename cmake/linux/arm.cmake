# SPDX-License-Identifier: MIT
# Linux on 32-bit ARM with floating-point registers in calls (ARMv7 and later).
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(QUILLBAR_PLATFORM linux-arm)
# GCC notes wherever its release 7 changed how arguments are passed; nothing here is linked with what older ones made.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
set(quillbar_triplet arm-linux-gnueabihf)
set(quillbar_emulator qemu-arm)
include("${CMAKE_CURRENT_LIST_DIR}/toolchain.cmake")
