# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Configures and builds a preset, quietly unless something fails. Sourced, not run.

# Where ccache is used, it may treat precompiled headers as the headers that they were made from.
export CCACHE_SLOPPINESS=pch_defines,time_macros

# How many processors may be used at once.
processors() { nproc 2>/dev/null || getconf _NPROCESSORS_ONLN; }

# build_preset PRESET [--tests] [TARGET…]
build_preset() {
  local preset=$1 tests=OFF
  shift
  if [ "${1-}" = --tests ]; then
    tests=ON
    shift
  fi
  local folder=build/$preset log
  log=$(mktemp)
  # A build folder that has the tests keeps them: removing them would only cost time.
  if [ ! -f "$folder/build.ninja" ] || { [ $tests = ON ] && ! grep -q '^QUILLBAR_TESTS:BOOL=ON' "$folder/CMakeCache.txt"; }; then
    echo "Configuring $preset …"
    if ! cmake --preset "$preset" -DQUILLBAR_TESTS=$tests >"$log" 2>&1; then
      cat "$log" >&2
      rm -f "$log"
      return 1
    fi
  fi
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
