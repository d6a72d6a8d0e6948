# SPDX-License-Identifier: MIT
# How all of our own code is compiled. Libraries fetched at build time don't use these settings.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

find_program(QUILLBAR_CCACHE ccache)
if(QUILLBAR_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_C_COMPILER_LAUNCHER "${QUILLBAR_CCACHE}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${QUILLBAR_CCACHE}")
endif()

# No file contains a path of the machine that builds, so that two builds give the same bytes. For Windows the toolchain
# file says so, because the libraries that are built for it need it as well. Debuggers find the sources when they are
# started in the root of the tree.
if(NOT WIN32 AND NOT QUILLBAR_SANITIZE)
  add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}=." "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build")
endif()

if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CMAKE_SIZEOF_VOID_P EQUAL 4)
  # Files beyond 2 GiB, and those with numbers that 32 bits don't hold.
  add_compile_definitions(_FILE_OFFSET_BITS=64)
endif()

if(NOT WIN32 AND NOT APPLE)
  # Tables of addresses are filled when a file is loaded and can't be written afterwards. There is no build identifier:
  # it would be a checksum of the debug information, too, which isn't the same in every build folder, and would stay
  # when that is stripped.
  add_link_options(LINKER:-z,relro,-z,now LINKER:--build-id=none)
endif()

add_library(quillbar_warnings INTERFACE)
target_compile_options(quillbar_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 warns of overlapping copies in concatenated strings where there are none (its bug 105651).
  target_compile_options(quillbar_warnings INTERFACE -Wno-restrict)
endif()
# Each compiler release warns of more, so warnings are errors only in this project's presets, and with releases that
# its suite runs with.
if(QUILLBAR_WARNINGS_AS_ERRORS AND
   ((CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13) OR
    (CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 15)))
  target_compile_options(quillbar_warnings INTERFACE -Werror)
endif()

if(QUILLBAR_SANITIZE AND NOT QUILLBAR_SANITIZE STREQUAL "MEMORY")
  # Also for libharu: its bugs are ours once it is linked in.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# quillbar_harden(TARGETS...): a write beyond the end of an array on the stack, or of any block whose size the compiler
# knows, and an index beyond the end of a container, end the process before they can do more. For what ships; sanitizers
# see more. What isn't optimized has no sizes to check against. The libraries in cmake/libraries are built alike.
function(quillbar_harden)
  if(QUILLBAR_SANITIZE OR QUILLBAR_COVERAGE OR WIN32 OR APPLE)
    return()
  endif()
  foreach(target IN LISTS ARGN)
    target_compile_options(${target} PRIVATE
      -fstack-protector-strong
      $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>
      $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=3>)
    target_compile_definitions(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:_GLIBCXX_ASSERTIONS>)
  endforeach()
endfunction()

# quillbar_count_coverage(TARGETS...): what runs of their sources is counted, where a process ends or unloads them. All
# that is linked with them brings GCC's counters. Without optimization a line is a line.
function(quillbar_count_coverage)
  if(QUILLBAR_COVERAGE)
    foreach(target IN LISTS ARGN)
      target_compile_options(${target} PRIVATE --coverage -O0)
      target_link_options(${target} PUBLIC --coverage)
    endforeach()
  endif()
endfunction()

if(QUILLBAR_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "QUILLBAR_FUZZ needs clang's libFuzzer; configure with the preset \"sanitize\".")
  endif()
  # Every comparison and branch is counted, in libharu too. The C++ library checks its arguments, which
  # AddressSanitizer can't do inside an array. Where QUILLBAR_FUZZ is defined, a fuzz target has lower limits
  # (platform/fuzzed.h). A plugin calls what another one gives it through types of its own that are the same in binary
  # code alone.
  add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize=function)
  add_compile_definitions(_GLIBCXX_ASSERTIONS QUILLBAR_FUZZ)
  # The counters name every function, and would keep even those that nothing calls.
  add_link_options("LINKER:-z,start-stop-gc")
endif()

# Headers are included from the root of the tree.
add_library(quillbar_headers INTERFACE)
target_include_directories(quillbar_headers INTERFACE "${PROJECT_SOURCE_DIR}")

# quillbar_compile_together(TARGET [APART FILES...]): several files of TARGET are compiled as one where
# QUILLBAR_COMPILE_TOGETHER is on, which halves the processor's time for a whole build; a change of one file then compiles
# some others again. APART are files whose own names others have as well. The environment can say so for any preset.
option(QUILLBAR_COMPILE_TOGETHER "Compile several files as one: for builds in which nobody edits"
  "$ENV{QUILLBAR_COMPILE_TOGETHER}")
# What one file keeps to itself the others see, too, and GCC takes it for what a header shows. Builds of single files warn.
add_library(quillbar_warnings_together INTERFACE)
target_compile_options(quillbar_warnings_together INTERFACE
  -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
function(quillbar_compile_together target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "APART")
  if(QUILLBAR_COMPILE_TOGETHER)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
    set_source_files_properties(${arg_APART} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    # Options of what is linked last come last.
    target_link_libraries(${target} PRIVATE quillbar_warnings_together)
  endif()
endfunction()

# quillbar_precompile(TARGET HEADERS... [TOGETHER HEADERS...]): headers from outside that most files of TARGET include,
# compiled once for all of them. A file still includes what it uses. There are none with clang, so that its tools can read
# any file alone. TOGETHER are headers of our own, for builds in which nobody edits: a change of one compiles all files
# again.
function(quillbar_precompile target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "TOGETHER")
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_precompile_headers(${target} PRIVATE ${arg_UNPARSED_ARGUMENTS})
    if(QUILLBAR_COMPILE_TOGETHER)
      target_precompile_headers(${target} PRIVATE ${arg_TOGETHER})
    endif()
    # So that ccache can cache them, see scripts/build.sh.
    target_compile_options(${target} PRIVATE -fpch-preprocess)
  endif()
endfunction()
