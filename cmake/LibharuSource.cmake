# quillbar_libharu_source(VARIABLE): an untouched copy of libharu 2.3.0's source, its folder stored in VARIABLE.
#
# The source is Debian's, taken from, in this order:
#   -DQUILLBAR_LIBHARU_ARCHIVE=   the .orig.tar.xz, a folder that holds it, or an unpacked source
#   .cache/ of this repository    where an earlier build of any preset left the archive
#   Debian's archive              fetched with apt-get, on any machine that has apt's package sources
#
# An archive is used only if its SHA-256 is the one below; a source that the user unpacked is taken as it is.
include(DebianSource)

set(QUILLBAR_LIBHARU_ARCHIVE "" CACHE PATH
  "libharu 2.3.0: libharu_2.3.0+dfsg.orig.tar.xz, the folder that holds it, or its unpacked source; empty: fetched from Debian")

set(QUILLBAR_LIBHARU_ARCHIVE_NAME "libharu_2.3.0+dfsg.orig.tar.xz")
set(QUILLBAR_LIBHARU_SHA256 87e8269d4b1b333a6e44168b4209bc6442ae3a11557cc8dc386fed65400bd34e)

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
    quillbar_has_sha256(usable "${archive}" ${QUILLBAR_LIBHARU_SHA256})
    if(NOT usable)
      message(FATAL_ERROR "QUILLBAR_LIBHARU_ARCHIVE: ${archive} is not Debian's ${QUILLBAR_LIBHARU_ARCHIVE_NAME} "
        "(SHA-256 ${QUILLBAR_LIBHARU_SHA256}), and no source of libharu lies there.")
    endif()
  else()
    quillbar_debian_sources(TAR_ONLY
      PACKAGES libharu ARCHIVES "${QUILLBAR_LIBHARU_ARCHIVE_NAME}" SHA256S ${QUILLBAR_LIBHARU_SHA256}
      REMEDY "Get it (Debian 12, source package libharu) and configure with -DQUILLBAR_LIBHARU_ARCHIVE=/path/to/it, or put it into ${QUILLBAR_SOURCE_CACHE_DIR}.")
    set(archive "${QUILLBAR_SOURCE_CACHE_DIR}/${QUILLBAR_LIBHARU_ARCHIVE_NAME}")
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
