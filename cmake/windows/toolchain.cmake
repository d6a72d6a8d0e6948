# SPDX-License-Identifier: MIT
# Cross-building for Windows with Debian's MinGW-w64; included by x86.cmake and x86-64.cmake, which set
# QUILLBAR_PLATFORM to the preset's name, QUILLBAR_MINGW to the prefix of the tools and quillbar_processor_flags.
#
# The win32 thread model: no code of ours starts a thread, and the posix model's library would put a handler of
# exceptions into every process that loads the plugin.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${QUILLBAR_MINGW}-gcc-win32)
set(CMAKE_CXX_COMPILER ${QUILLBAR_MINGW}-g++-win32)
# For clang (cmake/CompileWithClang.cmake); GCC is made for its target.
set(CMAKE_CXX_COMPILER_TARGET ${QUILLBAR_MINGW})
set(CMAKE_RC_COMPILER ${QUILLBAR_MINGW}-windres)
# The GNU archiver can take 13 seconds for a library of code that isn't optimized, and as long again for its table of
# symbols; LLVM's is done at once.
find_program(QUILLBAR_LLVM_AR llvm-ar)
find_program(QUILLBAR_LLVM_RANLIB llvm-ranlib)
if(QUILLBAR_LLVM_AR AND QUILLBAR_LLVM_RANLIB)
  set(CMAKE_AR "${QUILLBAR_LLVM_AR}" CACHE FILEPATH "")
  set(CMAKE_RANLIB "${QUILLBAR_LLVM_RANLIB}" CACHE FILEPATH "")
else()
  set(CMAKE_AR ${QUILLBAR_MINGW}-gcc-ar-win32 CACHE FILEPATH "")
  set(CMAKE_RANLIB ${QUILLBAR_MINGW}-gcc-ranlib-win32 CACHE FILEPATH "")
endif()

# Libraries and headers are those of the cross compiler and those of cmake/libraries, never the machine's.
# CMake configures small projects of its own to try the compiler; they are told the folder as well.
if(NOT DEFINED QUILLBAR_LIBRARY_PREFIX)
  set(QUILLBAR_LIBRARY_PREFIX "${CMAKE_BINARY_DIR}/libraries")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUILLBAR_LIBRARY_PREFIX)
set(CMAKE_FIND_ROOT_PATH "${QUILLBAR_LIBRARY_PREFIX}" /usr/${QUILLBAR_MINGW})
list(APPEND CMAKE_PREFIX_PATH "${QUILLBAR_LIBRARY_PREFIX}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# The libraries are static, so what they need themselves is asked for as well.
set(ENV{PKG_CONFIG_LIBDIR} "${QUILLBAR_LIBRARY_PREFIX}/lib/pkgconfig")
set(ENV{PKG_CONFIG_PATH} "")
set(PKG_CONFIG_ARGN --static)
# zlib is linked in; beside its static library lies one for a DLL.
set(ZLIB_LIBRARY /usr/${QUILLBAR_MINGW}/lib/libz.a CACHE FILEPATH "")

# Windows 7 and later. The folders of the machine that builds stand in no file.
foreach(language IN ITEMS C CXX)
  set(CMAKE_${language}_FLAGS_INIT "${quillbar_processor_flags} -D_WIN32_WINNT=0x0601 \
-ffile-prefix-map=${CMAKE_SOURCE_DIR}=. -ffile-prefix-map=${CMAKE_BINARY_DIR}=build")
endforeach()
# What GCC and C++ need of their own goes into each file, so that nothing has to lie beside it. No file holds the time
# at which it was linked: two builds give the same bytes.
foreach(kind IN ITEMS EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
endforeach()
