# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# How legs of the test suite are registered, run, counted and timed. Sourced by ./test, not run.
#
# A leg is a file in scripts/legs/, and their names give the order. It says, with functions of its own:
#
#   register_leg NAME newcomer|other DESCRIPTION RUN [PREPARE [BUILD [BEGIN]]]
#
# Newcomers' legs run without a name, these and the others with "all".
# RUN runs the leg: it installs what the leg needs, and says how it went with `passed`, `failed`, `leave_out` or
# `run_tests`. PREPARE, if there is one, runs beside the legs before it; it is for what is mostly waiting for downloads,
# and must not change what those legs' tests see. RUN calls `await_preparation NAME` when it needs what was prepared.
# Preparations begin with the first leg that has one, or where an earlier leg has installed what it needs itself and
# calls `start_preparations`: packages can only be installed one after another. BUILD, if there is one, builds what the
# leg will test once PREPARE has gone well, beside the tests of legs before it, with what they leave of the processors.
# `run_tests` waits for it, or RUN calls `await_early_build NAME`, and builds what it has left undone. BEGIN, if there is
# one, is called before the first leg; for what it begins as the work `begin-NAME`, RUN waits with `await_beginning NAME`.

# shellcheck source=scripts/background.sh
. "${BASH_SOURCE[0]%/*}/background.sh"

leg_names=() legs_to_prepare=() legs_to_build=()
declare -A leg_kind leg_description leg_run leg_prepare leg_build leg_begin leg_seconds
early_build=  # the leg whose early build began last
passed=0 failed=0 skipped=0
require_all=no prepare_only=no

register_leg() {
  leg_names+=("$1")
  leg_kind[$1]=$2 leg_description[$1]=$3 leg_run[$1]=$4 leg_prepare[$1]=${5-} leg_build[$1]=${6-} leg_begin[$1]=${7-}
}

# legs_of KIND…: the names of all legs of these kinds.
legs_of() {
  local leg
  for leg in "${leg_names[@]}"; do
    [[ " $* " != *" ${leg_kind[$leg]} "* ]] || echo "$leg"
  done
}

require_every_leg() { require_all=yes; }
only_prepare() { prepare_only=yes; }

passed() { passed=$((passed + ${1-1})); }

