# SPDX-License-Identifier: MIT
# cmake -DCASE=… -DROOT=… -DWORK=… -P commands_test.cmake: one case, in the empty folder WORK.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/bin")

macro(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${WORK}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
endmacro()

function(expect what)
  if(NOT (${ARGN}))
    message(FATAL_ERROR "not so: ${what}\nexit status ${result}, output:\n${output}")
  endif()
endfunction()

# Puts programs of this machine, and no others, where the script looks for them: neither apt-get nor dpkg-query is there.
macro(install_packages_with programs packages)
  foreach(name IN ITEMS bash cat env mktemp sed sort uname ${programs})
    find_program(path_${name} ${name} REQUIRED)
    file(CREATE_LINK "${path_${name}}" "${WORK}/bin/${name}" SYMBOLIC)
  endforeach()
  run("${CMAKE_COMMAND}" -E env "PATH=${WORK}/bin" bash -c ". '${ROOT}/scripts/packages.sh' && install_packages ${packages}")
endmacro()

if(CASE STREQUAL "MissingPackagesAreNamedWhereThereIsNoApt")
  install_packages_with("cmake" "cmake ninja-build tzdata qpdf")
  expect("it fails" NOT result EQUAL 0)
  expect("it names ninja, as at least one other system calls it" output MATCHES "ninja +\\(.*: ninja")
  expect("it names qpdf" output MATCHES "qpdf +\\(.*: qpdf")
  expect("it doesn't name what is there" NOT output MATCHES "cmake")
elseif(CASE STREQUAL "InstalledProgramsAreUsedWhereThereIsNoApt")
  install_packages_with("cmake;ninja;qpdf" "cmake ninja-build tzdata qpdf")
  expect("it succeeds" result EQUAL 0)
  expect("it says nothing" NOT output)
elseif(CASE STREQUAL "RunWorksThroughALink")
  file(CREATE_LINK "${ROOT}/run" "${WORK}/quillbar" SYMBOLIC)
  run("${WORK}/quillbar" --help)
  expect("it succeeds" result EQUAL 0)
  expect("it shows its own help" output MATCHES "usage: ./run")
elseif(CASE STREQUAL "TestNamesItsLegs")
  run("${ROOT}/test" --help)
  expect("it succeeds" result EQUAL 0)
  foreach(leg IN ITEMS format sanitize tidy fuzz windows-x86-64 windows-x86 linux-arm64 linux-arm packages)
    expect("it names ${leg}" output MATCHES " ${leg} ")
  endforeach()
  run("${ROOT}/test" nosuchleg)
  expect("a leg that there is not is a wrong command line" result EQUAL 2)
elseif(CASE STREQUAL "CasesThatShareAProcessAreCounted")
  macro(count_cases expected)
    run(bash -c ". '${ROOT}/scripts/testing.sh' && count_cases ctest.xml reports")
    string(STRIP "${output}" output)
    expect("passed, failed, skipped: ${expected}" output STREQUAL "${expected}")
  endmacro()
  function(report file tests failures)
    file(WRITE "${WORK}/reports/${file}.xml" "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<testsuites tests=\"${tests}\" failures=\"${failures}\" disabled=\"0\" errors=\"0\" name=\"AllTests\">\n${ARGN}")
  endfunction()
  # Three tests of ctest: one process with a case that was skipped, one with two that failed, and no process of GoogleTest's.
  file(WRITE "${WORK}/ctest.xml" "<testsuite name=\"all\"\n\ttests=\"3\"\n\tfailures=\"1\"\n\tdisabled=\"0\"\n\tskipped=\"0\">\n")
  report(first 5 0 "    <testcase name=\"A\" status=\"run\" result=\"skipped\" time=\"0.\" classname=\"B\">\n")
  report(second 4 2)
  count_cases("7 2 1")
  # The second one fell over before it could report.
  file(REMOVE "${WORK}/reports/second.xml")
  count_cases("5 1 1")
  # Every case of the second one passed, and the process failed when it ended.
  report(second 4 0)
  count_cases("8 1 1")
elseif(CASE STREQUAL "WorkInTheBackgroundKeepsItsExitStatus")
  file(MAKE_DIRECTORY "${WORK}/build")
  # A shell within the shell that began the work doesn't know its process, as one that has forgotten it.
  file(WRITE "${WORK}/script" [[
. "$1/scripts/background.sh"
begin_work failing sh -c 'echo said; exit 3'
begin_work good true
begin_work killed sleep 10
is_under_way killed || echo "not under way"
kill "${background_process[killed]}"
await_work failing
echo $?
while is_under_way good || is_under_way killed; do sleep 0.01; done
for name in failing good killed never; do
  (await_work $name) 2>/dev/null
  echo $?
done
]])
  run(bash script "${ROOT}")
  expect("each has its own" output STREQUAL "3\n3\n0\n1\n0\n")
  file(READ "${WORK}/build/failing.log" output)
  expect("what it printed is in its log" output STREQUAL "said\n")
else()
  message(FATAL_ERROR "no case ${CASE}")
endif()
