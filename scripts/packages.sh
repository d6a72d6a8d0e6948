# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034
# What the commands need on the machine, and how it is installed. Sourced, not run.
#
# Packages have Debian's names here. Where there is apt they are installed; elsewhere the installed ones are used, and
# what is missing is named as that system calls it (scripts/other_systems.sh).

# shellcheck source=scripts/other_systems.sh
. "${BASH_SOURCE[0]%/*}/other_systems.sh"

# To build the plugins and the host.
build_packages=(
  g++ cmake ninja-build pkg-config ca-certificates xz-utils
  libffi-dev       # calls of registered members
  libfmt-dev       # messages and formatted text
  libcli11-dev     # the command line
  nlohmann-json3-dev  # descriptions for programs
  zlib1g-dev       # the companion's compressor
  patch nasm       # the companion's libraries for image files, from source
  libutfcpp-dev    # UTF-16 paths of files
  libcctz-dev      # time zones
  libsqlite3-dev   # databases
)

# What examples read.
example_packages=(
  tzdata           # the directory of time zones
)

# To build the tests.
test_build_packages=(
  git libgtest-dev libgmock-dev libqpdf-dev binutils
  clang lld        # compile and link the test programs in a fraction of the time
  iso-codes libfreetype-dev  # how shaped text looks: names in all languages, outlines
  libpng-dev libjpeg-dev libtiff-dev libwebp-dev  # the same libraries in the build with sanitizers
)

# To run them, and to judge what they make.
judge_packages=(
  qpdf poppler-utils mupdf-tools ghostscript
  python3-gi gir1.2-poppler-0.18  # what poppler finds beside text and pictures
  libharfbuzz-bin  # how shaped text looks: a reference
  unicode-data     # Unicode's tests of direction and of line breaks
)

# Fonts that the tests and examples set text in: TrueType with outlines in glyf, OpenType with CFF outlines, a collection,
# a variable font, and Type 1 as AFM with PFB or PFA.
font_packages=(
  fonts-dejavu-core fonts-ipafont-mincho fonts-nanum fonts-arphic-gbsn00lp fonts-tlwg-garuda-ttf fonts-lohit-deva
  fonts-sil-ezra fonts-urw-base35 t1-cyrillic
  fonts-noto-core  # all scripts, 12 MB to fetch; those below are some 3 MB together
  fonts-lohit-beng-bengali fonts-lohit-gujr fonts-lohit-guru fonts-lohit-knda fonts-lohit-mlym fonts-lohit-orya
  fonts-lohit-taml fonts-lohit-telu fonts-tlwg-norasi-ttf fonts-hosny-amiri
  fonts-ebgaramond fonts-wqy-microhei fonts-inter-variable
  poppler-data  # pdftotext's tables for CJK fonts that aren't embedded
)
judge_packages+=("${font_packages[@]}")

test_packages=("${test_build_packages[@]}" "${judge_packages[@]}")

# To run readers of PDF files that are not Debian packages.
readers_packages=(nodejs)

# To fetch those readers, and peers of the benchmarks, where there is no npm yet.
npm_packages=(npm)

# Other libraries that write PDF files, for the benchmark that compares them with the plugin.
peers_packages=(
  libcairo2-dev libpodofo-dev python3-reportlab
)

# To look at the page of watched scripts.
browser_packages=(chromium)

# To build with clang's sanitizers, and to run the fuzz targets, with whatever version the release has.
fuzz_packages=(
  clang libclang-rt-dev
  llvm             # names of functions and lines in the traces of findings
)

# To build for Windows, with the libraries that are built from source.
windows_packages=(
  g++-mingw-w64-x86-64-win32 g++-mingw-w64-i686-win32 libz-mingw-w64-dev
  make googletest
  llvm             # its archiver is done at once where GNU's takes seconds
  gcc tcl          # to make SQLite's source file
)

# To make the documentation's site.
docs_packages=(
  python3-sphinx python3-myst-parser furo python3-sphinx-copybutton
)

# To look for bugs without running anything.
analysis_packages=(
  clang-tidy python3
)

# To build for Linux on ARM, and to run what was built; the libraries come from scripts/make-linux-root.
arm_packages=(
  g++-aarch64-linux-gnu g++-arm-linux-gnueabihf qemu-user dpkg
)

# To run what was built for Windows; the 32-bit Wine and what judges its files are installed in a root of their own.
wine_packages=(
  wine wine64 debootstrap
)

# To pack what ships, and to look into the packages.
packaging_packages=(
  git zip unzip dpkg-dev binutils file qpdf
)

# To check the Debian package against Debian's rules.
package_judges=(
  lintian
)

# Whether this machine's packages are Debian's.
has_apt() { command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; }

# Installs those of the named packages that are missing, with a message; silent when none is.
install_packages() {
  local missing
  if ! has_apt; then
    name_missing_packages "$@"
    return
  fi
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -eq 0 ] && return 0
  (
    # Legs may install at the same time, and apt doesn't wait for every one of its locks.
    flock 7
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -eq 0 ] || install_missing
  ) 7<"${BASH_SOURCE[0]}"
}

# Installs the packages in $missing.
install_missing() {
  local as_root=() log
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "These packages are missing and can only be installed by root or with sudo: ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]} …"
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

# The named packages that aren't installed, asked of Debian's package system at once.
missing_packages() {
  LC_ALL=C comm -23 <(printf '%s\n' "$@" | LC_ALL=C sort -u) \
    <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p' | LC_ALL=C sort -u)
}

apt_install() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y --no-install-recommends \
    -o DPkg::Lock::Timeout=300 install "${missing[@]}"
}
