# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Debian 13, from a bare root: ./test installs what it needs and fetches the sources; then the network is cut off, and
# everything is built and tested with what has been fetched.

register_leg debian-13 other "./test in a bare Debian 13, built with the network cut off" run_in_debian_13 prepare_debian_13 \
  build_in_debian_13

prepare_debian_13() {
  # The readers come from this machine, whose npm may know a registry or certificates of its own.
  prepare_readers >/dev/null
  install_packages debootstrap iproute2 && scripts/in-debian 13 ./test --prepare
}

build_in_debian_13() {
  # shellcheck disable=SC2016
  scripts/in-debian --offline 13 bash -c '. scripts/platform.sh && . scripts/build.sh && build_preset "$(native_preset)" --tests'
}

run_in_debian_13() {
  local log=build/debian-13.log result
  if [ "$(uname -m)" != x86_64 ]; then
    leave_out "$1" "the root is for x86-64"
    return
  fi
  if ! await_preparation "$1"; then
    tail -n 40 "build/prepare-$1.log"
    leave_out "$1" "its root could not be made, which takes root and may take mounting"
    return
  fi
  ! prepared || return 0
  await_early_build "$1"
  echo "Building and testing in Debian 13 …"
  take "$1" tests scripts/in-debian --offline 13 ./test >"$log" 2>&1 </dev/null
  result=$(tail -n 1 "$log")
  if [[ $result =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed,\ ([0-9]+)\ skipped$ ]] && [ "${BASH_REMATCH[1]}" -gt 0 ]; then
    [ "${BASH_REMATCH[2]}" -eq 0 ] || tail -n 200 "$log"
    passed=$((passed + BASH_REMATCH[1])) failed=$((failed + BASH_REMATCH[2])) skipped=$((skipped + BASH_REMATCH[3]))
  else
    tail -n 200 "$log"
    failed "$1: ./test ended early in Debian 13."
  fi
}
