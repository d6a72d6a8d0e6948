# shellcheck shell=bash
# What ships for this machine's own processor, and its suite.

register_leg "$(native_preset)" newcomer "what ships for this machine, and its suite" run_native_tests

run_native_tests() {
  if ! install_packages "${build_packages[@]}" "${example_packages[@]}" "${test_packages[@]}"; then
    leave_out "$1" "packages are missing"
    return
  fi
  need_readers
  run_tests "$1"
}
