# SPDX-License-Identifier: MIT
# The libraries that read image files, and write them for the tests. libjpeg-turbo would also build programs, and libwebp
# a library that only reads, from half of its files once more.

# libjpeg-turbo would keep the day of its build in the library.
library(jpeg "${QUILLBAR_LIBRARY_SOURCES}/libjpeg-turbo" TARGET jpeg-static
  FILES lib=libjpeg.a lib/pkgconfig=pkgscripts/libjpeg.pc include=jconfig.h include=<SOURCE_DIR>/jerror.h
    include=<SOURCE_DIR>/jmorecfg.h include=<SOURCE_DIR>/jpeglib.h
  OPTIONS -DBUILD=0 -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF -DREQUIRE_SIMD=ON)
library(png "${QUILLBAR_LIBRARY_SOURCES}/libpng" OPTIONS -DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF)
library(webp "${QUILLBAR_LIBRARY_SOURCES}/libwebp" TARGET webp
  FILES lib=libwebp.a lib/pkgconfig=src/libwebp.pc include/webp=<SOURCE_DIR>/src/webp/decode.h
    include/webp=<SOURCE_DIR>/src/webp/encode.h include/webp=<SOURCE_DIR>/src/webp/types.h
  OPTIONS -DWEBP_BUILD_ANIM_UTILS=OFF -DWEBP_BUILD_CWEBP=OFF -DWEBP_BUILD_DWEBP=OFF -DWEBP_BUILD_EXTRAS=OFF
    -DWEBP_BUILD_GIF2WEBP=OFF -DWEBP_BUILD_IMG2WEBP=OFF -DWEBP_BUILD_VWEBP=OFF -DWEBP_BUILD_WEBPINFO=OFF
    -DWEBP_BUILD_WEBPMUX=OFF -DWEBP_BUILD_LIBWEBPMUX=OFF -DWEBP_USE_THREAD=OFF)
library(tiff "${QUILLBAR_LIBRARY_SOURCES}/tiff" DEPENDS jpeg
  OPTIONS -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF -Dlzma=OFF -Dzstd=OFF -Dwebp=OFF
    -Djbig=OFF -Dlerc=OFF -Dlibdeflate=OFF -Dcxx=OFF)
