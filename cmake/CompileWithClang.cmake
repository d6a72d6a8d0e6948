# SPDX-License-Identifier: MIT
# quillbar_compile_with_clang(TARGETS...): where the compiler is GCC and clang is there too, the C++ files of TARGETS are
# compiled by clang. For what doesn't ship: with little optimization clang takes a third to two thirds of GCC's time, and
# what it makes is linked with what GCC makes. Both must bring the same sanitizers and counters, so in those builds the
# compiler compiles all. CMake knows one compiler for each language; the other takes its place when it is called, by a
# script of the shell's. For 32-bit Windows they disagree whether an empty object that is passed takes room on the stack.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT QUILLBAR_SANITIZE AND NOT QUILLBAR_COVERAGE AND
   NOT CMAKE_HOST_WIN32 AND NOT (WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4))
  find_program(QUILLBAR_CLANG clang++)
  mark_as_advanced(QUILLBAR_CLANG)
endif()

set(quillbar_clang_options "")
if(CMAKE_CROSSCOMPILING)
  set(quillbar_clang_options --target=${CMAKE_CXX_COMPILER_TARGET})
endif()
if(MINGW)
  # What GCC does there by itself: it keeps thread-local variables in this way, and compares types in the C++ library,
  # whose headers Debian has where clang doesn't look.
  list(APPEND quillbar_clang_options -femulated-tls -D__GXX_TYPEINFO_EQUALITY_INLINE=0)
  foreach(folder IN LISTS CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES)
    if(folder MATCHES "/c\\+\\+")
      list(APPEND quillbar_clang_options -isystem "${folder}")
    endif()
  endforeach()
endif()

# clang takes the C++ library of the newest GCC whose folder it finds, which can be another one, or lack the headers.
if(QUILLBAR_CLANG)
  file(WRITE "${PROJECT_BINARY_DIR}/clang_probe.cpp" "#include <string>\nstd::string text;\n")
  execute_process(
    COMMAND "${QUILLBAR_CLANG}" ${quillbar_clang_options} -v -std=c++20 -fsyntax-only
      "${PROJECT_BINARY_DIR}/clang_probe.cpp"
    RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE said)
  string(REGEX MATCH "^[0-9]+" version "${CMAKE_CXX_COMPILER_VERSION}")
  string(REGEX MATCH "Selected GCC installation: [^\n]*/([0-9]+)[^/\n]*\n" selected "${said}")
  if(NOT result EQUAL 0 OR (selected AND NOT CMAKE_MATCH_1 STREQUAL version))
    message(STATUS "${QUILLBAR_CLANG} doesn't find the C++ library of GCC ${version}; GCC compiles the tests.")
    set(QUILLBAR_CLANG "")
  endif()
endif()

# Options for GCC alone are meant for GCC, whose -Wconversion leaves signs out.
add_library(quillbar_clang_warnings INTERFACE)
target_link_libraries(quillbar_clang_warnings INTERFACE quillbar_warnings)
target_compile_options(quillbar_clang_warnings INTERFACE
  -Qunused-arguments -Wno-unknown-warning-option -Wno-sign-conversion)

function(quillbar_compile_with_clang)
  set(launcher "${PROJECT_SOURCE_DIR}/cmake/compile-with-clang"
    ${CMAKE_CXX_COMPILER_LAUNCHER} ${QUILLBAR_CLANG} ${quillbar_clang_options} --)
  foreach(target IN LISTS ARGN)
    if(QUILLBAR_CLANG)
      set_target_properties(${target} PROPERTIES CXX_COMPILER_LAUNCHER "${launcher}")
    endif()
    if(QUILLBAR_CLANG OR CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
      target_link_libraries(${target} PRIVATE quillbar_clang_warnings)
    endif()
  endforeach()
endfunction()
