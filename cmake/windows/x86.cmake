# SPDX-License-Identifier: MIT
# 32-bit Windows.
set(CMAKE_SYSTEM_PROCESSOR x86)
set(QUILLBAR_PLATFORM windows-x86)
set(QUILLBAR_MINGW i686-w64-mingw32)
# Single-precision arithmetic is exact only in SSE registers; the x87 ones keep more digits than the type has. Callers
# on 32-bit Windows align the stack to 4 bytes, SSE code wants 16: every function that needs it aligns its own.
set(quillbar_processor_flags "-march=pentium4 -msse2 -mfpmath=sse -mstackrealign")
include("${CMAKE_CURRENT_LIST_DIR}/toolchain.cmake")
