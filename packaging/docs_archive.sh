# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2154
# The archive of the documentation's site. Sourced, not run. Needs $version and SOURCE_DATE_EPOCH.

# make_docs_archive FOLDER: FOLDER/quillbar-pdf-writer-docs-VERSION.tar.xz; nothing where the site can't be made.
make_docs_archive() {
  local name=quillbar-pdf-writer-docs-$version tree package
  docs/build --can || return 0
  docs/build build/linux-x86-64/quillbar >/dev/null
  tree=$(mktemp -d)
  cp -r build/docs/html "$tree/$name"
  # The licences of what the site holds of its generator and its theme.
  mkdir "$tree/$name/licences"
  for package in furo sphinx-common node-normalize.css libjs-jquery libjs-underscore python3-sphinx-copybutton; do
    [ ! -f "/usr/share/doc/$package/copyright" ] || cp "/usr/share/doc/$package/copyright" "$tree/$name/licences/$package.txt"
  done
  settle "$tree/$name"
  tar --create --directory="$tree" --sort=name --format=ustar --owner=root:0 --group=root:0 "$name" |
    xz -9e --threads=1 >"$1/$name.tar.xz"
  rm -rf "$tree"
}
