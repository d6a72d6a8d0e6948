# SPDX-License-Identifier: MIT
# The source archives of the libraries in recipe/, and Debian's patches of those that read files of other people's.
# Debian's archive drops a revision of patches some time after the next one has come.
include(SourceArchives)

# For the engine.
quillbar_archive(harfbuzz
  FILE harfbuzz_10.2.0.orig.tar.xz
  SHA256 620e3468faec2ea8685d32c46a58469b850ef63040b3565cde05959825b48227
  POOL h/harfbuzz
  URLS https://github.com/harfbuzz/harfbuzz/releases/download/10.2.0/harfbuzz-10.2.0.tar.xz)
set(quillbar_harfbuzz_files harfbuzz-10.2.0/src/*)

# For images.
quillbar_archive(libpng
  FILE libpng1.6_1.6.39.orig.tar.gz
  SHA256 a00e9d2f2f664186e4202db9299397f851aea71b36a35e74910b8820e380d441
  POOL libp/libpng1.6
  URLS https://github.com/pnggroup/libpng/archive/refs/tags/v1.6.39.tar.gz)
quillbar_archive(libpng_patches
  FILE libpng1.6_1.6.39-2+deb12u6.debian.tar.xz
  SHA256 bfb66eb5c000c6ce8dc4d6a146c2a81627143b8869f1e9ac9c1e5a286af3dc36
  POOL libp/libpng1.6
  ELSE libpng_older_patches)
# Mirrors have it a while before they have the next.
quillbar_archive(libpng_older_patches
  FILE libpng1.6_1.6.39-2+deb12u5.debian.tar.xz
  SHA256 ab14906eda9fddf14cbb1e589b9ba7439c22e233dc3c5e3cf9356c9625565a82
  POOL libp/libpng1.6)

quillbar_archive(libjpeg-turbo
  FILE libjpeg-turbo_2.1.5.orig.tar.gz
  SHA256 254f3642b04e309fee775123133c6464181addc150499561020312ec61c1bf7c
  POOL libj/libjpeg-turbo
  URLS https://github.com/libjpeg-turbo/libjpeg-turbo/archive/refs/tags/2.1.5.tar.gz)
quillbar_archive(libjpeg-turbo_patches
  FILE libjpeg-turbo_2.1.5-2.debian.tar.xz
  SHA256 cdb2433c2f7101345c1ffa14efb943787c675b86354691a32490845fe4bc9237
  POOL libj/libjpeg-turbo)

quillbar_archive(tiff
  FILE tiff_4.5.0.orig.tar.bz2
  SHA256 638f43d7dea33948d5dee7f39572fc0194d9cc3c74195de9dd26a4388a1f880a
  POOL t/tiff
  URLS https://gitlab.com/libtiff/libtiff/-/archive/v4.5.0/libtiff-v4.5.0.tar.bz2)
quillbar_archive(tiff_patches
  FILE tiff_4.5.0-6+deb12u4.debian.tar.xz
  SHA256 4ee50a8cdf74a184d94e65a04f3c9de466cb0b74ef5393fb5ca65666fccb864b
  POOL t/tiff)

quillbar_archive(libwebp
  FILE libwebp_1.2.4.orig.tar.gz
  SHA256 7bf5a8a28cc69bcfa8cb214f2c3095703c6b73ac5fba4d5480c205331d9494df
  POOL libw/libwebp
  URLS https://storage.googleapis.com/downloads.webmproject.org/releases/webp/libwebp-1.2.4.tar.gz)
quillbar_archive(libwebp_patches
  FILE libwebp_1.2.4-0.2+deb12u1.debian.tar.xz
  SHA256 69cdba4dfe2e1b34d55fa80c1b29c31cacd40dd183812d6bcca7e508a2f7afcd
  POOL libw/libwebp)

set(quillbar_image_archives libpng libjpeg-turbo tiff libwebp)
list(TRANSFORM quillbar_image_archives APPEND _patches OUTPUT_VARIABLE patches)
list(APPEND quillbar_image_archives ${patches})

# For Windows.
quillbar_archive(libffi
  FILE libffi_3.4.4.orig.tar.gz
  SHA256 d66c56ad259a82cf2a9dfc408b32bf5da52371500b84745f7fb8b645712df676
  POOL libf/libffi
  URLS https://github.com/libffi/libffi/releases/download/v3.4.4/libffi-3.4.4.tar.gz)
quillbar_archive(fmtlib
  FILE fmtlib_9.1.0+ds1.orig.tar.gz
  SHA256 84ce1c2d0be3a9863935137969dcec6970125caac032f82474640bfc81463583
  POOL f/fmtlib)
quillbar_archive(sqlite3
  FILE sqlite3_3.40.1.orig.tar.xz
  SHA256 aaa776260ab4dc976db34aa7891819484c8676b5b2783123ebc6301e2ca5d655
  POOL s/sqlite3)
quillbar_archive(sqlite3_patches
  FILE sqlite3_3.40.1-2+deb12u2.debian.tar.xz
  SHA256 0843bc12e4364076477935ce313a6d0796fd899a989ff18ebb6545540e10e4ca
  POOL s/sqlite3)
quillbar_archive(qpdf
  FILE qpdf_11.3.0.orig.tar.gz
  SHA256 547cee67de77b5c4ef4917e57d2db9c848cfe3aa950361f68d36367a3a03936e
  POOL q/qpdf
  URLS https://github.com/qpdf/qpdf/releases/download/v11.3.0/qpdf-11.3.0.tar.gz)
