# SPDX-License-Identifier: MIT
# For MemorySanitizer, which must see every write to memory: libc++ and the libraries that read image files are
# compiled for it from their source archives at the first configuration (some minutes), into a folder below
# .cache/libraries for each recipe. What else the targets call is the C library, whose functions the sanitizer knows.
#
# The release of libc++ is one that clang 14 compiles, too; that of its own lacks the algorithms over ranges.
include(libraries/Sources)

quillbar_archive(llvm
  FILE llvm-toolchain-16_16.0.6.orig.tar.xz
  SHA256 5ab98480d3bc9f1896de1a1afafb46c318a9baa02bf21a4f6830c644d06c1cc0
  POOL l/llvm-toolchain-16)
quillbar_archive(zlib
  FILE zlib_1.2.13.dfsg.orig.tar.bz2
  SHA256 71feb7947e3c00ef125f83b79a4e529bde31171e5babe48b391f06758d1ab0a1
  POOL z/zlib)

# Origins say where an unset value was made. Arguments and results are checked at the call itself.
set(quillbar_memory_flags
  -fsanitize=memory -fsanitize-memory-track-origins -fsanitize-memory-param-retval -fno-omit-frame-pointer)

set(files "${CMAKE_CURRENT_LIST_DIR}/recipe/CMakeLists.txt" "${PROJECT_SOURCE_DIR}/cmake/libraries/Sources.cmake"
  "${PROJECT_SOURCE_DIR}/cmake/libraries/recipe/images.cmake")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
set(recipe "${CMAKE_CXX_COMPILER} ${CMAKE_CXX_COMPILER_VERSION} ${quillbar_memory_flags} \
${quillbar_archive_llvm_SHA256} ${quillbar_archive_zlib_SHA256}")
foreach(file IN LISTS files)
  file(SHA256 "${file}" sum)
  string(APPEND recipe " ${sum}")
endforeach()
string(SHA256 recipe "${recipe}")
string(SUBSTRING ${recipe} 0 16 recipe)
file(MAKE_DIRECTORY "${QUILLBAR_SOURCE_CACHE_DIR}/libraries")
file(REAL_PATH "${QUILLBAR_SOURCE_CACHE_DIR}/libraries" QUILLBAR_MEMORY_LIBRARIES)
string(APPEND QUILLBAR_MEMORY_LIBRARIES "/memory-${recipe}")

function(quillbar_make_instrumented_libraries)
  set(prefix "${QUILLBAR_MEMORY_LIBRARIES}")
  file(LOCK "${prefix}.lock" GUARD FUNCTION TIMEOUT 3600)
  if(EXISTS "${prefix}/made")
    return()
  endif()
  set(work "${prefix}.work")
  file(REMOVE_RECURSE "${work}" "${prefix}")
  quillbar_fetch_archives(llvm zlib ${quillbar_image_archives})
  foreach(source IN ITEMS libpng libjpeg-turbo tiff libwebp)
    quillbar_unpack_archive(${source} "${work}/sources/${source}" PATCHES ${source}_patches)
  endforeach()
  quillbar_unpack_archive(zlib "${work}/sources/zlib")
  set(folder llvm-toolchain-16_16.0.6)
  quillbar_unpack_archive(llvm "${work}/sources/llvm" FILES ${folder}/cmake/* ${folder}/libcxx/* ${folder}/libcxxabi/*
    ${folder}/llvm/cmake/* ${folder}/llvm/utils/* ${folder}/runtimes/*)
  message(STATUS "Building libraries in ${prefix}")
  set(log "${prefix}.log")
  list(JOIN quillbar_memory_flags " " flags)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/recipe" -B "${work}/build" -G Ninja
      "-DQUILLBAR_C_COMPILER=${CMAKE_C_COMPILER}" "-DQUILLBAR_CXX_COMPILER=${CMAKE_CXX_COMPILER}"
      "-DQUILLBAR_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}" "-DQUILLBAR_FLAGS=${flags}"
      "-DQUILLBAR_LIBRARY_PREFIX=${prefix}" "-DQUILLBAR_LIBRARY_SOURCES=${work}/sources"
    COMMAND_ECHO NONE OUTPUT_FILE "${log}" ERROR_FILE "${log}" RESULT_VARIABLE result)
  if(result EQUAL 0)
    execute_process(COMMAND "${CMAKE_COMMAND}" --build "${work}/build"
      OUTPUT_FILE "${log}" ERROR_FILE "${log}" RESULT_VARIABLE result)
  endif()
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "The libraries could not be built; see ${log}")
  endif()
  file(REMOVE_RECURSE "${work}")
  file(TOUCH "${prefix}/made")
endfunction()
quillbar_make_instrumented_libraries()

add_compile_options(${quillbar_memory_flags})
add_link_options(-fsanitize=memory)
# The headers take the place of the compiler's own.
add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-nostdinc++>
  "$<$<COMPILE_LANGUAGE:CXX>:SHELL:-isystem \"${QUILLBAR_MEMORY_LIBRARIES}/include/c++/v1\">")
add_link_options(-stdlib=libc++ "-L${QUILLBAR_MEMORY_LIBRARIES}/lib" "LINKER:-rpath,${QUILLBAR_MEMORY_LIBRARIES}/lib")
list(PREPEND CMAKE_PREFIX_PATH "${QUILLBAR_MEMORY_LIBRARIES}")
