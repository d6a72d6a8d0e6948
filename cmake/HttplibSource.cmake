# SPDX-License-Identifier: MIT
# cpp-httplib, the server of the page of watched scripts, from its source archive with Debian's patch: its header alone
# needs no other library, while Debian's shared one brings OpenSSL and Brotli into every start of the program.
include(SourceArchives)

quillbar_archive(httplib
  FILE cpp-httplib_0.11.4+ds.orig.tar.xz
  SHA256 8b1a5df569003b6a4f24c68489bbda5c64aec94697bdc9ebba5d79408b2ae7eb
  POOL c/cpp-httplib)
quillbar_archive(httplib_patches
  FILE cpp-httplib_0.11.4+ds-1+deb12u1.debian.tar.xz
  SHA256 a0adf8a38610806f6d94ba69839438635e5e6580775e28ff31d6a081e34f1484
  POOL c/cpp-httplib)
set(quillbar_httplib_archives httplib httplib_patches)

# quillbar_httplib(TARGET): the target may include <httplib.h>.
function(quillbar_httplib target)
  set(folder "${PROJECT_BINARY_DIR}/httplib")
  set(stamp "${quillbar_archive_httplib_SHA256} ${quillbar_archive_httplib_patches_SHA256}")
  set(made "")
  if(EXISTS "${folder}/made")
    file(READ "${folder}/made" made)
  endif()
  if(NOT made STREQUAL stamp)
    quillbar_fetch_archives(${quillbar_httplib_archives})
    quillbar_unpack_archive(httplib "${folder}" PATCHES httplib_patches)
    file(WRITE "${folder}/made" "${stamp}")
  endif()
  find_package(Threads REQUIRED)
  target_include_directories(${target} SYSTEM PRIVATE "${folder}")
  target_link_libraries(${target} PRIVATE Threads::Threads)
endfunction()
