# quillbar_test(NAME SOURCES... [LIBRARIES ...]): a GoogleTest program whose cases are ctest cases.
#
# Every case runs in a process of its own, so that a crash or a leaked host object condemns one case.
include(GoogleTest)
find_package(GTest REQUIRED)

function(quillbar_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE quillbar_headers quillbar_warnings ${arg_LIBRARIES} GTest::gtest_main GTest::gmock)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
