# SPDX-License-Identifier: MIT
# Edits a copy of libharu's source at named anchors.
#
# libharu_edit(FILE <src/…|include/…> ANCHOR <text> REPLACEMENT <text>)
#
# ANCHOR is an identifier or a short expression that occurs exactly once in FILE; anything else ends the configure
# step, because the edit would then change code that nobody has looked at. Edits of one file add up. LIBHARU_EDITED_DIR
# names the folder that holds the copy.
function(libharu_edit)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "FILE;ANCHOR;REPLACEMENT" "")
  set(path "${LIBHARU_EDITED_DIR}/${arg_FILE}")
  if(NOT EXISTS "${path}")
    message(FATAL_ERROR "${CMAKE_CURRENT_LIST_FILE}: libharu has no file ${arg_FILE}.")
  endif()
  file(READ "${path}" text)
  string(FIND "${text}" "${arg_ANCHOR}" first)
  string(FIND "${text}" "${arg_ANCHOR}" last REVERSE)
  if(first EQUAL -1)
    message(FATAL_ERROR "${CMAKE_CURRENT_LIST_FILE}: the anchor \"${arg_ANCHOR}\" does not occur in libharu's ${arg_FILE}.")
  elseif(NOT first EQUAL last)
    message(FATAL_ERROR "${CMAKE_CURRENT_LIST_FILE}: the anchor \"${arg_ANCHOR}\" occurs more than once in libharu's ${arg_FILE}.")
  endif()
  string(REPLACE "${arg_ANCHOR}" "${arg_REPLACEMENT}" text "${text}")
  file(WRITE "${path}" "${text}")
endfunction()

# libharu_edited_source(SOURCE <folder> COPY <folder> CHANGES <file>...): makes COPY/src and COPY/include from SOURCE
# with the edits of CHANGES. A file keeps its time stamp as long as its edited text stays the same.
function(libharu_edited_source)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE;COPY" "CHANGES")
  set(LIBHARU_EDITED_DIR "${arg_COPY}.new")
  file(REMOVE_RECURSE "${LIBHARU_EDITED_DIR}")
  file(COPY "${arg_SOURCE}/src" "${arg_SOURCE}/include" DESTINATION "${LIBHARU_EDITED_DIR}"
    FILES_MATCHING PATTERN "*.c" PATTERN "*.h")
  foreach(change IN LISTS arg_CHANGES)
    include("${change}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${change}")
  endforeach()
  file(MAKE_DIRECTORY "${arg_COPY}/src" "${arg_COPY}/include")
  file(GLOB_RECURSE files RELATIVE "${LIBHARU_EDITED_DIR}" "${LIBHARU_EDITED_DIR}/*")
  foreach(name IN LISTS files)
    file(COPY_FILE "${LIBHARU_EDITED_DIR}/${name}" "${arg_COPY}/${name}" ONLY_IF_DIFFERENT)
  endforeach()
  file(REMOVE_RECURSE "${LIBHARU_EDITED_DIR}")
endfunction()
