# SPDX-License-Identifier: MIT
# What else the host and the tests for Windows need. Neither ships, so most of it isn't optimized, which takes half the
# time or less.

# libffi has no CMake build.
ExternalProject_Add(libffi SOURCE_DIR "${QUILLBAR_LIBRARY_SOURCES}/libffi"
  CONFIGURE_COMMAND <SOURCE_DIR>/configure --host=${QUILLBAR_MINGW} "--prefix=${prefix}" --disable-shared --enable-static
    --disable-docs --disable-multi-os-directory "CC=${QUILLBAR_MINGW}-gcc-win32" "CXX=${QUILLBAR_MINGW}-g++-win32"
  BUILD_COMMAND make
  INSTALL_COMMAND make install)

library(fmt "${QUILLBAR_LIBRARY_SOURCES}/fmtlib"
  OPTIONS -DCMAKE_CXX_FLAGS_RELEASE=-DNDEBUG -DFMT_TEST=OFF -DFMT_DOC=OFF)

# SQLite's own build makes its one source file on this machine, for which it needs Tcl; that file is what is compiled.
# Extensions can't be loaded: they would be code from files that a script names.
ExternalProject_Add(sqlite SOURCE_DIR "${QUILLBAR_LIBRARY_SOURCES}/sqlite3"
  CONFIGURE_COMMAND <SOURCE_DIR>/configure --disable-readline --disable-tcl
  BUILD_COMMAND make sqlite3.c
  COMMAND ${QUILLBAR_MINGW}-gcc-win32 -DNDEBUG -DSQLITE_THREADSAFE=0 -DSQLITE_OMIT_LOAD_EXTENSION -DSQLITE_DQS=0
    -ffunction-sections -fdata-sections -ffile-prefix-map=<BINARY_DIR>=sqlite -c sqlite3.c -o sqlite3.o
  COMMAND ${QUILLBAR_MINGW}-gcc-ar-win32 rcsD libsqlite3.a sqlite3.o
  INSTALL_COMMAND "${CMAKE_COMMAND}" -E copy libsqlite3.a "${prefix}/lib/libsqlite3.a"
  COMMAND "${CMAKE_COMMAND}" -E copy sqlite3.h "${prefix}/include/sqlite3.h")

if(QUILLBAR_TESTS)
  # With a header of ours where GoogleTest wants what the platform lacks, for building it and for using it.
  set(ours "${CMAKE_CURRENT_LIST_DIR}/googletest")
  library(googletest /usr/src/googletest OPTIONS "-DCMAKE_CXX_FLAGS_RELEASE=-DNDEBUG -iquote ${ours}")
  ExternalProject_Add_Step(googletest ours DEPENDEES install
    COMMAND "${CMAKE_COMMAND}" -E copy_directory "${ours}" "${prefix}/include")
  # Debian's zlib for MinGW has no description for pkg-config, and qpdf's names it.
  file(CONFIGURE OUTPUT "${prefix}/lib/pkgconfig/zlib.pc" CONTENT
    "Name: zlib\nDescription: compression library\nVersion: 1.2.13\nLibs: /usr/${QUILLBAR_MINGW}/lib/libz.a\n")
  # qpdf asks for a library of Windows by a name whose case matters where files' names have one; without it every check
  # of its configuration fails.
  file(COPY_FILE "/usr/${QUILLBAR_MINGW}/lib/libadvapi32.a" "${prefix}/lib/libAdvapi32.a" ONLY_IF_DIFFERENT)
  library(qpdf "${QUILLBAR_LIBRARY_SOURCES}/qpdf" DEPENDS jpeg TARGET libqpdf
    OPTIONS -DCMAKE_CXX_FLAGS_RELEASE=-DNDEBUG -DBUILD_STATIC_LIBS=ON -DBUILD_DOC=OFF -DUSE_IMPLICIT_CRYPTO=OFF -DREQUIRE_CRYPTO_NATIVE=ON
      -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=12
      "-DCMAKE_PROJECT_qpdf_INCLUDE=${CMAKE_CURRENT_LIST_DIR}/qpdf_together.cmake"
      -DALLOW_CRYPTO_NATIVE=ON "-DCMAKE_REQUIRED_LINK_OPTIONS=-L${prefix}/lib")
endif()

# Libraries that are headers alone are those of the machine, copied so that nothing else of the machine's comes along.
# Their version files stay behind: some refuse another width of pointers than the machine's.
file(GLOB utf8cpp "/usr/lib/*/cmake/utf8cpp")
set(headers /usr/include/utf8cpp /usr/include/CLI /usr/include/nlohmann)
set(packages /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json)
file(COPY ${headers} DESTINATION "${prefix}/include")
file(COPY ${utf8cpp} DESTINATION "${prefix}/lib/headers/cmake" PATTERN "*Version.cmake" EXCLUDE)
file(COPY ${packages} DESTINATION "${prefix}/share/cmake" PATTERN "*Version.cmake" EXCLUDE)
