# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What ./package makes is unpacked and used. Each check at its end is counted.

register_leg packages other "what ./package makes is unpacked and used" check_packages prepare_packages

prepare_packages() {
  install_packages "${build_packages[@]}" "${windows_packages[@]}" "${arm_packages[@]}" "${packaging_packages[@]}" \
    "${package_judges[@]}" "${docs_packages[@]}"
}

check_packages() {
  local required=() log status bad left_out
  await_preparation "$1"
  if ! prepare_packages; then
    leave_out packages "packages are missing"
    return
  fi
  ! prepared || return 0
  [ "$require_all" = no ] || required=(--require-all)
  log=$(mktemp)
  ./package --check "${required[@]}" | tee "$log"
  status=${PIPESTATUS[0]}
  passed "$(grep -c '^  ok ' "$log")"
  bad=$(grep -c '^  FAILED ' "$log")
  left_out=$(grep -c '^  skipped ' "$log")
  rm -f "$log"
  [ "$require_all" = no ] || bad=$((bad + left_out)) left_out=0
  # It may also end before any check.
  [ "$status" -ne 0 ] && [ "$bad" -eq 0 ] && bad=1
  failed=$((failed + bad)) skipped=$((skipped + left_out))
}
