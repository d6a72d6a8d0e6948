# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What ships for this machine's own processor, and its tests.

register_leg "$(native_preset)" newcomer "what ships for this machine, and its suite" run_native_tests

run_native_tests() {
  if ! install_packages "${build_packages[@]}" "${example_packages[@]}" "${test_packages[@]}"; then
    leave_out "$1" "packages are missing"
    return
  fi
  need_readers
  start_preparations
  if ! cmake -P cmake/FetchSources.cmake >build/fetch.log 2>&1; then
    cat build/fetch.log
    failed "$1: the sources of libraries could not be fetched."
    return
  fi
  ! prepared || return 0
  run_tests "$1"
}
