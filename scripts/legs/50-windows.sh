# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Cross-built for Windows with MinGW-w64, and run under Wine.

register_leg windows-x86-64 other "cross-built for 64-bit Windows, and run under Wine" run_windows_tests prepare_windows \
  build_for_tests
register_leg windows-x86 other "the same with 32 bits" run_windows_tests prepare_windows_with_32_bits build_for_tests

prepare_windows() {
  install_packages "${build_packages[@]}" "${example_packages[@]}" "${test_packages[@]}" "${windows_packages[@]}" \
    "${wine_packages[@]}"
}

# The reason why there is no 32-bit root is the last line of what it prints.
prepare_windows_with_32_bits() { prepare_windows && prepare_i386_root; }

run_windows_tests() {
  local preset=$1
  if ! await_preparation "$preset" && [ "$preset" = windows-x86 ]; then
    cat "build/prepare-$preset.log"
    leave_out "$preset" "the 32-bit root for Wine could not be made"
    return
  fi
  if ! prepare_windows; then
    leave_out "$preset" "packages are missing"
    return
  fi
  need_readers
  ! prepared || return 0
  use_wine "${preset#windows-}"
  if ! make_wine_prefix || ! keep_wine; then
    leave_out "$preset" "Wine does not start here"
    return
  fi
  trap end_wine EXIT
  run_tests "$preset"
  trap - EXIT
  end_wine
}
