# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2154
# The source archive. Sourced, not run. Needs $version.

# make_source_archive FOLDER: FOLDER/quillbar-pdf-writer-VERSION.tar.xz, the last commit.
make_source_archive() {
  local name=quillbar-pdf-writer-$version
  git -c tar.umask=0022 archive --format=tar --prefix="$name/" HEAD | xz -9e --threads=1 >"$1/$name.tar.xz"
}
