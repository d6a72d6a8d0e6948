# SPDX-License-Identifier: MIT
# quillbar_link_with_lld(TARGETS...): these programs for this Linux machine or for Windows, which don't ship, are linked
# by LLVM's linker where there is one, because it is faster. What ships is linked by the machine's own.
find_program(QUILLBAR_LLD ld.lld)
mark_as_advanced(QUILLBAR_LLD)

function(quillbar_link_with_lld)
  foreach(target IN LISTS ARGN)
    if(QUILLBAR_LLD AND CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT CMAKE_CROSSCOMPILING)
      target_link_options(${target} PRIVATE -fuse-ld=lld)
    elseif(QUILLBAR_LLD AND MINGW)
      target_link_options(${target} PRIVATE "SHELL:-wrapper \"${PROJECT_SOURCE_DIR}/cmake/windows/link-with-lld\"")
    endif()
  endforeach()
endfunction()
