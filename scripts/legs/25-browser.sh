# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# The page of `quillbar watch` in headless Chromium. A leg of its own for the size of what it installs, some 150 MB; the
# native suite runs the same test where the browser is there already.

register_leg browser other "the page of watched scripts in headless Chromium" run_browser_test

run_browser_test() {
  local preset log
  preset=$(native_preset)
  # A machine with a Node.js from elsewhere keeps it.
  command -v node >/dev/null || browser_packages+=(nodejs)
  if ! install_packages "${build_packages[@]}" "${test_packages[@]}" "${browser_packages[@]}"; then
    leave_out browser "packages are missing"
    return
  fi
  ! prepared || return 0
  if ! take browser build build_preset "$preset" --tests command_test; then
    failed "browser: the build failed."
    return
  fi
  log=$(mktemp)
  if ! take browser tests ctest --preset "$preset" -R 'Watch\.ShowsDocumentsAndErrorsInTheBrowser$' >"$log" 2>&1; then
    cat "$log"
    failed "browser: the test failed."
  elif grep -q 'Skipped\|No tests were found' "$log"; then
    leave_out browser "Chromium or Node.js is not on this machine"
  else
    passed
  fi
  rm -f "$log"
}
