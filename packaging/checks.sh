# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2154,SC2164
# Unpacks what is in dist/ and uses it. Sourced, not run. Needs $here, $version, $require_all and make_packages.
#
# Each check is a line: "  ok", "  FAILED" or "  skipped"; $failed counts the bad ones.

failed=0
work=build/packages/check

# check NAME COMMAND…: the command's output is shown when it fails. A function ends at its first command that fails; it
# runs in the background because bash doesn't do so within a condition.
check() {
  local name=$1 log=$work/log
  shift
  (
    set -e
    "$@"
  ) >"$log" 2>&1 &
  if wait $!; then
    echo "  ok       $name"
  else
    echo "  FAILED   $name"
    sed 's/^/           /' "$log"
    failed=$((failed + 1))
  fi
}

# left_out NAME REASON
left_out() {
  echo "  skipped  $1: $2"
  [ "$require_all" = no ] || failed=$((failed + 1))
}

check_packages() {
  echo "Checking dist/ …"
  rm -rf $work
  mkdir -p $work
  check "SHA256SUMS names every package" sums_name_everything
  check "packing again, with another umask and time zone, gives the same bytes" same_bytes_again
  local plugin
  for plugin in QuillbarPDFWriter QuillbarCompanion; do
    check "$plugin.xojo_plugin holds what it should" holds_its_files $plugin
    check "$plugin.xojo_plugin names no folder of this machine" names_no_folder $work/$plugin
    check "$plugin.xojo_plugin doesn't know when it was built" names_no_day $work/$plugin
  done
  check "the source archive holds the last commit" holds_the_commit
  check_docs_archive
  check_plugins linux-x86-64 "Linux x86-64" so build/linux-x86-64/quillbar
  check_arm_plugins linux-arm64 "Linux ARM64" qemu-aarch64
  check_arm_plugins linux-arm "Linux ARM" qemu-arm
  check_windows_plugins windows-x86-64 "Windows x86-64"
  check_windows_plugins windows-x86 "Windows x86"
  check_debian_package
}

sums_name_everything() {
  cd dist
  sha256sum --check --strict SHA256SUMS
  diff <(cut -c 67- SHA256SUMS) <(find . -type f ! -name SHA256SUMS -printf '%P\n' | LC_ALL=C sort)
}

same_bytes_again() {
  umask 077
  TZ=Pacific/Kiritimati make_packages $work/again
  diff dist/SHA256SUMS $work/again/SHA256SUMS
}

# Unpacks a plugin's package into $work.
holds_its_files() {
  local name=$1
  unzip -q "dist/$name.xojo_plugin" -d "$work/$name"
  cd "$work/$name"
  diff - <(find . -mindepth 1 -type f -printf '%P\n' | LC_ALL=C sort) <<END
$name/Build Resources/Linux ARM/$name.so
$name/Build Resources/Linux ARM64/$name.so
$name/Build Resources/Linux x86-64/$name.so
$name/Build Resources/Windows x86-64/$name.dll
$name/Build Resources/Windows x86/$name.dll
$name/LICENSE
$name/THIRD-PARTY-NOTICES.md
$name/bill-of-materials.cdx.json
Version.info
END
  [ ! -s Version.info ]
  cmp "$here/LICENSE" "$name/LICENSE"
  cmp "$here/THIRD-PARTY-NOTICES.md" "$name/THIRD-PARTY-NOTICES.md"
  names_archives "$name/bill-of-materials.cdx.json"
  local resources="$name/Build Resources"
  is_kind "$resources/Linux x86-64/$name.so" '^ELF 64-bit .* x86-64, .* stripped$'
  is_kind "$resources/Linux ARM64/$name.so" '^ELF 64-bit .* ARM aarch64, .* stripped$'
  is_kind "$resources/Linux ARM/$name.so" '^ELF 32-bit .* ARM, EABI5 .* stripped$'
  is_kind "$resources/Windows x86-64/$name.dll" '^PE32\+ .*\(DLL\).* x86-64.*stripped'
  is_kind "$resources/Windows x86/$name.dll" '^PE32 .*\(DLL\).* Intel 80386.*stripped'
}

# names_archives FILE: whether the bill of materials of a plugin is as it should be, and has the checksum of an archive that
# is linked into it.
names_archives() {
  local part=$1 sum
  case $part in
    QuillbarCompanion/*) part=libpng ;;
    *) part=harfbuzz ;;
  esac
  sum=$(grep -rhA 3 "^quillbar_archive($part$" "$here/cmake" | sed -n 's/^  SHA256 //p')
  echo "the archive of $part has the checksum $sum"
  cmake -DFILE="$1" -DSUM="$sum" -P "$here/packaging/check_bill_of_materials.cmake"
}

# is_kind FILE PATTERN: whether what `file` says of FILE matches.
is_kind() {
  local kind
  kind=$(file -b "$1")
  echo "$1: $kind"
  [[ $kind =~ $2 ]]
}

# The folder that a program was built in says something about a machine, and makes its bytes depend on it. It is looked
# for followed by a folder of the sources, because a clone's own path can be so short that any file contains it by
# chance.
names_no_folder() {
  local found folders
  mapfile -t folders < <(git ls-tree -d --name-only HEAD | sed "s|.*|$here/&/|")
  if found=$(printf '%s\n' "$here/build/" "${folders[@]}" |
    grep --recursive --files-with-matches --fixed-strings --text --file=- "$1"); then
    echo "$found"
    return 1
  fi
}

# A library that keeps the day of its build has other bytes each day: 20261122, or "Nov 22 2026" from __DATE__.
names_no_day() {
  local found year='20[0-9]{2}' day='([0-2][0-9]|3[01])' months='Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec'
  if found=$(LC_ALL=C grep --recursive --only-matching --text --extended-regexp \
    "\\b($year(0[1-9]|1[0-2])$day|($months) [ 0-3][0-9] $year)\\b" "$1/${1##*/}/Build Resources"); then
    echo "$found"
    return 1
  fi
}

