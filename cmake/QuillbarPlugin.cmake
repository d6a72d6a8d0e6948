# SPDX-License-Identifier: MIT
include(windows/VersionResource)

# quillbar_plugin(NAME SOURCES... [LIBRARIES ...] [DESCRIPTION text]): a plugin as a host loads it.
#
# The library exports its entry point and nothing else, is put at the top of the build folder, and needs nothing but
# the C library at run time: the C++ library is linked in. It can be unloaded again, so it must not have unique
# symbols.
function(quillbar_plugin name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESCRIPTION" "SOURCES;LIBRARIES")
  add_library(${name} MODULE ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE quillbar_headers quillbar_warnings quillbar_binding ${arg_LIBRARIES})
  set_target_properties(${name} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY "${QUILLBAR_PRODUCT_DIR}")
  target_compile_options(${name} PRIVATE -fno-rtti -ffunction-sections -fdata-sections)
  quillbar_harden(${name})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
    target_compile_options(${name} PRIVATE -fno-gnu-unique)
  endif()
  if(APPLE)
    # The C++ library is the system's there.
    set_target_properties(${name} PROPERTIES SUFFIX .dylib)
    target_link_options(${name} PRIVATE -Wl,-exported_symbol,_REALPluginMain -Wl,-dead_strip)
  elseif(NOT WIN32)
    target_link_options(${name} PRIVATE -Wl,--exclude-libs,ALL)
  endif()
  if(NOT QUILLBAR_SANITIZE AND NOT APPLE)
    target_link_options(${name} PRIVATE -static-libstdc++ -static-libgcc -Wl,--gc-sections)
    if(WIN32)
      # Symbols are of no use without debug information.
      target_link_options(${name} PRIVATE -s)
    else()
      target_link_options(${name} PRIVATE -Wl,-z,defs)
    endif()
    target_sources(${name} PRIVATE "${PROJECT_SOURCE_DIR}/platform/terminate_handler.cpp")
    # For old systems; a build with sanitizers needs a C library as new as their own.
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
      target_sources(${name} PRIVATE
        "${PROJECT_SOURCE_DIR}/platform/exception_memory.cpp" "${PROJECT_SOURCE_DIR}/platform/old_glibc.cpp")
    endif()
  endif()
  if(arg_DESCRIPTION)
    quillbar_version_resource(${name} "${arg_DESCRIPTION}")
  endif()
endfunction()
