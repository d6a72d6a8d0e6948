# SPDX-License-Identifier: MIT
# quillbar_harfbuzz(): the target `harfbuzz_part`, HarfBuzz 10.2.0 compiled for the engine.
#
# It is one source, without what asks the system for anything: no locale, environment, threads, files or memory maps,
# nothing at the start. What it keeps for all fonts it frees when the library is unloaded. What the engine doesn't use
# is left out too: colours, metrics, names, mathematics and variations, of which a document shows the default instance.
include(SourceArchives)

quillbar_archive(harfbuzz
  FILE harfbuzz_10.2.0.orig.tar.xz
  SHA256 620e3468faec2ea8685d32c46a58469b850ef63040b3565cde05959825b48227
  POOL h/harfbuzz
  URLS https://github.com/harfbuzz/harfbuzz/releases/download/10.2.0/harfbuzz-10.2.0.tar.xz)

function(quillbar_harfbuzz)
  quillbar_fetch_archives(harfbuzz)
  string(SUBSTRING ${quillbar_archive_harfbuzz_SHA256} 0 16 name)
  set(source "${PROJECT_BINARY_DIR}/harfbuzz-source-${name}")
  if(NOT EXISTS "${source}")
    quillbar_unpack_archive(harfbuzz "${source}" FILES harfbuzz-10.2.0/src/*)
  endif()

  set(settings "${PROJECT_BINARY_DIR}/harfbuzz")
  file(CONFIGURE OUTPUT "${settings}/config-override.h" CONTENT [[
#undef HB_NO_ATEXIT
#undef HB_NO_CFF
#undef HB_NO_DRAW
]])

  add_library(harfbuzz_part OBJECT "${source}/src/harfbuzz.cc")
  target_include_directories(harfbuzz_part SYSTEM INTERFACE "${source}/src" PRIVATE "${settings}")
  target_compile_definitions(harfbuzz_part PRIVATE HAVE_ATEXIT HAVE_CONFIG_OVERRIDE_H HB_LEAN HB_NO_MT
    # Its memory comes from functions of the engine.
    HB_CUSTOM_MALLOC)
  target_compile_options(harfbuzz_part PRIVATE
    -w -fno-exceptions -fno-rtti -fno-threadsafe-statics -ffunction-sections -fdata-sections
    # Tables of how to unwind the stack would keep functions for Windows that nothing calls.
    -fno-asynchronous-unwind-tables
    # Nobody debugs it here, and its debug information takes as long as the code.
    $<$<NOT:$<BOOL:${QUILLBAR_SANITIZE}>>:-g0>)
  if(QUILLBAR_SANITIZE)
    # These checks take a quarter of its compilation, optimizing it two thirds; see host/CMakeLists.txt.
    target_compile_options(harfbuzz_part PRIVATE
      -fno-sanitize=null,alignment,vptr $<$<BOOL:${QUILLBAR_TESTS}>:-O0>)
  endif()
  set_target_properties(harfbuzz_part PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()
