# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Readers of PDF files that are not Debian packages, for the tests: pdf.js and PDFium. Sourced after packages.sh, not
# run.
#
#   prepare_readers       fetches them, and installs what runs them, unless they are there; prints the reason if it can't

fetch_readers() { cmake -P cmake/FetchReaders.cmake 2>&1; }

prepare_readers() {
  # A machine may have a Node.js from elsewhere.
  if ! command -v node >/dev/null && ! install_packages "${readers_packages[@]}" >&2; then
    echo "they need Node.js, which is not on this machine"
    return 1
  fi
  local log
  log=$(fetch_readers) && return
  # npm is only needed where they aren't there yet.
  if ! command -v npm >/dev/null && install_packages "${npm_packages[@]}" >&2; then
    log=$(fetch_readers) && return
  fi
  printf '%s\n' "$log" >&2
  echo "they could not be fetched, see above"
  return 1
}
