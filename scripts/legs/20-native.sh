# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What ships for this machine's own processor, and its tests.

register_leg "$(native_preset)" newcomer "what ships for this machine, and its suite" run_native_tests "" "" begin_native_build

fetch_sources() {
  cmake -P cmake/FetchSources.cmake >build/fetch.log 2>&1 && return
  cat build/fetch.log
  return 1
}

# The compilers come first: what needs them alone takes a minute on a new machine, in which the rest is installed.
begin_native_build() {
  has_apt && ! prepared && install_packages "${build_packages[@]}" "${example_packages[@]}" 2>/dev/null || return 0
  begin_work "begin-$1" fetch_and_configure "$1"
}

fetch_and_configure() { fetch_sources && configure_preset "$1" OFF; }

run_native_tests() {
  local packages=("${build_packages[@]}" "${example_packages[@]}" "${test_build_packages[@]}")
  # What can't be installed is named at once; else what runs the tests comes while they are built.
  has_apt || packages+=("${judge_packages[@]}")
  if ! install_packages "${packages[@]}"; then
    leave_out "$1" "packages are missing"
    return
  fi
  begin_judges
  start_preparations
  await_beginning "$1"
  if ! fetch_sources; then
    failed "$1: the sources of libraries could not be fetched."
    return
  fi
  if prepared; then
    need_judges "$1"
    return
  fi
  run_tests "$1"
}