# failed [REASON]: one more failure.
failed() {
  [ $# -eq 0 ] || echo "$1"
  failed=$((failed + 1))
}

# leave_out LEG REASON: this machine can't run the leg, which is a failure where every leg is required.
leave_out() {
  echo "$1: skipped, $2."
  if [ "$require_all" = yes ]; then failed=$((failed + 1)); else skipped=$((skipped + 1)); fi
}

# take LEG PART COMMAND…: runs COMMAND and adds the seconds that it took to a PART of LEG, "build" or "tests".
take() {
  local key=$1/$2 start=$SECONDS status=0
  shift 2
  "$@" || status=$?
  leg_seconds[$key]=$((${leg_seconds[$key]-0} + SECONDS - start))
  return $status
}

# check_files LEG COUNT COMMAND…: runs COMMAND, on all processors, for COUNT files at a time of those that standard input
# names, each ended by a zero byte; unless the files and COMMAND are what they were when all went well.
check_files() {
  local stamp=build/$1.passed files now status=0
  mapfile -d '' -t files
  now=$({ "$3" --version; echo "$@"; git hash-object .clang-format "${files[@]}"; } 2>&1 | sha256sum)
  [ "$(cat "$stamp" 2>/dev/null)" = "$now" ] && return
  printf '%s\0' "${files[@]}" | xargs -0 -P "$(processors)" -n "${@:2}" || status=1
  [ $status -ne 0 ] || echo "$now" >"$stamp"
  return $status
}

# The figure that an attribute of the report's first element gives.
report_figure() { grep -o -m1 "$2=\"[0-9]*\"" "$1" | head -n 1 | grep -o '[0-9]*'; }

# count_cases CTEST-REPORT FOLDER: three figures: how many cases passed, failed and were skipped. FOLDER has GoogleTest's
# own reports of the tests that are several cases in one process, which may also fail without a report, or after it.
count_cases() {
  local total bad left_out report cases=0 bad_cases=0 reports=0
  total=$(report_figure "$1" tests)
  bad=$(report_figure "$1" failures)
  left_out=$(report_figure "$1" skipped)
  for report in "$2"/*.xml; do
    [ -s "$report" ] || continue
    reports=$((reports + 1))
    cases=$((cases + $(report_figure "$report" tests)))
    bad_cases=$((bad_cases + $(report_figure "$report" failures)))
    left_out=$((left_out + $(grep -c '<testcase .*result="skipped"' "$report")))
  done
  # A process that failed counts once at least.
  [ "$bad_cases" -le "$bad" ] || bad=$bad_cases
  total=$((total - reports + cases))
  echo $((total - bad - left_out)) "$bad" "$left_out"
}

# run_tests PRESET [LEG]: builds a preset and runs its tests; the leg has the preset's name unless it is given.
run_tests() {
  local preset=$1 leg=${2-$1} report
  report=$PWD/build/$preset/report.xml
  await_early_build "$leg"
  if ! take "$leg" build build_preset "$preset" --tests; then
    failed "$leg: the build failed."
    return
  fi
  need_judges "$leg" || return 0
  rm -rf "$report" "build/$preset/reports"
  mkdir "build/$preset/reports"
  echo "Testing $leg …"
  build_early
  # Some tests mostly wait, so there is one more at once than there are processors.
  take "$leg" tests ctest --preset "$preset" -C Shards -LE sharded --progress --output-junit "$report" \
    -j $(($(processors) + 1)) >"build/$preset/ctest.log" 2>&1
  grep -vE '^Test project|^ *Start|Passed|^$' "build/$preset/ctest.log" | tr '\r' '\n' | grep -vE '^\[ *[0-9]+/' | tail -n 200
  if [ ! -s "$report" ]; then
    failed "$leg: the tests left no report."
    return
  fi
  local good bad left_out
  read -r good bad left_out <<<"$(count_cases "$report" "build/$preset/reports")"
  passed=$((passed + good)) failed=$((failed + bad)) skipped=$((skipped + left_out))
  [ $((good + bad)) -gt 0 ] || failed "$leg: no test ran."
}

# begin_judges: begins to install what the tests need only when they run; `run_tests` waits for it.
begin_judges() { begin_work prepare-judges prepare_judges; }
prepare_judges() { install_packages "${judge_packages[@]}" && prepare_readers; }

# need_judges LEG: whether what the tests need when they run is installed.
need_judges() {
  await_work prepare-judges
  if ! install_packages "${judge_packages[@]}"; then
    leave_out "$1" "packages are missing"
    return 1
  fi
  need_readers
}

# need_readers: has the readers of PDF files that are not Debian packages; says once if that fails.
readers_asked=no
need_readers() {
  local reason
  [ $readers_asked = no ] || return 0
  readers_asked=yes
  reason=$(prepare_readers) || leave_out "pdf.js and PDFium" "$reason"
}

# await_preparation LEG: whether what PREPARE did for the leg went well.
await_preparation() {
  ! is_under_way "prepare-$1" || echo "Preparing $1 …"
  await_work "prepare-$1"
}

# await_beginning LEG: ends when what BEGIN left running has ended. What went wrong there RUN finds again.
await_beginning() {
  ! is_under_way "begin-$1" || echo "Configuring $1 …"
  take "$1" build await_work "begin-$1" || true
}

# build_for_tests LEG: the BUILD of a leg with the name of the preset that it tests.
build_for_tests() { build_preset "$1" --tests; }

# build_early: begins the next early build, unless one is under way or its leg isn't prepared yet. What goes wrong is
# said by the leg, which builds again.
build_early() {
  local leg=${legs_to_build[0]-}
  [ -n "$leg" ] && ! is_under_way "early-$early_build" && ! is_under_way "prepare-$leg" && await_work "prepare-$leg" ||
    return 0
  begin_work "early-$leg" build_with_the_rest "$leg"
  early_build=$leg
  legs_to_build=("${legs_to_build[@]:1}")
}

# build_with_the_rest LEG: the leg's build, with what others leave of the processors.
build_with_the_rest() { renice -n 19 -p "$BASHPID" && "${leg_build[$1]}" "$1"; }

# await_early_build LEG: ends when no early build of the leg is under way; none begins later.
await_early_build() {
  local leg remaining=()
  for leg in "${legs_to_build[@]}"; do
    [ "$leg" = "$1" ] || remaining+=("$leg")
  done
  legs_to_build=("${remaining[@]}")
  ! is_under_way "early-$1" || echo "Building $1 …"
  take "$1" build await_work "early-$1" || true
}

# cpu_seconds VARIABLE: the processor time of all that this shell has waited for, in whole seconds.
cpu_seconds() {
  local record
  record=$(mktemp)
  # In a shell of its own `times` would report that shell's times.
  times >"$record"
  printf -v "$1" %s "$(awk -F '[ms ]+' 'NR == 2 { print int($1 * 60 + $2 + $3 * 60 + $4) }' "$record")"
  rm -f "$record"
}

start_preparations() {
  local leg
  for leg in "${legs_to_prepare[@]}"; do
    begin_work "prepare-$leg" "${leg_prepare[$leg]}"
  done
  legs_to_prepare=()
}

# run_legs LEG…
run_legs() {
  local leg cpu_before cpu_after
  for leg in "$@"; do
    [ -z "${leg_prepare[$leg]}" ] || legs_to_prepare+=("$leg")
    [ -z "${leg_build[$leg]}" ] || legs_to_build+=("$leg")
    [ -z "${leg_begin[$leg]}" ] || "${leg_begin[$leg]}" "$leg"
  done
  for leg in "$@"; do
    local start=$SECONDS
    [ -z "${leg_prepare[$leg]}" ] || start_preparations
    cpu_seconds cpu_before
    "${leg_run[$leg]}" "$leg"
    cpu_seconds cpu_after
    leg_seconds[$leg/all]=$((SECONDS - start)) leg_seconds[$leg/cpu]=$((cpu_after - cpu_before))
  done
}

# prepared: whether this run is one that only prepares; a leg then ends when it has installed and fetched what it needs.
prepared() { [ "$prepare_only" = yes ]; }

# print_times LEG…: a table of where the time went, in seconds by the clock, and in seconds of processors. What was
# prepared or built beside an earlier leg counts where it was waited for.
print_times() {
  local leg total
  printf '\n%-16s %8s %8s %8s %8s\n' "Seconds" build tests all CPU
  for leg in "$@"; do
    printf '%-16s %8s %8s %8s %8s\n' "$leg" "${leg_seconds[$leg/build]--}" "${leg_seconds[$leg/tests]--}" \
      "${leg_seconds[$leg/all]}" "${leg_seconds[$leg/cpu]}"
  done
  cpu_seconds total
  printf '%-16s %8s %8s %8s %8s\n' "the whole run" "" "" "$SECONDS" "$total"
}

# print_other_legs LEG…: the legs that were not asked for.
print_other_legs() {
  local leg others=()
  for leg in "${leg_names[@]}"; do
    [[ " $* " == *" $leg "* ]] || others+=("$leg")
  done
  [ ${#others[@]} -gt 0 ] || return 0
  echo
  echo "Other legs, each by its name, or everything with \"./test all\":"
  print_legs "${others[@]}"
}

print_legs() {
  local leg
  for leg in "$@"; do
    printf '  %-16s %s\n' "$leg" "${leg_description[$leg]}"
  done
}

# print_result: the closing line; a failure if anything failed.
print_result() {
  echo "$passed passed, $failed failed, $skipped skipped"
  [ "$failed" -eq 0 ]
}
