# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Packages of npm, in the versions and with the checksums that a lock file states. Sourced after packages.sh, not run.
#
#   install_from_npm SOURCE FOLDER NAMES   installs what SOURCE/package-lock.json states into FOLDER unless it is there,
#                                          naming it NAMES in messages; prints the reason if it can't

install_from_npm() {
  local source=$1 folder=$2 names=$3
  # The lock file is copied last, so a folder with the same one is complete.
  cmp -s "$source/package-lock.json" "$folder/installed.json" && return
  # A machine with a Node.js from elsewhere has npm, and Debian's would get in its way.
  if ! command -v npm >/dev/null && ! install_packages "${npm_packages[@]}" >&2; then
    echo "$names come from npm, which is not on this machine"
    return 1
  fi
  echo "Fetching $names …" >&2
  mkdir -p "$folder"
  (
    # Two runs may start at once.
    flock 9
    fetch_from_npm "$source" "$folder" || fetch_from_npm "$source" "$folder"
  ) 9>"$folder/lock" || {
    echo "$names could not be fetched"
    return 1
  }
}

# The packages' files. What they call optional isn't needed.
fetch_from_npm() {
  cp "$1"/package{,-lock}.json "$2" &&
    (cd -P "$2" && npm ci --omit=optional --ignore-scripts --silent --no-audit --no-fund >/dev/null 2>&1) &&
    cp "$1/package-lock.json" "$2/installed.json"
}
