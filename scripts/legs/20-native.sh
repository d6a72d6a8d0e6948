# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What ships for this machine's own processor, and its tests.

register_leg "$(native_preset)" newcomer "what ships for this machine, and its suite" run_native_tests

run_native_tests() {
  local packages=("${build_packages[@]}" "${example_packages[@]}" "${test_build_packages[@]}")
  # What can't be installed is named at once; else the tests' own part comes while the build runs.
  has_apt || packages+=("${judge_packages[@]}")
  if ! install_packages "${packages[@]}"; then
    leave_out "$1" "packages are missing"
    return
  fi
  begin_judges
  start_preparations
  if ! cmake -P cmake/FetchSources.cmake >build/fetch.log 2>&1; then
    cat build/fetch.log
    failed "$1: the sources of libraries could not be fetched."
    return
  fi
  if prepared; then
    need_judges "$1"
    return
  fi
  run_tests "$1"
}
