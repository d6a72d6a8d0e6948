# SPDX-License-Identifier: MIT
# quillbar_version_resource(TARGET DESCRIPTION): on Windows, puts what the file's properties show into TARGET: product,
# version, copyright (as LICENSE states it). Elsewhere files have no such place.
set(QUILLBAR_VERSION_TEMPLATE "${CMAKE_CURRENT_LIST_DIR}/version.rc.in")

function(quillbar_version_resource target description)
  if(NOT WIN32)
    return()
  endif()
  file(STRINGS "${PROJECT_SOURCE_DIR}/LICENSE" copyright REGEX "^Copyright " LIMIT_COUNT 1)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    set(file_type VFT_APP)
    set(suffix .exe)
  else()
    set(file_type VFT_DLL)
    set(suffix .dll)
  endif()
  set(resource "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
  configure_file("${QUILLBAR_VERSION_TEMPLATE}" "${resource}" @ONLY)
  target_sources(${target} PRIVATE "${resource}")
endfunction()
