# SPDX-License-Identifier: MIT
# cmake -DCASE=… -DCOMPILE=COMMAND;… -P check_case.cmake: see CMakeLists.txt.
file(STRINGS "${CASE}" lines LIMIT_COUNT 1)
if(NOT lines MATCHES "^// expect: (.+)$")
  message(FATAL_ERROR "${CASE} begins with no line \"// expect: MESSAGE\".")
endif()
set(expected "static assertion failed: ${CMAKE_MATCH_1}|error: static_assert failed.*${CMAKE_MATCH_1}")

set(compile "${CMAKE_COMMAND}" -E env LC_ALL=C ${COMPILE} -fsyntax-only)

execute_process(COMMAND ${compile} -DRIGHT_LINE "${CASE}" RESULT_VARIABLE result ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The right line doesn't compile:\n${output}")
endif()

execute_process(COMMAND ${compile} "${CASE}" RESULT_VARIABLE result ERROR_VARIABLE output)
if(result EQUAL 0)
  message(FATAL_ERROR "The wrong line compiles.")
endif()
if(NOT output MATCHES "${expected}")
  message(FATAL_ERROR "The compiler's message should be \"${expected}\":\n${output}")
endif()
