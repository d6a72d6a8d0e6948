# quillbar_libharu_source(VARIABLE): an untouched copy of libharu 2.3.0's source, its folder stored in VARIABLE.
#
# The source is Debian's, taken from, in this order:
#   -DQUILLBAR_LIBHARU_ARCHIVE=   the .orig.tar.xz, a folder that holds it, or an unpacked source
#   .cache/ of this repository    where an earlier build of any preset left the archive
#   Debian's archive              fetched with apt-get, on any machine that has apt's package sources
#
# An archive is used only if its SHA-256 is the one below; a source that the user unpacked is taken as it is.
set(QUILLBAR_LIBHARU_ARCHIVE "" CACHE PATH
  "libharu 2.3.0: libharu_2.3.0+dfsg.orig.tar.xz, the folder that holds it, or its unpacked source; empty: fetched from Debian")

set(QUILLBAR_LIBHARU_ARCHIVE_NAME "libharu_2.3.0+dfsg.orig.tar.xz")
set(QUILLBAR_LIBHARU_SHA256 87e8269d4b1b333a6e44168b4209bc6442ae3a11557cc8dc386fed65400bd34e)
set(QUILLBAR_LIBHARU_CACHE_DIR "${PROJECT_SOURCE_DIR}/.cache" CACHE PATH "Where fetched source archives are kept")
set(QUILLBAR_LIBHARU_FETCH_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/LibharuFetch.cmake")

# Whether FILE is the pinned archive, stored in VARIABLE.
function(quillbar_is_libharu_archive variable file)
  set(${variable} FALSE PARENT_SCOPE)
  if(EXISTS "${file}" AND NOT IS_DIRECTORY "${file}")
    file(SHA256 "${file}" sum)
    if(sum STREQUAL QUILLBAR_LIBHARU_SHA256)
      set(${variable} TRUE PARENT_SCOPE)
    endif()
  endif()
endfunction()

# The pinned archive's path, from the cache or fetched into it. Two configure runs at once fetch it once.
function(quillbar_cached_libharu_archive variable)
  set(archive "${QUILLBAR_LIBHARU_CACHE_DIR}/${QUILLBAR_LIBHARU_ARCHIVE_NAME}")
  file(MAKE_DIRECTORY "${QUILLBAR_LIBHARU_CACHE_DIR}")
  file(LOCK "${QUILLBAR_LIBHARU_CACHE_DIR}/libharu.lock" GUARD FUNCTION TIMEOUT 600)
  quillbar_is_libharu_archive(usable "${archive}")
  if(NOT usable)
    message(STATUS "Fetching libharu 2.3.0's source from Debian's archive")
    foreach(attempt IN ITEMS 1 2)
      execute_process(
        COMMAND "${CMAKE_COMMAND}" "-DARCHIVE=${archive}" "-DSHA256=${QUILLBAR_LIBHARU_SHA256}"
                "-DWORK_DIR=${PROJECT_BINARY_DIR}/libharu-fetch" -P "${QUILLBAR_LIBHARU_FETCH_SCRIPT}"
        RESULT_VARIABLE result ERROR_VARIABLE problem)
      if(result EQUAL 0)
        break()
      endif()
    endforeach()
    quillbar_is_libharu_archive(usable "${archive}")
    if(NOT usable)
      message(NOTICE "${problem}")
      message(FATAL_ERROR
        "libharu 2.3.0's source could not be fetched, in two attempts; the reason stands above. "
        "Get ${QUILLBAR_LIBHARU_ARCHIVE_NAME} (Debian 12, source package libharu) and configure with "
        "-DQUILLBAR_LIBHARU_ARCHIVE=/path/to/it, or put it into ${QUILLBAR_LIBHARU_CACHE_DIR}.")
    endif()
  endif()
  set(${variable} "${archive}" PARENT_SCOPE)
endfunction()

function(quillbar_libharu_source variable)
  if(QUILLBAR_LIBHARU_ARCHIVE AND EXISTS "${QUILLBAR_LIBHARU_ARCHIVE}/src/hpdf_doc.c")
    set(${variable} "${QUILLBAR_LIBHARU_ARCHIVE}" PARENT_SCOPE)
    return()
  endif()

  if(QUILLBAR_LIBHARU_ARCHIVE)
    set(archive "${QUILLBAR_LIBHARU_ARCHIVE}")
    if(IS_DIRECTORY "${archive}")
      string(APPEND archive "/${QUILLBAR_LIBHARU_ARCHIVE_NAME}")
    endif()
    quillbar_is_libharu_archive(usable "${archive}")
    if(NOT usable)
      message(FATAL_ERROR "QUILLBAR_LIBHARU_ARCHIVE: ${archive} is not Debian's ${QUILLBAR_LIBHARU_ARCHIVE_NAME} "
        "(SHA-256 ${QUILLBAR_LIBHARU_SHA256}), and no source of libharu lies there.")
    endif()
  else()
    quillbar_cached_libharu_archive(archive)
  endif()

  set(unpacked "${PROJECT_BINARY_DIR}/libharu-source")
  set(stamp "${unpacked}/${QUILLBAR_LIBHARU_SHA256}")
  if(NOT EXISTS "${stamp}")
    file(REMOVE_RECURSE "${unpacked}")
    file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${unpacked}")
    file(TOUCH "${stamp}")
  endif()
  file(GLOB source_file "${unpacked}/*/src/hpdf_doc.c")
  cmake_path(GET source_file PARENT_PATH source_folder)
  cmake_path(GET source_folder PARENT_PATH source_folder)
  set(${variable} "${source_folder}" PARENT_SCOPE)
endfunction()
