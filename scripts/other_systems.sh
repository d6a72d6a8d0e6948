# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What the commands need on systems without apt: how it is found there, and what packages it is in. Sourced, not run.

# Debian's name, how it is found, and the package's name in Fedora, in Arch and in Homebrew; "-" where there is none or
# the system brings it.
package_table='
g++                   command:c++            gcc-c++               gcc             -
cmake                 command:cmake          cmake                 cmake           cmake
ninja-build           command:ninja          ninja-build           ninja           ninja
pkg-config            command:pkg-config     pkgconf-pkg-config    pkgconf         pkgconf
xz-utils              command:xz             xz                    xz              xz
patch                 command:patch          patch                 patch           -
nasm                  command:nasm           nasm                  nasm            nasm
make                  command:make           make                  make            -
git                   command:git            git                   git             git
binutils              command:nm             binutils              binutils        -
libffi-dev            library:libffi         libffi-devel          libffi          libffi
zlib1g-dev            library:zlib           zlib-devel            zlib            zlib
libfmt-dev            header:fmt/format.h    fmt-devel             fmt             fmt
libcli11-dev          header:CLI/CLI.hpp     cli11-devel           cli11           cli11
libutfcpp-dev         header:utf8cpp/utf8.h,utf8.h  utf8cpp-devel  utf8cpp         utf8cpp
libsqlite3-dev        library:sqlite3        sqlite-devel          sqlite          sqlite
libcctz-dev           header:cctz/time_zone.h  cctz-devel          cctz            cctz
libgtest-dev          header:gtest/gtest.h   gtest-devel           gtest           googletest
libgmock-dev          header:gmock/gmock.h   gmock-devel           gtest           googletest
libqpdf-dev           library:libqpdf        qpdf-devel            qpdf            qpdf
nlohmann-json3-dev    header:nlohmann/json.hpp  json-devel         nlohmann-json   nlohmann-json
libpng-dev            library:libpng         libpng-devel          libpng          libpng
libjpeg-dev           library:libjpeg        libjpeg-turbo-devel   libjpeg-turbo   jpeg-turbo
libtiff-dev           library:libtiff-4      libtiff-devel         libtiff         libtiff
libwebp-dev           library:libwebp        libwebp-devel         libwebp         webp
libfreetype-dev       library:freetype2      freetype-devel        freetype2       freetype
libharfbuzz-bin       command:hb-shape       harfbuzz-devel        harfbuzz-utils  harfbuzz
qpdf                  command:qpdf           qpdf                  qpdf            qpdf
poppler-utils         command:pdftotext      poppler-utils         poppler         poppler
mupdf-tools           command:mutool         mupdf                 mupdf-tools     mupdf-tools
ghostscript           command:gs             ghostscript           ghostscript     ghostscript
npm                   command:npm            nodejs-npm            npm             node
chromium              command:chromium       chromium              chromium        chromium
nodejs                command:node           nodejs                nodejs          node
clang                 command:clang++        clang                 clang           llvm
clang-tidy            command:clang-tidy     clang-tools-extra     clang           llvm
shellcheck            command:shellcheck     ShellCheck            shellcheck      shellcheck
'

# Which column of the table is this system's; all of them where it is another.
package_columns() {
  local id=
  # shellcheck disable=SC1091
  [ ! -r /etc/os-release ] || id=$(. /etc/os-release && echo "${ID-} ${ID_LIKE-}")
  case "$(uname -s) $id" in
    Darwin*) echo Homebrew ;;
    *fedora*) echo Fedora ;;
    *arch*) echo Arch ;;
    *) echo Fedora Arch Homebrew ;;
  esac
}

# is_there command:NAME|library:NAME|header:NAME,NAME…
is_there() {
  local name=${1#*:} header folder=
  case $1 in
    command:*) command -v "$name" >/dev/null ;;
    library:*) pkg-config --exists "$name" 2>/dev/null ;;
    header:*)
      ! command -v brew >/dev/null || folder=-I$(brew --prefix)/include
      for header in ${name//,/ }; do
        # shellcheck disable=SC2086
        echo "#include <$header>" | c++ -std=c++20 $folder -fsyntax-only -x c++ - 2>/dev/null && return
      done
      return 1
      ;;
  esac
}

# name_missing_packages PACKAGE…: fails if something is missing, and says what, as other systems call it. Fonts and
# other data without a line in the table are not asked for: a test that needs them says that it is skipped.
name_missing_packages() {
  local package debian how fedora arch homebrew columns column names=() missing=no
  columns=$(package_columns)
  for package in $(printf '%s\n' "$@" | LC_ALL=C sort -u); do
    while read -r debian how fedora arch homebrew; do
      [ "$debian" = "$package" ] && ! is_there "$how" || continue
      names=()
      for column in $columns; do
        case $column in
          Fedora) names+=("Fedora: $fedora") ;;
          Arch) names+=("Arch: $arch") ;;
          Homebrew) names+=("Homebrew: $homebrew") ;;
        esac
      done
      [ $missing = yes ] || echo "There is no apt here to install what is missing:" >&2
      missing=yes
      printf '  %-20s (%s)\n' "${how#*:}" "$(printf '%s, ' "${names[@]}" | sed 's/, $//')" >&2
    done <<<"$package_table"
  done
  [ $missing = no ]
}
