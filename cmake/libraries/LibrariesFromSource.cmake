# SPDX-License-Identifier: MIT
# Libraries that are linked into what ships and that Debian hasn't in that form, built from their source archives at the
# first configuration:
#
#   for all      HarfBuzz for the engine, and those that read images, for the companion. Debian's static ones aren't
#                made to be part of a library that is loaded, and its libtiff brings code under the GPL.
#   for Windows  the host's and the tests' as well: Debian has no MinGW packages of them.
#
# They are built once for each recipe and compiler, into a folder below .cache/libraries that all builds for a platform
# share. <build folder>/libraries is a link to it, where find_package and pkg-config find them.
include(libraries/Sources)
set(QUILLBAR_LIBRARIES_FROM_SOURCE ON)

set(patched libpng libjpeg-turbo tiff libwebp)
set(sources ${patched} harfbuzz)
set(made_for plugins)
if(WIN32)
  list(APPEND sources libffi fmtlib sqlite3)
  list(APPEND patched sqlite3)
  set(made_for host)
  if(QUILLBAR_TESTS)
    list(APPEND sources qpdf)
    set(made_for tests)
  endif()
endif()

# The toolchain file for Windows says the same.
set(QUILLBAR_LIBRARY_PREFIX "${PROJECT_BINARY_DIR}/libraries")
if(NOT WIN32)
  list(PREPEND CMAKE_PREFIX_PATH "${QUILLBAR_LIBRARY_PREFIX}")
  set(ZLIB_USE_STATIC_LIBS ON)
endif()

# The recipe is all that decides what is built: another one is another folder.
file(GLOB_RECURSE files LIST_DIRECTORIES FALSE "${CMAKE_CURRENT_LIST_DIR}/recipe/*" "${CMAKE_CURRENT_LIST_DIR}/*.cmake")
if(CMAKE_TOOLCHAIN_FILE)
  cmake_path(GET CMAKE_TOOLCHAIN_FILE PARENT_PATH folder)
  file(GLOB toolchain "${folder}/*.cmake")
  list(APPEND files ${toolchain})
endif()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
set(recipe "")
if(CMAKE_HOST_SYSTEM_NAME STREQUAL "Linux")
  cmake_host_system_information(RESULT recipe QUERY DISTRIB_PRETTY_NAME)
endif()
string(APPEND recipe "${CMAKE_SYSTEM_NAME} ${CMAKE_SYSTEM_PROCESSOR} ${made_for}\n"
  "${CMAKE_OSX_ARCHITECTURES} ${CMAKE_OSX_DEPLOYMENT_TARGET}\n"
  "${CMAKE_C_COMPILER} ${CMAKE_C_COMPILER_VERSION} ${CMAKE_CXX_COMPILER} ${CMAKE_CXX_COMPILER_VERSION}\n")
foreach(file IN LISTS files)
  file(SHA256 "${file}" sum)
  string(APPEND recipe "${sum}\n")
endforeach()
string(SHA256 recipe "${recipe}")
string(SUBSTRING ${recipe} 0 16 recipe)
string(TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}-${made_for}-${recipe}" name)
file(MAKE_DIRECTORY "${QUILLBAR_SOURCE_CACHE_DIR}/libraries")
file(REAL_PATH "${QUILLBAR_SOURCE_CACHE_DIR}/libraries" shared)
string(APPEND shared "/${name}")

# The folder's path, which stands in what is made, is in the stamp: a copy of the cache elsewhere is built anew.
function(quillbar_make_libraries)
  file(LOCK "${shared}.lock" GUARD FUNCTION TIMEOUT 3600)
  if(EXISTS "${shared}/made")
    file(READ "${shared}/made" made)
    if(made STREQUAL shared)
      return()
    endif()
  endif()
  list(TRANSFORM patched APPEND _patches OUTPUT_VARIABLE patches)
  quillbar_fetch_archives(${sources} ${patches})
  set(work "${shared}.work")
  file(REMOVE_RECURSE "${work}" "${shared}")
  foreach(source IN LISTS sources)
    set(with "")
    if(source IN_LIST patched)
      set(with PATCHES ${source}_patches)
    endif()
    if(source STREQUAL "harfbuzz")
      set(with FILES ${quillbar_harfbuzz_files})
    endif()
    quillbar_unpack_archive(${source} "${work}/sources/${source}" ${with})
  endforeach()
  message(STATUS "Building libraries in ${shared}")
  set(log "${shared}.log")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/recipe" -B "${work}/build" -G Ninja
      "-DQUILLBAR_TOOLCHAIN=${CMAKE_TOOLCHAIN_FILE}" "-DQUILLBAR_MINGW=${QUILLBAR_MINGW}"
      "-DQUILLBAR_C_COMPILER=${CMAKE_C_COMPILER}" "-DQUILLBAR_CXX_COMPILER=${CMAKE_CXX_COMPILER}"
      "-DQUILLBAR_OSX_ARCHITECTURES=${CMAKE_OSX_ARCHITECTURES}"
      "-DQUILLBAR_OSX_DEPLOYMENT_TARGET=${CMAKE_OSX_DEPLOYMENT_TARGET}"
      "-DQUILLBAR_LIBRARY_PREFIX=${shared}" "-DQUILLBAR_TESTS=${QUILLBAR_TESTS}"
      "-DQUILLBAR_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}"
      "-DQUILLBAR_LIBRARY_SOURCES=${work}/sources"
    COMMAND_ECHO NONE OUTPUT_FILE "${log}" ERROR_FILE "${log}" RESULT_VARIABLE result)
  if(result EQUAL 0)
    execute_process(COMMAND "${CMAKE_COMMAND}" --build "${work}/build"
      OUTPUT_FILE "${log}" ERROR_FILE "${log}" RESULT_VARIABLE result)
  endif()
  if(NOT result EQUAL 0)
    file(READ "${log}" report)
    message(NOTICE "${report}")
    message(FATAL_ERROR "The libraries could not be built; see above.")
  endif()
  file(REMOVE_RECURSE "${work}")
  file(WRITE "${shared}/made" "${shared}")
endfunction()
quillbar_make_libraries()

set(linked "")
if(IS_SYMLINK "${QUILLBAR_LIBRARY_PREFIX}")
  file(READ_SYMLINK "${QUILLBAR_LIBRARY_PREFIX}" linked)
endif()
if(NOT linked STREQUAL shared)
  file(REMOVE_RECURSE "${QUILLBAR_LIBRARY_PREFIX}")
  file(CREATE_LINK "${shared}" "${QUILLBAR_LIBRARY_PREFIX}" SYMBOLIC)
  # What an earlier configuration found elsewhere is looked for again.
  get_cmake_property(found CACHE_VARIABLES)
  list(FILTER found INCLUDE REGEX
    "^(PNG|JPEG|TIFF|WEBP|SQLite3_|ZLIB_LIBRARY_|fmt_DIR|(pkgcfg_lib|__pkg_config_checked)_(WEBP|FFI|QPDF))")
  foreach(variable IN LISTS found)
    unset(${variable} CACHE)
  endforeach()
endif()
# pkg-config names the folder itself.
list(APPEND CMAKE_FIND_ROOT_PATH "${shared}")

if(WIN32)
  set(utf8cpp_DIR "${QUILLBAR_LIBRARY_PREFIX}/lib/headers/cmake/utf8cpp" CACHE PATH "" FORCE)
endif()
