# The libraries of the host, the companion and the tests for Windows, of which Debian has no MinGW packages. They are
# built at the first configuration, from Debian's source archives, into <build folder>/libraries, where find_package
# and pkg-config find them. Those that read files of other people's (images) carry Debian's security patches where the
# archive has them.
include(DebianSource)

set(packages libffi fmtlib libpng1.6 libjpeg-turbo tiff libwebp)
set(archives
  libffi_3.4.4.orig.tar.gz
  fmtlib_9.1.0+ds1.orig.tar.gz
  libpng1.6_1.6.39.orig.tar.gz
  libjpeg-turbo_2.1.5.orig.tar.gz
  tiff_4.5.0.orig.tar.bz2
  libwebp_1.2.4.orig.tar.gz)
set(sums
  d66c56ad259a82cf2a9dfc408b32bf5da52371500b84745f7fb8b645712df676
  84ce1c2d0be3a9863935137969dcec6970125caac032f82474640bfc81463583
  a00e9d2f2f664186e4202db9299397f851aea71b36a35e74910b8820e380d441
  254f3642b04e309fee775123133c6464181addc150499561020312ec61c1bf7c
  638f43d7dea33948d5dee7f39572fc0194d9cc3c74195de9dd26a4388a1f880a
  7bf5a8a28cc69bcfa8cb214f2c3095703c6b73ac5fba4d5480c205331d9494df)
if(QUILLBAR_TESTS)
  list(APPEND packages qpdf)
  list(APPEND archives qpdf_11.3.0.orig.tar.gz)
  list(APPEND sums 547cee67de77b5c4ef4917e57d2db9c848cfe3aa950361f68d36367a3a03936e)
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

# Built for the tests or not, by what, and from which recipe: another one is another build.
file(SHA256 "${CMAKE_CURRENT_LIST_DIR}/libraries/CMakeLists.txt" recipe)
set(made "${QUILLBAR_WINDOWS_PREFIX}/made-${recipe}-${QUILLBAR_TESTS}")
if(NOT EXISTS "${made}")
  quillbar_debian_sources(PACKAGES ${packages} ARCHIVES ${archives} SHA256S ${sums}
    REMEDY "Put the archives (Debian 12, source packages) into ${QUILLBAR_SOURCE_CACHE_DIR}.")
  foreach(package archive IN ZIP_LISTS packages archives)
    quillbar_unpack(${package} ${archive})
  endforeach()
  message(STATUS "Building libraries for Windows in ${QUILLBAR_WINDOWS_PREFIX}")
  set(folder "${PROJECT_BINARY_DIR}/library-build")
  set(log "${PROJECT_BINARY_DIR}/library-build.log")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/libraries" -B "${folder}" -G Ninja
      "-DQUILLBAR_TOOLCHAIN=${CMAKE_TOOLCHAIN_FILE}" "-DQUILLBAR_MINGW=${QUILLBAR_MINGW}"
      "-DQUILLBAR_WINDOWS_PREFIX=${QUILLBAR_WINDOWS_PREFIX}" "-DQUILLBAR_TESTS=${QUILLBAR_TESTS}"
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
    message(FATAL_ERROR "The libraries for Windows could not be built; see above.")
  endif()
  file(TOUCH "${made}")
endif()

set(utf8cpp_DIR "${QUILLBAR_WINDOWS_PREFIX}/lib/headers/cmake/utf8cpp" CACHE PATH "" FORCE)
