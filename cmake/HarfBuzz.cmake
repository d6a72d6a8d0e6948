# SPDX-License-Identifier: MIT
# quillbar_harfbuzz(): the object library `harfbuzz_part`, HarfBuzz 10.2.0 compiled for the engine as
# cmake/libraries/recipe/harfbuzz says. It takes most of a minute, so builds that ship take it from the libraries that
# are built once; a build with sanitizers compiles it for itself.
include(libraries/Sources)

function(quillbar_harfbuzz)
  if(QUILLBAR_LIBRARIES_FROM_SOURCE)
    add_library(harfbuzz_part OBJECT IMPORTED GLOBAL)
    set_target_properties(harfbuzz_part PROPERTIES
      IMPORTED_OBJECTS "${QUILLBAR_LIBRARY_PREFIX}/lib/harfbuzz_part.o"
      INTERFACE_INCLUDE_DIRECTORIES "${QUILLBAR_LIBRARY_PREFIX}/include/harfbuzz")
    return()
  endif()
  quillbar_fetch_archives(harfbuzz)
  string(SUBSTRING ${quillbar_archive_harfbuzz_SHA256} 0 16 name)
  set(QUILLBAR_HARFBUZZ_SOURCE "${PROJECT_BINARY_DIR}/harfbuzz-source-${name}")
  if(NOT EXISTS "${QUILLBAR_HARFBUZZ_SOURCE}")
    quillbar_unpack_archive(harfbuzz "${QUILLBAR_HARFBUZZ_SOURCE}" FILES ${quillbar_harfbuzz_files})
  endif()
  add_subdirectory("${PROJECT_SOURCE_DIR}/cmake/libraries/recipe/harfbuzz" "${PROJECT_BINARY_DIR}/harfbuzz")
  if(QUILLBAR_SANITIZE)
    # These checks take a quarter of its compilation, optimizing it two thirds; see host/CMakeLists.txt.
    target_compile_options(harfbuzz_part PRIVATE
      -fno-sanitize=null,alignment,vptr $<$<BOOL:${QUILLBAR_TESTS}>:-O0>)
  endif()
  quillbar_harden(harfbuzz_part)
endfunction()
