# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Readers of PDF files that are not Debian packages, for the tests: pdf.js, the one of Firefox and of many
# applications, and PDFium, the one of Chrome and Edge. Sourced after packages.sh, not run.
#
#   prepare_readers       installs them with npm unless they are there; prints the reason if it can't

# shellcheck source=scripts/npm.sh
. "${BASH_SOURCE[0]%/*}/npm.sh"

readers_source=$(cd "${BASH_SOURCE[0]%/*}/../tests/support/readers" && pwd -P)

# What the readers call optional draws pictures.
prepare_readers() {
  install_from_npm "$readers_source" .cache/readers "pdf.js and PDFium"
}
