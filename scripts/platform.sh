# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What this machine is. Sourced, not run.

# The preset that makes what ships for the machine that builds. Where nothing ships for it, that is `release`.
native_preset() {
  case $(uname -s)-$(uname -m) in
    Linux-x86_64) echo linux-x86-64 ;;
    *) echo release ;;
  esac
}
