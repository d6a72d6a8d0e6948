# quillbar_test(NAME SOURCES... [LIBRARIES ...]): a GoogleTest program whose cases are ctest cases.
#
# Every case runs in a process of its own, so that a crash or a leaked host object condemns one case.
include(GoogleTest)
find_package(GTest REQUIRED)

# Windows programs run under Wine, through a script. A machine that builds need not have Wine, so a program's cases are
# listed when ctest starts, not when it is linked.
if(CMAKE_CROSSCOMPILING AND WIN32)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${PROJECT_SOURCE_DIR}/scripts/run-${QUILLBAR_PLATFORM}")
  set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
endif()

function(quillbar_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE quillbar_headers quillbar_warnings ${arg_LIBRARIES} GTest::gtest_main GTest::gmock)
  # What is tested is optimized; the tests themselves spend their time in the compiler. Lines are enough for their traces.
  target_compile_options(${name} PRIVATE -O0)
  if(NOT WIN32)
    target_compile_options(${name} PRIVATE -g1)
  endif()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
