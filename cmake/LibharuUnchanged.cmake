# SPDX-License-Identifier: MIT
# libharu_unchanged: libharu as its authors wrote it, with the system's zlib, without PNG. For comparison in benchmarks
# and tests; it is part of nothing that ships.
include_guard(GLOBAL)
include(LibharuSource)
find_package(ZLIB REQUIRED)

quillbar_libharu_source(source)
set(config "${PROJECT_BINARY_DIR}/libharu-unchanged")
file(CONFIGURE OUTPUT "${config}/hpdf_config.h" CONTENT [[
#define LIBHPDF_HAVE_ZLIB 1
#define LIBHPDF_HAVE_NOPNGLIB
#define HPDF_NOPNGLIB
]])
file(GLOB files "${source}/src/*.c")
list(FILTER files EXCLUDE REGEX "/(hpdf_doc_png|hpdf_image_png)\\.c$")
add_library(libharu_unchanged STATIC ${files})
target_include_directories(libharu_unchanged SYSTEM PUBLIC "${config}" "${source}/include")
# Its warnings are not ours to fix.
target_compile_options(libharu_unchanged PRIVATE -w $<$<BOOL:${QUILLBAR_SANITIZE}>:-fno-sanitize=all>)
target_link_libraries(libharu_unchanged PUBLIC ZLIB::ZLIB)
