# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# clang-tidy has nothing to say about what ships: the plugin, the companion and what both are built on. The host and
# the tests would take several times as long, and the path-sensitive analyzer as long again: `scripts/tidy` takes any
# file, with it.

register_leg tidy other "clang-tidy over what ships" check_with_clang_tidy prepare_clang_tidy

prepare_clang_tidy() { install_packages "${build_packages[@]}" "${test_packages[@]}" "${analysis_packages[@]}"; }

check_with_clang_tidy() {
  await_preparation "$1"
  if ! prepare_clang_tidy ||
    ! command -v clang-tidy >/dev/null; then
    leave_out tidy "clang-tidy is not on this machine"
    return
  fi
  ! prepared || return 0
  # A preset that compiles file by file. clang-tidy needs nothing built but reads headers that the configuration makes; what
  # is compiled for another system isn't in the database.
  if ! take tidy build cmake --preset release >build/tidy.log 2>&1; then
    cat build/tidy.log
    failed "tidy: the configuration failed."
    return
  fi
  if take tidy tests scripts/tidy --quick build/release binding companion plugin; then
    passed
  else
    failed "tidy: clang-tidy has found the above."
  fi
}
