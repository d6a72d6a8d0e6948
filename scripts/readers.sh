# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Readers of PDF files that are not Debian packages, for the tests: pdf.js, the one of Firefox and of many
# applications, and PDFium, the one of Chrome and Edge. Sourced after packages.sh, not run.
#
#   prepare_readers       installs them with npm unless they are there; prints the reason if it can't

readers_source=$(cd "${BASH_SOURCE[0]%/*}/../tests/support/readers" && pwd -P)
readers_folder=.cache/readers

prepare_readers() {
  # The lock file is copied last, so a folder with the same one is complete.
  cmp -s "$readers_source/package-lock.json" "$readers_folder/installed.json" && return
  # A machine with a Node.js from elsewhere has npm, and Debian's would get in its way.
  if ! command -v npm >/dev/null && ! install_packages "${readers_packages[@]}" >&2; then
    echo "pdf.js and PDFium come from npm, which is not on this machine"
    return 1
  fi
  echo "Fetching pdf.js and PDFium …" >&2
  mkdir -p "$readers_folder"
  (
    # Two runs may start at once.
    flock 9
    fetch_readers || fetch_readers
  ) 9>"$readers_folder/lock" || {
    echo "pdf.js and PDFium could not be fetched"
    return 1
  }
}

# The packages' files, with the checksums that the lock file states. What they call optional draws pictures.
fetch_readers() {
  cp "$readers_source"/package{,-lock}.json "$readers_folder" &&
    (cd -P "$readers_folder" && npm ci --omit=optional --ignore-scripts --silent --no-audit --no-fund >/dev/null 2>&1) &&
    cp "$readers_source/package-lock.json" "$readers_folder/installed.json"
}
