# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Cross-built for Linux on ARM, and run under qemu: the suites whose results can depend on the processor. The programs
# that judge PDF files are the machine's own.

register_leg linux-arm64 other "cross-built for Linux on 64-bit ARM, and run under qemu" run_arm_tests prepare_arm64 \
  build_for_tests
register_leg linux-arm other "the same for 32-bit ARM" run_arm_tests prepare_arm build_for_tests

prepare_arm64() { install_arm_packages && scripts/make-linux-root arm64; }
prepare_arm() { install_arm_packages && scripts/make-linux-root armhf; }

install_arm_packages() {
  install_packages "${build_packages[@]}" "${example_packages[@]}" "${test_packages[@]}" "${arm_packages[@]}"
}

run_arm_tests() {
  local preset=$1
  if ! await_preparation "$preset"; then
    cat "build/prepare-$preset.log"
    leave_out "$preset" "packages, or Debian's libraries for this processor, could not be had"
    return
  fi
  need_readers
  ! prepared || return 0
  run_tests "$preset"
}
