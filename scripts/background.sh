# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Work beside other work. Sourced, not run.
#
# How it ended is kept in a file. In a long run the numbers of processes come round again, and a shell that starts a
# process with the number of one that has ended forgets how that one ended.

declare -A background_process

# begin_work NAME COMMAND…: starts COMMAND. What it prints goes to build/NAME.log.
begin_work() {
  local name=$1
  shift
  rm -f "build/$name.status"
  {
    ("$@")
    echo $? >"build/$name.status"
  } >"build/$name.log" 2>&1 </dev/null &
  background_process[$name]=$!
}

# is_under_way NAME: whether the work has begun and not ended.
is_under_way() {
  [ -n "${background_process[$1]-}" ] && [ ! -s "build/$1.status" ] && kill -0 "${background_process[$1]}" 2>/dev/null
}

# await_work NAME: waits for the end of the work, and gives its exit status; 1 if it was killed, 0 if it never began.
await_work() {
  local status=
  [ -n "${background_process[$1]-}" ] || return 0
  [ -s "build/$1.status" ] || wait "${background_process[$1]}"
  read -r status 2>/dev/null <"build/$1.status"
  return "${status:-1}"
}
