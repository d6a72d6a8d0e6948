# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Configures and builds a preset, quietly unless something fails. Sourced, not run.

# Where ccache is used, it may treat precompiled headers as the headers that they were made from.
export CCACHE_SLOPPINESS=pch_defines,time_macros

# How many processors may be used at once.
processors() { nproc 2>/dev/null || getconf _NPROCESSORS_ONLN; }

# configure_preset PRESET TESTS: configures a preset, with the tests if TESTS is ON, unless it has been. A build folder
# that has the tests keeps them: removing them would only cost time.
configure_preset() {
  local folder=build/$1 log status=0
  if [ -f "$folder/build.ninja" ] && { [ "$2" = OFF ] || grep -q '^QUILLBAR_TESTS:BOOL=ON' "$folder/CMakeCache.txt"; }; then
    return
  fi
  echo "Configuring $1 …"
  log=$(mktemp)
  cmake --preset "$1" -DQUILLBAR_TESTS="$2" >"$log" 2>&1 || status=$?
  [ $status -eq 0 ] || cat "$log" >&2
  rm -f "$log"
  return $status
}

# build_preset PRESET [--tests] [TARGET…]
build_preset() {
  local preset=$1 tests=OFF log
  shift
  if [ "${1-}" = --tests ]; then
    tests=ON
    shift
  fi
  configure_preset "$preset" $tests || return
  log=$(mktemp)
  local targets=()
  [ $# -gt 0 ] && targets=(--target "$@")
  # A build with nothing to do ends at once without a message; only the build itself knows what there is to do.
  (sleep 1 >/dev/null && echo "Building $preset …") &
  local announcement=$! status=0
  cmake --build --preset "$preset" "${targets[@]}" >"$log" 2>&1 || status=$?
  kill "$announcement" 2>/dev/null || true
  wait "$announcement" 2>/dev/null || true
  [ $status -eq 0 ] || cat "$log" >&2
  rm -f "$log"
  return $status
}
