# SPDX-License-Identifier: MIT
# Cross-building for Linux on another processor with Debian's compilers; included by arm64.cmake and arm.cmake, which set
# QUILLBAR_PLATFORM to the preset's name, quillbar_triplet to the prefix of the tools and quillbar_emulator.
#
# The host's and the tests' libraries are Debian's for that processor, unpacked by scripts/make-linux-root; those that
# ship inside a plugin are built from source, as for every platform (cmake/libraries).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${quillbar_triplet}-gcc)
set(CMAKE_CXX_COMPILER ${quillbar_triplet}-g++)
# For clang (cmake/CompileWithClang.cmake); GCC is made for its target.
set(CMAKE_CXX_COMPILER_TARGET ${quillbar_triplet})
set(CMAKE_STRIP ${quillbar_triplet}-strip CACHE FILEPATH "")

get_filename_component(quillbar_root "${CMAKE_CURRENT_LIST_DIR}/../../.cache/${QUILLBAR_PLATFORM}-root" ABSOLUTE)
get_filename_component(quillbar_root "${quillbar_root}" REALPATH)
set(QUILLBAR_LINUX_ROOT "${quillbar_root}" CACHE PATH "Debian's libraries for the processor that is built for")
if(NOT IS_DIRECTORY "${QUILLBAR_LINUX_ROOT}/usr/include")
  message(FATAL_ERROR "${QUILLBAR_LINUX_ROOT} has no libraries; run scripts/make-linux-root first.")
endif()

# Libraries and headers are those of the cross compiler, of that folder and of cmake/libraries, never the machine's.
# CMake configures small projects of its own to try the compiler; they are told the folders as well.
if(NOT DEFINED QUILLBAR_LIBRARY_PREFIX)
  set(QUILLBAR_LIBRARY_PREFIX "${CMAKE_BINARY_DIR}/libraries")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUILLBAR_LIBRARY_PREFIX QUILLBAR_LINUX_ROOT)
set(CMAKE_LIBRARY_ARCHITECTURE ${quillbar_triplet})
set(CMAKE_FIND_ROOT_PATH "${QUILLBAR_LIBRARY_PREFIX}" "${QUILLBAR_LINUX_ROOT}" /usr/${quillbar_triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR}
  "${QUILLBAR_LINUX_ROOT}/usr/lib/${quillbar_triplet}/pkgconfig:${QUILLBAR_LINUX_ROOT}/usr/share/pkgconfig")
set(ENV{PKG_CONFIG_PATH} "${QUILLBAR_LIBRARY_PREFIX}/lib/pkgconfig")

# Headers that differ from one processor to the next have a folder of their own, which Debian's native compilers know.
foreach(language IN ITEMS C CXX)
  set(CMAKE_${language}_STANDARD_INCLUDE_DIRECTORIES
    "${QUILLBAR_LINUX_ROOT}/usr/include/${quillbar_triplet}" "${QUILLBAR_LINUX_ROOT}/usr/include")
endforeach()
# What a shared library needs itself is there as well, and is found there by the programs that are tested.
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "-Wl,-rpath-link,${QUILLBAR_LINUX_ROOT}/usr/lib/${quillbar_triplet}:${QUILLBAR_LINUX_ROOT}/lib/${quillbar_triplet} \
-Wl,--disable-new-dtags")

# Programs run under qemu, which takes the C library from the same folder. What they start is the machine's own.
set(CMAKE_CROSSCOMPILING_EMULATOR ${quillbar_emulator} -L "${QUILLBAR_LINUX_ROOT}")
