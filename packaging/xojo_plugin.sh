# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Plugin packages as the development environment takes them. Sourced, not run. Needs $here, and bill_of_materials
# (debian_package.sh).

# make_xojo_plugin NAME FOLDER: FOLDER/NAME.xojo_plugin, a zip:
#
#   Version.info                            empty
#   NAME/Build Resources/<platform>/NAME.dll or NAME.so
#   NAME/LICENSE, NAME/THIRD-PARTY-NOTICES.md, NAME/bill-of-materials.cdx.json
#
# The licences are beside the build resources: the environment copies the build resources into applications, and the
# top of the archive is for its own use.
make_xojo_plugin() {
  local name=$1 folder=$2 tree
  tree=$(mktemp -d)
  mkdir -p "$tree/$name/Build Resources/"{"Windows x86","Windows x86-64","Linux x86-64","Linux ARM64","Linux ARM"}
  cp "build/windows-x86/$name.dll" "$tree/$name/Build Resources/Windows x86/"
  cp "build/windows-x86-64/$name.dll" "$tree/$name/Build Resources/Windows x86-64/"
  strip_linux "build/linux-x86-64/$name.so" "$tree/$name/Build Resources/Linux x86-64/$name.so"
  strip_linux "build/linux-arm64/$name.so" "$tree/$name/Build Resources/Linux ARM64/$name.so" aarch64-linux-gnu
  strip_linux "build/linux-arm/$name.so" "$tree/$name/Build Resources/Linux ARM/$name.so" arm-linux-gnueabihf
  cp LICENSE THIRD-PARTY-NOTICES.md "$tree/$name/"
  bill_of_materials "$tree/$name/bill-of-materials.cdx.json" "$name"
  : >"$tree/Version.info"
  settle "$tree"
  # A zip file stores local time.
  (cd "$tree" && find . -type f -printf '%P\n' | LC_ALL=C sort | TZ=UTC zip -q -9 -X -D -@ package.zip)
  mv "$tree/package.zip" "$folder/$name.xojo_plugin"
  chmod 644 "$folder/$name.xojo_plugin"
  rm -rf "$tree"
}
