# SPDX-License-Identifier: MIT
# cmake -P cmake/FetchSources.cmake: fetches the source archives that a native build takes into .cache/, unless they are
# there, so that it can be configured without a network.
cmake_minimum_required(VERSION 3.25)
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH PROJECT_SOURCE_DIR)
list(APPEND CMAKE_MODULE_PATH "${CMAKE_CURRENT_LIST_DIR}")
include(HttplibSource)
include(Libdeflate)
include(LibharuSource)
include(UnicodeLibraries)
include(libraries/Sources)
quillbar_fetch_archives(harfbuzz icu libdeflate libharu libunibreak ${quillbar_httplib_archives} ${quillbar_image_archives})
