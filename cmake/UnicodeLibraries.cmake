# SPDX-License-Identifier: MIT
# Object libraries for Unicode's algorithms, each with its headers:
#
#   icu_bidi      what ICU knows of characters for the bidirectional algorithm: their classes, brackets and mirrored
#                 forms
#   libunibreak   the line breaking algorithm
#
# Both hold the data of Unicode 15.0 as constant tables. Their names stay inside the file that they are linked into, and
# of their functions only those that are called: each has a section of its own, and no table of how to unwind the stack,
# which would refer to all of them.
include(SourceArchives)

quillbar_archive(icu
  FILE icu_72.1.orig.tar.gz
  SHA256 a2d2d38217092a7ed56635e34467f92f976b370e20182ad325edea6681a71d68
  POOL i/icu
  REVIEWED 72.1-3+deb12u1
  URLS https://github.com/unicode-org/icu/releases/download/release-72-1/icu4c-72_1-src.tgz)
quillbar_archive(libunibreak
  FILE libunibreak_6.1.orig.tar.gz
  SHA256 890674996168ef5ba143d80d49ab8b61594a4eb70198dcac76caf6e1bd264a41
  POOL libu/libunibreak
  URLS https://github.com/adah1972/libunibreak/archive/refs/tags/libunibreak_6_1.tar.gz)

# Whoever only fetches wants no targets.
if(CMAKE_SCRIPT_MODE_FILE)
  return()
endif()

quillbar_fetch_archives(icu libunibreak)
foreach(library IN ITEMS icu libunibreak)
  string(SUBSTRING ${quillbar_archive_${library}_SHA256} 0 16 name)
  set(${library}_source "${PROJECT_BINARY_DIR}/${library}-source-${name}")
endforeach()
if(NOT EXISTS "${icu_source}")
  quillbar_unpack_archive(icu "${icu_source}" FILES
    icu/LICENSE icu/source/common/ubidi_props.cpp icu/source/common/*.h icu/source/common/unicode/*.h)
endif()
if(NOT EXISTS "${libunibreak_source}")
  quillbar_unpack_archive(libunibreak "${libunibreak_source}")
endif()

add_library(icu_bidi OBJECT "${icu_source}/source/common/ubidi_props.cpp")
target_include_directories(icu_bidi SYSTEM PUBLIC "${icu_source}/source/common")
target_compile_definitions(icu_bidi
  PUBLIC U_STATIC_IMPLEMENTATION U_SHOW_CPLUSPLUS_API=0
  PRIVATE U_COMMON_IMPLEMENTATION U_SHOW_CPLUSPLUS_API=1)
target_compile_options(icu_bidi PRIVATE
  -w -fno-exceptions -fno-rtti -ffunction-sections -fdata-sections -fno-asynchronous-unwind-tables)

add_library(libunibreak OBJECT
  "${libunibreak_source}/src/linebreak.c"
  "${libunibreak_source}/src/linebreakdata.c"
  "${libunibreak_source}/src/linebreakdef.c"
  "${libunibreak_source}/src/eastasianwidthdef.c"
  "${libunibreak_source}/src/unibreakdef.c")
target_include_directories(libunibreak SYSTEM PUBLIC "${libunibreak_source}/src")
# Its assertions would end an application.
target_compile_definitions(libunibreak PRIVATE NDEBUG)
target_compile_options(libunibreak PRIVATE -w -ffunction-sections -fdata-sections -fno-asynchronous-unwind-tables)
