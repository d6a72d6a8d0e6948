# SPDX-License-Identifier: MIT
# 64-bit Windows.
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(QUILLBAR_PLATFORM windows-x86-64)
set(QUILLBAR_MINGW x86_64-w64-mingw32)
set(quillbar_processor_flags "")
include("${CMAKE_CURRENT_LIST_DIR}/toolchain.cmake")
