# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Made-up bytes for all that reads bytes from outside, for some seconds. Every fuzz target is a test. The inputs are the
# same each time; the seconds are a limit for slow machines.

register_leg fuzz other "made-up bytes for all that reads bytes from outside, some seconds each" run_fuzz_targets

run_fuzz_targets() {
  local log probe=build/fuzz-probe
  if ! install_packages "${build_packages[@]}" "${test_packages[@]}" "${fuzz_packages[@]}"; then
    leave_out fuzz "packages are missing"
    return
  fi
  ! prepared || return 0
  mkdir -p build
  if ! echo 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char *, unsigned long) { return 0; }' |
    clang++ -fsanitize=fuzzer,address,undefined -x c++ - -o $probe 2>/dev/null; then
    leave_out fuzz "clang with the runtimes of libFuzzer and the sanitizers is not on this machine"
    return
  fi
  rm -f $probe
  if ! take fuzz build build_preset fuzz; then
    failed "fuzz: the build failed."
    return
  fi
  echo "Fuzzing …"
  log=$(mktemp)
  FUZZ_RUNS=20000 take fuzz tests fuzz/run 5 >"$log" 2>&1
  local bad good
  good=$(grep -c '^  ok ' "$log")
  bad=$(grep -c '^  FAILED ' "$log")
  grep -v '^  ok ' "$log"
  rm -f "$log"
  # It may also end before any target.
  [ "$good" -eq 0 ] && [ "$bad" -eq 0 ] && bad=1
  passed=$((passed + good)) failed=$((failed + bad))
}
