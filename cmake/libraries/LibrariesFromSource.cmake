# Libraries that are linked into what ships and that Debian hasn't in that form, built at the first configuration from
# Debian's source archives into <build folder>/libraries, where find_package and pkg-config find them:
#
#   for Linux    those that read images, for the companion. Debian's static ones aren't made to be part of a library
#                that is loaded, and its libtiff brings code under the GPL.
#   for Windows  these, and the host's and the tests': Debian has no MinGW packages of them.
#
# Those that read files of other people's (images) carry Debian's security patches where the archive has them.
include(DebianSource)

set(packages libpng1.6 libjpeg-turbo tiff libwebp)
set(archives
  libpng1.6_1.6.39.orig.tar.gz
  libjpeg-turbo_2.1.5.orig.tar.gz
  tiff_4.5.0.orig.tar.bz2
  libwebp_1.2.4.orig.tar.gz)
set(sums
  a00e9d2f2f664186e4202db9299397f851aea71b36a35e74910b8820e380d441
  254f3642b04e309fee775123133c6464181addc150499561020312ec61c1bf7c
  638f43d7dea33948d5dee7f39572fc0194d9cc3c74195de9dd26a4388a1f880a
  7bf5a8a28cc69bcfa8cb214f2c3095703c6b73ac5fba4d5480c205331d9494df)
set(made_for images)
if(WIN32)
  list(APPEND packages libffi fmtlib)
  list(APPEND archives libffi_3.4.4.orig.tar.gz fmtlib_9.1.0+ds1.orig.tar.gz)
  list(APPEND sums
    d66c56ad259a82cf2a9dfc408b32bf5da52371500b84745f7fb8b645712df676
    84ce1c2d0be3a9863935137969dcec6970125caac032f82474640bfc81463583)
  set(made_for host)
  if(QUILLBAR_TESTS)
    list(APPEND packages qpdf)
    list(APPEND archives qpdf_11.3.0.orig.tar.gz)
    list(APPEND sums 547cee67de77b5c4ef4917e57d2db9c848cfe3aa950361f68d36367a3a03936e)
    set(made_for tests)
  endif()
endif()

# The toolchain file for Windows says the same.
if(NOT WIN32)
  set(QUILLBAR_LIBRARY_PREFIX "${PROJECT_BINARY_DIR}/libraries")
  list(PREPEND CMAKE_PREFIX_PATH "${QUILLBAR_LIBRARY_PREFIX}")
  set(ZLIB_USE_STATIC_LIBS ON)
endif()

# quillbar_unpack(PACKAGE ARCHIVE): the source in <build folder>/library-sources/PACKAGE, patched where the cache has
# Debian's patches.
function(quillbar_unpack package archive)
  set(folder "${PROJECT_BINARY_DIR}/library-sources/${package}")
  if(EXISTS "${folder}")
    return()
  endif()
  set(work "${PROJECT_BINARY_DIR}/library-sources/unpacking")
  file(REMOVE_RECURSE "${work}")
  file(MAKE_DIRECTORY "${work}")
  file(GLOB description "${QUILLBAR_SOURCE_CACHE_DIR}/${package}_*.dsc")
  file(GLOB patches "${QUILLBAR_SOURCE_CACHE_DIR}/${package}_*.debian.tar.*")
  if(description AND patches)
    execute_process(COMMAND dpkg-source --no-check -q -x "${description}" "${work}/source"
      WORKING_DIRECTORY "${work}" RESULT_VARIABLE result ERROR_VARIABLE report)
    if(NOT result EQUAL 0)
      message(FATAL_ERROR "dpkg-source could not unpack ${description}:\n${report}")
    endif()
  else()
    file(ARCHIVE_EXTRACT INPUT "${QUILLBAR_SOURCE_CACHE_DIR}/${archive}" DESTINATION "${work}")
  endif()
  file(GLOB unpacked LIST_DIRECTORIES TRUE "${work}/*")
  list(FILTER unpacked EXCLUDE REGEX "\\.tar\\.")
  file(RENAME "${unpacked}" "${folder}")
  file(REMOVE_RECURSE "${work}")
endfunction()

# Built for what, and from which recipe: another one is another build.
set(recipe "")
file(GLOB_RECURSE files LIST_DIRECTORIES FALSE "${CMAKE_CURRENT_LIST_DIR}/recipe/*")
foreach(file IN LISTS files)
  file(SHA256 "${file}" sum)
  string(APPEND recipe ${sum})
endforeach()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
string(SHA256 recipe "${recipe}")
set(made "${QUILLBAR_LIBRARY_PREFIX}/made-${recipe}-${made_for}")
if(NOT EXISTS "${made}")
  quillbar_debian_sources(PACKAGES ${packages} ARCHIVES ${archives} SHA256S ${sums}
    REMEDY "Put the archives (Debian 12, source packages) into ${QUILLBAR_SOURCE_CACHE_DIR}.")
  foreach(package archive IN ZIP_LISTS packages archives)
    quillbar_unpack(${package} ${archive})
  endforeach()
  message(STATUS "Building libraries in ${QUILLBAR_LIBRARY_PREFIX}")
  set(folder "${PROJECT_BINARY_DIR}/library-build")
  set(log "${PROJECT_BINARY_DIR}/library-build.log")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/recipe" -B "${folder}" -G Ninja
      "-DQUILLBAR_TOOLCHAIN=${CMAKE_TOOLCHAIN_FILE}" "-DQUILLBAR_MINGW=${QUILLBAR_MINGW}"
      "-DQUILLBAR_C_COMPILER=${CMAKE_C_COMPILER}" "-DQUILLBAR_CXX_COMPILER=${CMAKE_CXX_COMPILER}"
      "-DQUILLBAR_LIBRARY_PREFIX=${QUILLBAR_LIBRARY_PREFIX}" "-DQUILLBAR_TESTS=${QUILLBAR_TESTS}"
      "-DQUILLBAR_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}"
      "-DQUILLBAR_LIBRARY_SOURCES=${PROJECT_BINARY_DIR}/library-sources"
    COMMAND_ECHO NONE OUTPUT_FILE "${log}" ERROR_FILE "${log}" RESULT_VARIABLE result)
  if(result EQUAL 0)
    execute_process(COMMAND "${CMAKE_COMMAND}" --build "${folder}"
      OUTPUT_FILE "${log}" ERROR_FILE "${log}" RESULT_VARIABLE result)
  endif()
  if(NOT result EQUAL 0)
    file(READ "${log}" report)
    message(NOTICE "${report}")
    message(FATAL_ERROR "The libraries could not be built; see above.")
  endif()
  # What an earlier configuration found elsewhere is looked for again.
  get_cmake_property(found CACHE_VARIABLES)
  list(FILTER found INCLUDE REGEX "^(PNG|JPEG|TIFF|WEBP|ZLIB_LIBRARY_|pkgcfg_lib_WEBP|__pkg_config_checked_WEBP)")
  foreach(variable IN LISTS found)
    unset(${variable} CACHE)
  endforeach()
  file(TOUCH "${made}")
endif()

if(WIN32)
  set(utf8cpp_DIR "${QUILLBAR_LIBRARY_PREFIX}/lib/headers/cmake/utf8cpp" CACHE PATH "" FORCE)
endif()
