# SPDX-License-Identifier: MIT
# Edits a copy of a small source as the build edits libharu's.
#
#   cmake -DANCHOR=TEXT -DROOT=REPOSITORY -DWORK_DIR=FOLDER -P edit.cmake
#
# Prints the edited text.
cmake_minimum_required(VERSION 3.25)
list(APPEND CMAKE_MODULE_PATH "${ROOT}/cmake")
include(LibharuEdit)

file(REMOVE_RECURSE "${WORK_DIR}")
file(WRITE "${WORK_DIR}/theirs/src/a.c" "int first[2];\nint second = twice (1);\nint third = twice (2); /* \\n */\n")
file(WRITE "${WORK_DIR}/theirs/include/a.h" "")
file(WRITE "${WORK_DIR}/change.cmake" "libharu_edit(FILE src/a.c ANCHOR \"${ANCHOR}\" REPLACEMENT \"once\")\n")
libharu_edited_source(SOURCE "${WORK_DIR}/theirs" COPY "${WORK_DIR}/ours" CHANGES "${WORK_DIR}/change.cmake")
file(READ "${WORK_DIR}/ours/src/a.c" edited)
message("${edited}")
file(READ "${WORK_DIR}/theirs/src/a.c" original)
if(NOT original MATCHES "second")
  message(FATAL_ERROR "The original was edited.")
endif()
