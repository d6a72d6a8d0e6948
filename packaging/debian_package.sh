# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2154
# The Debian package of the host, with both plugins beside it. Sourced, not run. Needs $here, $version and
# SOURCE_DATE_EPOCH.

# make_debian_package FOLDER: FOLDER/quillbar_VERSION_amd64.deb
make_debian_package() {
  local folder tree library document
  folder=$(realpath "$1")
  tree=$(mktemp -d)
  library=$tree/usr/lib/quillbar
  document=$tree/usr/share/doc/quillbar
  mkdir -p "$tree/DEBIAN" "$tree/usr/bin" "$library" "$document/docs" "$tree/usr/share/man/man1"

  # The program finds the plugins beside itself, wherever a link to it is.
  strip_linux build/linux-x86-64/quillbar "$library/quillbar"
  chmod 755 "$library/quillbar"
  local plugin
  for plugin in QuillbarPDFWriter QuillbarCompanion; do
    strip_linux build/linux-x86-64/$plugin.so "$library/$plugin.so"
    chmod 644 "$library/$plugin.so"
  done
  ln -s ../lib/quillbar/quillbar "$tree/usr/bin/quillbar"

  cp README.md THIRD-PARTY-NOTICES.md "$document/"
  bill_of_materials "$document/bill-of-materials.cdx.json"
  git ls-files -z 'docs/*.md' docs/pictures examples | xargs -0 cp --parents --target-directory="$document"
  debian_copyright >"$document/copyright"
  install -D -m 644 packaging/debian/lintian-overrides "$tree/usr/share/lintian/overrides/quillbar"
  gzip -9n <packaging/debian/changelog >"$document/changelog.gz"
  local day
  day=$(date --utc --date="@$SOURCE_DATE_EPOCH" +%Y-%m-%d)
  sed "s/@version@/$version/; s/@date@/$day/" packaging/debian/quillbar.1 | gzip -9n >"$tree/usr/share/man/man1/quillbar.1.gz"

  install -D -m 644 packaging/completions/quillbar.bash "$tree/usr/share/bash-completion/completions/quillbar"
  install -D -m 644 packaging/completions/_quillbar "$tree/usr/share/zsh/vendor-completions/_quillbar"
  install -D -m 644 packaging/completions/quillbar.fish "$tree/usr/share/fish/vendor_completions.d/quillbar.fish"

  debian_control "$tree" >"$tree/DEBIAN/control"
  (cd "$tree" && find usr -type f -print0 | LC_ALL=C sort -z | xargs -0 md5sum >DEBIAN/md5sums)
  settle "$tree"
  dpkg-deb --root-owner-group --threads-max=1 -Zxz -z9 --build "$tree" "$folder/quillbar_${version}_amd64.deb" >/dev/null
  rm -rf "$tree"
}

# bill_of_materials FILE [PRODUCT]: what is linked in (cmake/BillOfMaterials.cmake says how that is known), for all that
# ships or one product.
bill_of_materials() {
  cmake "-DVERSION=$version" "-DEPOCH=$SOURCE_DATE_EPOCH" "-DOUTPUT=$1" ${2:+"-DPRODUCT=$2"} \
    -P cmake/BillOfMaterials.cmake >/dev/null
}

# debian_control TREE: the control file; its dependencies are those of the files in TREE.
debian_control() {
  local tree=$1 work depends size
  work=$(mktemp -d)
  mkdir "$work/debian"
  # dpkg-shlibdeps reads the source package's description.
  printf 'Source: quillbar\n\nPackage: quillbar\nArchitecture: amd64\n' >"$work/debian/control"
  depends=$(cd "$work" && dpkg-shlibdeps -O "$tree/usr/lib/quillbar/quillbar" "$tree"/usr/lib/quillbar/*.so)
  rm -rf "$work"
  size=$(find "$tree/usr" -type f -printf '%s\n' | awk '{ kib += int(($1 + 1023) / 1024) } END { print kib }')
  sed "s/@version@/$version/; s/@depends@/${depends#shlibs:Depends=}/; s/@size@/$size/" packaging/debian/control.in
}

# debian_copyright: Debian's machine-readable form of LICENSE and of the notices in THIRD-PARTY-NOTICES.md that concern
# the package's files. A line "@text HEADING@" of copyright.in is replaced by the text there.
debian_copyright() {
  local line
  while IFS= read -r line; do
    case $line in
      "@text LICENSE@") sed '1,4d' LICENSE | debian_field ;;
      "@text "*@)
        line=${line#@text }
        notice "${line%@}" | debian_field
        ;;
      *) printf '%s\n' "$line" ;;
    esac
  done <packaging/debian/copyright.in
}

# notice HEADING: the text below HEADING in THIRD-PARTY-NOTICES.md; a failure when there is none.
notice() {
  awk -v heading="## $1" '
    /^## / { inside = $0 == heading; next }
    inside && (begun || NF) { begun = 1; print }
    END { if (!begun) { print "THIRD-PARTY-NOTICES.md has no text below: " heading >"/dev/stderr"; exit 1 } }' THIRD-PARTY-NOTICES.md
}

# Text as the continuation of a field: every line is indented by one space, an empty one is a full stop, and none ends
# it.
debian_field() { sed -e :a -e '/^\n*$/{$d;N;ba' -e '}' | sed 's/^$/./; s/^/ /'; }
