# SPDX-License-Identifier: MIT
# quillbar_libdeflate(): libdeflate 1.23 as the folder that QUILLBAR_LIBDEFLATE_SOURCE names, and the target
# `libdeflate_part`, what our code needs of it beside deflate_compress.c.
#
# libdeflate compresses a whole buffer into a whole deflate stream, and its users keep a compressor for all of them. Here
# deflate_compress.c is edited at three anchors:
#   - streams of any length need parts that another part follows: where `is_followed` is set, no block is marked as the
#     last one
#   - every stream has a compressor of its own, so the codes that are the same in all come from InitStaticCodes, which
#     whoever includes the file defines
include(SourceArchives)

quillbar_archive(libdeflate
  FILE libdeflate_1.23.orig.tar.gz
  SHA256 1ab18349b9fb0ce8a0ca4116bded725be7dcbfa709e19f6f983d99df1fb8b25f
  POOL libd/libdeflate
  URLS https://github.com/ebiggers/libdeflate/archive/refs/tags/v1.23.tar.gz)

function(quillbar_libdeflate)
  quillbar_fetch_archives(libdeflate)
  # The edits are part of the name: other ones are another folder.
  file(SHA256 "${CMAKE_CURRENT_FUNCTION_LIST_FILE}" edits)
  string(SHA256 name "${quillbar_archive_libdeflate_SHA256} ${edits}")
  string(SUBSTRING ${name} 0 16 name)
  set(source "${PROJECT_BINARY_DIR}/libdeflate-source-${name}")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${CMAKE_CURRENT_FUNCTION_LIST_FILE}")
  if(NOT EXISTS "${source}")
    quillbar_unpack_archive(libdeflate "${source}.new" FILES libdeflate-1.23/common_defs.h libdeflate-1.23/libdeflate.h
      libdeflate-1.23/lib/*)
    file(READ "${source}.new/lib/deflate_compress.c" text)
    set(anchors "struct libdeflate_compressor {\n" "\t\t    bool is_final_block)\n{\n\t/*\n"
      "\tdeflate_init_static_codes(c)")
    set(replacements "struct libdeflate_compressor {\n\tbool is_followed@\n"
      "\t\t    bool is_final_block)\n{\n\tis_final_block = is_final_block && !c->is_followed@\n\t/*\n"
      "\tInitStaticCodes(c)")
    foreach(anchor replacement IN ZIP_LISTS anchors replacements)
      string(FIND "${text}" "${anchor}" first)
      string(FIND "${text}" "${anchor}" last REVERSE)
      if(first EQUAL -1 OR NOT first EQUAL last)
        message(FATAL_ERROR "${CMAKE_CURRENT_FUNCTION_LIST_FILE}: libdeflate's deflate_compress.c must have exactly one\n${anchor}")
      endif()
      # A semicolon would end an element of the list.
      string(REPLACE "@" ";" replacement "${replacement}")
      string(REPLACE "${anchor}" "${replacement}" text "${text}")
    endforeach()
    file(WRITE "${source}.new/lib/deflate_compress.c" "${text}")
    file(RENAME "${source}.new" "${source}")
  endif()

  # Static, so that the linker keeps its names inside the file that it becomes part of.
  add_library(libdeflate_part STATIC
    "${source}/lib/adler32.c"
    "${source}/lib/arm/cpu_features.c"
    "${source}/lib/utils.c"
    "${source}/lib/x86/cpu_features.c")
  target_compile_options(libdeflate_part PRIVATE -w -ffunction-sections -fdata-sections)
  if(CMAKE_C_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_C_COMPILER_VERSION VERSION_LESS 16)
    # That compiler has lost the name of a feature that libdeflate asks for, unless it is told that the feature is there.
    target_compile_definitions(libdeflate_part PRIVATE __EVEX512__)
  endif()
  set(QUILLBAR_LIBDEFLATE_SOURCE "${source}" PARENT_SCOPE)
endfunction()
