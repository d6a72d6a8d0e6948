# shellcheck shell=bash disable=SC2034
# Debian packages that the commands need, and how they are installed. Sourced, not run.

# To build the plugins and the host.
build_packages=(
  g++ cmake ninja-build pkg-config ca-certificates xz-utils
  libffi-dev       # calls of registered members
  libfmt-dev       # messages and formatted text
  libcli11-dev     # the command line
  zlib1g-dev       # the companion's compressor
  patch nasm       # the companion's libraries for image files, from source
  libutfcpp-dev    # UTF-16 paths of files
)

# What examples read.
example_packages=(
  tzdata           # the directory of time zones
  mate-backgrounds # photographs for the contact sheet
)

# To build and judge the tests.
test_packages=(
  git libgtest-dev libgmock-dev libqpdf-dev nlohmann-json3-dev binutils
  qpdf poppler-utils mupdf-tools ghostscript
  libpng-dev libjpeg-dev libtiff-dev libwebp-dev  # the same libraries in the build with sanitizers
)

# Fonts that the tests and examples set text in: TrueType with outlines in glyf, and Type 1 as AFM with PFB or PFA.
font_packages=(
  fonts-dejavu-core fonts-ipafont-mincho fonts-nanum fonts-arphic-gbsn00lp fonts-tlwg-garuda-ttf fonts-lohit-deva
  fonts-sil-ezra fonts-urw-base35 t1-cyrillic
  poppler-data  # pdftotext's tables for CJK fonts that aren't embedded
)
test_packages+=("${font_packages[@]}")

# To install the readers of PDF files that are no Debian packages, where there is no npm yet.
readers_packages=(npm)

# To build and run the fuzz targets.
fuzz_packages=(
  clang-14 libclang-rt-14-dev
  llvm-14          # names of functions and lines in the traces of findings
)

# To build for Windows, with the libraries that come from Debian's source archives.
windows_packages=(
  g++-mingw-w64-x86-64-win32 g++-mingw-w64-i686-win32 libz-mingw-w64-dev
  make googletest
)

# To run what was built for Windows; the 32-bit Wine and what judges its files are installed in a root of their own.
wine_packages=(
  wine wine64 debootstrap
)

# To pack what ships, and to look into the packages.
packaging_packages=(
  git zip unzip dpkg-dev binutils file qpdf
)

# To have the Debian package judged by Debian's rules.
package_judges=(
  lintian
)

# Installs what is missing of the packages named; says so, and says nothing when nothing is.
install_packages() {
  local missing=() package
  for package in $(printf '%s\n' "$@" | sort -u); do
    dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0

  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "These packages are missing and can only be installed by root or with sudo: ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]} …"
  local log
  log=$(mktemp)
  # A download can fail for a moment, and a fresh machine has no package lists: refresh and try once more.
  if ! { apt_install || { "${as_root[@]}" apt-get -q update && apt_install; }; } >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    echo "Installing packages failed; see above. Missing: ${missing[*]}" >&2
    return 1
  fi
  rm -f "$log"
}

apt_install() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y --no-install-recommends \
    -o DPkg::Lock::Timeout=300 install "${missing[@]}"
}
