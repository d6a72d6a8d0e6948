# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# The page of `quillbar watch` and the documentation's site in headless Chromium. A leg of its own for the size of what it
# installs, some 170 MB; the native suite runs the first of the tests where the browser is there already.

register_leg browser other "watched scripts and the documentation in Chromium" run_browser_tests

run_browser_tests() {
  local preset log
  preset=$(native_preset)
  # A machine with a Node.js from elsewhere keeps it.
  command -v node >/dev/null || browser_packages+=(nodejs)
  if ! install_packages "${build_packages[@]}" "${test_packages[@]}" "${browser_packages[@]}" \
    "${docs_packages[@]}"; then
    leave_out browser "packages are missing"
    return
  fi
  ! prepared || return 0
  if ! take browser build build_preset "$preset" --tests command_test quillbar QuillbarPDFWriter \
    QuillbarCompanion; then
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
  test_site "$preset"
}

# test_site PRESET: makes the documentation's site and reads it as users do.
test_site() {
  local browser folder
  browser=$(command -v chromium chromium-browser google-chrome | head -n 1)
  [ -n "$browser" ] && command -v node >/dev/null || return 0  # said above
  if ! docs/build --can; then
    leave_out "the documentation's site" "Sphinx, MyST or the theme Furo is not on this machine"
    return
  fi
  if ! take browser build docs/build "build/$1/quillbar"; then
    failed "browser: the documentation's site could not be made."
    return
  fi
  folder=$(mktemp -d)
  "build/$1/quillbar" describe --json >"$folder/description.json"
  if take browser tests timeout 300 node tests/docs/site_test.mjs build/docs/html "$folder/description.json" \
    "$browser" "$folder"; then
    passed
  else
    failed "browser: the documentation's site has the failures above."
  fi
  rm -rf "$folder"
}