holds_the_commit() {
  tar --extract --file "dist/quillbar-pdf-writer-$version.tar.xz" --directory $work
  diff <(git ls-tree -r --name-only HEAD | LC_ALL=C sort) \
    <(cd "$work/quillbar-pdf-writer-$version" && find . ! -type d -printf '%P\n' | LC_ALL=C sort)
}

check_docs_archive() {
  if docs/build --can; then
    check "the documentation's archive holds the site" holds_the_site
  else
    left_out "the documentation's archive" "what makes it is not on this machine; ./docs/build installs it"
  fi
}

holds_the_site() {
  tar --extract --file "dist/quillbar-pdf-writer-docs-$version.tar.xz" --directory $work
  local site=$work/quillbar-pdf-writer-docs-$version
  grep -q '<title>Quillbar PDF Writer' "$site/index.html"
  grep -q SetDashPattern "$site/reference/Page.html"
  names_no_folder "$site"
}

# check_plugins PLATFORM FOLDER SUFFIX HOST…: the host, which may be a command of several words, loads both unpacked
# plugins, describes them and runs a script that writes a PDF.
check_plugins() {
  local platform=$1 folder=$2 suffix=$3
  shift 3
  local name plugins=()
  for name in QuillbarCompanion QuillbarPDFWriter; do
    plugins+=(--plugin "$work/$name/$name/Build Resources/$folder/$name.$suffix")
  done
  check "the host describes the plugins for $folder" describes "$@" "${plugins[@]}"
  check "a script writes a PDF with the plugins for $folder" writes_a_pdf "$work/$platform.pdf" "$@" "${plugins[@]}"
}

describes() {
  "$@" describe >$work/description.md
  grep -q '^# Module QuillbarPDFWriter' $work/description.md
  grep -q '^## Class CompressorHandle' $work/description.md
  grep -q '^## Class PixelRaster' $work/description.md
}

# writes_a_pdf FILE HOST…
writes_a_pdf() {
  local file=$1
  shift
  "$@" run --account packaging/check.xojo_script "$file"
  qpdf --check "$file"
  qpdf --json "$file" >"$file.json"
  grep -q '"/FlateDecode"' "$file.json"
}

# check_arm_plugins PLATFORM FOLDER EMULATOR
check_arm_plugins() {
  check_plugins "$1" "$2" so "$3" -L "$(realpath ".cache/$1-root")" "build/$1/quillbar"
}

check_windows_plugins() {
  local platform=$1 folder=$2 reason
  if ! reason=$(runs_windows_programs "$platform"); then
    left_out "the plugins for $folder" "$reason"
    return
  fi
  check_plugins "$platform" "$folder" dll "scripts/run-$platform" "build/$platform/quillbar.exe"
}

# Whether this machine runs programs of a Windows platform; the reason if it doesn't.
runs_windows_programs() {
  if [ "$1" = windows-x86-64 ]; then
    command -v wine >/dev/null || { echo "wine is not on this machine; ./test $1 installs it" && return 1; }
  elif [ ! -d .cache/i386-root/usr/lib/i386-linux-gnu/wine ]; then
    echo "there is no 32-bit Wine on this machine; ./test $1 makes a root for it, where it can"
    return 1
  fi
}

check_debian_package() {
  local package=dist/quillbar_${version}_amd64.deb root=$work/debian
  check "the Debian package unpacks, and its sums are right" unpacks "$package" $root
  check "the Debian package names no folder of this machine" names_no_folder $root
  check "the packaged program describes the plugins beside it" describes $root/usr/bin/quillbar
  check "the packaged program writes a PDF" writes_a_pdf $work/debian.pdf $root/usr/bin/quillbar
  check "the changelog and the program give version $version" versions_agree $root
  if command -v lintian >/dev/null; then
    check "lintian finds nothing wrong with the Debian package" lintian --fail-on error,warning "$package"
  else
    left_out "lintian's judgement of the Debian package" "lintian is not on this machine; ./test packages installs it"
  fi
}

unpacks() {
  dpkg-deb --extract "$1" "$2"
  dpkg-deb --control "$1" "$2.control"
  cd "$2"
  md5sum --check --quiet "$here/$2.control/md5sums"
}

versions_agree() {
  [ "$("$1/usr/bin/quillbar" --version)" = "quillbar $version" ]
  zcat "$1/usr/share/doc/quillbar/changelog.gz" >$work/changelog
  head -n 1 $work/changelog
  head -n 1 $work/changelog | grep -qF "quillbar ($version)"
}
