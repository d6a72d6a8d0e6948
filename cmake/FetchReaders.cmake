# SPDX-License-Identifier: MIT
# cmake -P cmake/FetchReaders.cmake: puts readers of PDF files that are not Debian packages into .cache/readers, unless
# they are there: pdf.js, the reader of Firefox and of many applications, and PDFium, that of Chrome and Edge, as
# WebAssembly. Both run under Node.js; neither needs another package of npm's to read.
cmake_minimum_required(VERSION 3.25)
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH PROJECT_SOURCE_DIR)
list(APPEND CMAKE_MODULE_PATH "${CMAKE_CURRENT_LIST_DIR}")
include(SourceArchives)

quillbar_archive(pdfjs
  FILE pdfjs-dist-4.10.38.tgz
  SHA256 1011b38553532d7078c59f26b15a471f8dae00f101b60e2add9b8511737a1ce0
  NPM pdfjs-dist@4.10.38)
quillbar_archive(pdfium
  FILE hyzyla-pdfium-2.1.13.tgz
  SHA256 d758644310d11ce74f0b2039fe36782f09fcb95d36052fa1c5a9c5a80618341c
  NPM @hyzyla/pdfium@2.1.13)

set(folder "${PROJECT_SOURCE_DIR}/.cache/readers")
set(stamp "${folder}/unpacked")
file(MAKE_DIRECTORY "${folder}")
file(LOCK "${folder}/lock" TIMEOUT 600)
set(unpacked "")
if(EXISTS "${stamp}")
  file(READ "${stamp}" unpacked)
endif()
file(SHA256 "${CMAKE_CURRENT_LIST_FILE}" now)
if(unpacked STREQUAL now)
  return()
endif()
quillbar_fetch_archives(pdfjs pdfium)
quillbar_unpack_archive(pdfjs "${folder}/pdfjs"
  FILES package/package.json package/legacy/build/* package/cmaps/* package/standard_fonts/*)
quillbar_unpack_archive(pdfium "${folder}/pdfium")
file(WRITE "${stamp}" ${now})
