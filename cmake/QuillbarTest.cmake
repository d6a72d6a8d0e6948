# SPDX-License-Identifier: MIT
# quillbar_test(NAME SOURCES... [LIBRARIES ...] [APART ...] [SEPARATE]): a GoogleTest program whose cases are ctest cases.
#
# Every case has a process of its own, so that a crash or a leaked host object fails one case only. But starting a
# process costs more than most cases do: QUILLBAR_TEST_SHARDS has a program's cases run in so many processes; each leaves
# a report in <build folder>/reports, from which scripts/testing.sh counts cases. A native build has both: plain ctest
# runs cases, ctest -C Shards -LE sharded those processes. SEPARATE is for programs whose cases need a fresh process.
# APART are sources that are compiled alone, see quillbar_compile_together.
include(GoogleTest)
find_package(GTest REQUIRED)
set(QUILLBAR_TEST_SHARDS 0 CACHE STRING "Processes that run the cases of a test program; 0: one for each case")

# Windows programs run under Wine, through a script; those for another processor under qemu (cmake/linux). A machine
# that builds need not have either, so a program's cases are listed when ctest starts, not when it is linked.
if(CMAKE_CROSSCOMPILING AND WIN32)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${PROJECT_SOURCE_DIR}/scripts/run-${QUILLBAR_PLATFORM}")
endif()
if(CMAKE_CROSSCOMPILING)
  set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
endif()

# How tests are compiled. What is tested is optimized; the tests themselves take most of their time in the compiler.
# Line numbers are enough for their stack traces.
function(quillbar_compile_test name)
  target_link_libraries(${name} PRIVATE quillbar_headers quillbar_warnings GTest::gmock)
  target_compile_options(${name} PRIVATE -O0 $<$<NOT:$<CONFIG:Release>>:-g1>)
  if(QUILLBAR_SANITIZE OR CMAKE_CROSSCOMPILING)
    target_compile_definitions(${name} PRIVATE QUILLBAR_SAMPLED)  # tests/support/sample.h
  endif()
  quillbar_compile_with_clang(${name})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT QUILLBAR_CLANG)
    # Most of them need less memory than this; the compiler then need not look for what it can give back.
    target_compile_options(${name} PRIVATE --param=ggc-min-heapsize=524288)
  endif()
  if(QUILLBAR_FUZZ)
    # No target is guided by what a test does.
    target_compile_options(${name} PRIVATE -fno-sanitize=fuzzer-no-link)
  endif()
  if(QUILLBAR_SANITIZE)
    # What is tested is checked for undefined behaviour; in the tests that would cost a fifth of their compilation.
    target_compile_options(${name} PRIVATE -fno-sanitize=undefined)
  endif()
endfunction()

# GoogleTest and what it includes take half of the time of compiling a test, so they are compiled once for all.
if(CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang)$")
  file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/test_headers.cpp" CONTENT "int main() {}\n")
  add_executable(quillbar_test_headers EXCLUDE_FROM_ALL "${PROJECT_BINARY_DIR}/test_headers.cpp")
  quillbar_compile_test(quillbar_test_headers)
  target_precompile_headers(quillbar_test_headers PRIVATE
    <gmock/gmock.h> <gtest/gtest.h> <filesystem> <functional> <map> <string> <vector>)
endif()

function(quillbar_compile_with_test_headers name)
  quillbar_compile_test(${name})
  if(TARGET quillbar_test_headers)
    target_precompile_headers(${name} REUSE_FROM quillbar_test_headers)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # So that ccache can cache them, see scripts/build.sh.
      target_compile_options(${name} PRIVATE -fpch-preprocess)
    endif()
  endif()
endfunction()

# quillbar_test_library(NAME SOURCES... [LIBRARIES ...] [APART ...]): what several test programs share. They see what it
# is linked with.
function(quillbar_test_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;APART")
  add_library(${name} STATIC ${arg_SOURCES})
  # They become part of programs, and share precompiled headers with those.
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  if(UNIX)
    target_compile_options(${name} PRIVATE -fPIE)
  endif()
  quillbar_compile_with_test_headers(${name})
  quillbar_compile_together(${name} APART ${arg_APART})
  target_link_libraries(${name} PUBLIC quillbar_headers ${arg_LIBRARIES})
endfunction()

function(quillbar_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "SEPARATE" "" "SOURCES;LIBRARIES;APART")
  add_executable(${name} ${arg_SOURCES})
  quillbar_compile_with_test_headers(${name})
  quillbar_compile_together(${name} APART ${arg_APART})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest_main)
  quillbar_link_with_lld(${name})
  if(QUILLBAR_LLD AND MINGW AND engine IN_LIST arg_LIBRARIES)
    # Some functions of the engine's that nothing calls refer to others that aren't there. The GNU linker, which links
    # what ships, drops them first; LLVM's has to be told that it doesn't matter.
    target_link_options(${name} PRIVATE LINKER:-Xlink=-force:unresolved)
  endif()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
  set(labels "")
  if(QUILLBAR_TEST_SHARDS AND NOT arg_SEPARATE)
    set(only_shards "")
    if(NOT CMAKE_CROSSCOMPILING AND NOT QUILLBAR_SANITIZE AND NOT QUILLBAR_COVERAGE)
      set(only_shards CONFIGURATIONS Shards)
      set(labels LABELS sharded)
    endif()
    math(EXPR last "${QUILLBAR_TEST_SHARDS} - 1")
    # From where ctest starts the program: to one for Windows a path that begins with "/" is not absolute.
    file(RELATIVE_PATH reports "${CMAKE_CURRENT_BINARY_DIR}" "${PROJECT_BINARY_DIR}/reports")
    foreach(shard RANGE ${last})
      add_test(NAME ${name}.${shard} ${only_shards} COMMAND ${name} --gtest_brief=1
        "--gtest_output=xml:${reports}/${name}.${shard}.xml")
      set_tests_properties(${name}.${shard} PROPERTIES TIMEOUT 900
        ENVIRONMENT "GTEST_TOTAL_SHARDS=${QUILLBAR_TEST_SHARDS};GTEST_SHARD_INDEX=${shard}")
    endforeach()
    if(NOT labels)
      return()
    endif()
  endif()
  # Without their values: those of a test with a name of its own would come after the name, some as bytes in memory.
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES
    PROPERTIES TIMEOUT 120 ${labels})
endfunction()
