# SPDX-License-Identifier: MIT
# quillbar_libharu_source(VARIABLE): an untouched copy of libharu 2.3.0's source, its folder stored in VARIABLE.
#
# The archive is Debian's, without the parts that Debian may not distribute. -DQUILLBAR_LIBHARU_ARCHIVE= names an
# archive, a folder that contains it, or an unpacked source, which is used unchanged; otherwise it comes as
# SourceArchives.cmake says.
include(SourceArchives)

set(QUILLBAR_LIBHARU_ARCHIVE "" CACHE PATH
  "libharu 2.3.0: libharu_2.3.0+dfsg.orig.tar.xz, the folder that holds it, or its unpacked source; empty: fetched")

quillbar_archive(libharu
  FILE libharu_2.3.0+dfsg.orig.tar.xz
  SHA256 87e8269d4b1b333a6e44168b4209bc6442ae3a11557cc8dc386fed65400bd34e
  POOL libh/libharu)

function(quillbar_libharu_source variable)
  if(QUILLBAR_LIBHARU_ARCHIVE AND EXISTS "${QUILLBAR_LIBHARU_ARCHIVE}/src/hpdf_doc.c")
    set(${variable} "${QUILLBAR_LIBHARU_ARCHIVE}" PARENT_SCOPE)
    return()
  endif()

  if(QUILLBAR_LIBHARU_ARCHIVE)
    set(QUILLBAR_ARCHIVE_libharu "${QUILLBAR_LIBHARU_ARCHIVE}")
    if(IS_DIRECTORY "${QUILLBAR_LIBHARU_ARCHIVE}")
      string(APPEND QUILLBAR_ARCHIVE_libharu "/${quillbar_archive_libharu_FILE}")
    endif()
    quillbar_has_sha256(usable "${QUILLBAR_ARCHIVE_libharu}" ${quillbar_archive_libharu_SHA256})
    if(NOT usable)
      message(FATAL_ERROR "QUILLBAR_LIBHARU_ARCHIVE: ${QUILLBAR_ARCHIVE_libharu} is not ${quillbar_archive_libharu_FILE} "
        "(SHA-256 ${quillbar_archive_libharu_SHA256}), and no source of libharu lies there.")
    endif()
  else()
    quillbar_fetch_archives(libharu)
  endif()

  string(SUBSTRING ${quillbar_archive_libharu_SHA256} 0 16 name)
  set(folder "${PROJECT_BINARY_DIR}/libharu-source-${name}")
  if(NOT EXISTS "${folder}")
    quillbar_unpack_archive(libharu "${folder}")
  endif()
  set(${variable} "${folder}" PARENT_SCOPE)
endfunction()
