# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# How Windows programs run here: under Wine, with a prefix in each build folder. Sourced, not run.
#
#   use_wine x86|x86-64   what follows is about this width
#   make_wine_prefix      makes the prefix unless it is there
#   wine_command          an array: what comes before a command of Wine
#   keep_wine             starts Wine's own processes, to stay until `end_wine`. Otherwise the first program after each
#   end_wine              pause would start them, and whoever reads that program's output would wait for them as well
#   prepare_i386_root     makes the root that 32-bit Wine runs in; prints the reason if there can be none

repository=$(cd "${BASH_SOURCE[0]%/*}/.." && pwd -P)

use_wine() {
  # Debian's packages of the two widths can be out of step on one system, so 32-bit Wine has a root of its own.
  wine_command=()
  # Wine needs a page at a fixed address, 7FFE0000, and the heap that Linux places at random after Debian's Wine is
  # there once in some thousand starts. The program then ends without a message before it begins.
  ! setarch --addr-no-randomize true 2>/dev/null || wine_command=(setarch --addr-no-randomize)
  [ "$1" = x86-64 ] || wine_command+=("$repository/scripts/in-i386-root")
  WINEPREFIX=$repository/build/windows-$1/wine
  WINEARCH=win64
  [ "$1" = x86-64 ] || WINEARCH=win32
  WINEDEBUG=-all
  # No installer of .NET or of a browser at the first start.
  WINEDLLOVERRIDES='mscoree,mshtml='
  LC_ALL=C.UTF-8
  export WINEPREFIX WINEARCH WINEDEBUG WINEDLLOVERRIDES LC_ALL
}

make_wine_prefix() {
  [ -f "$WINEPREFIX/made" ] && return
  mkdir -p "${WINEPREFIX%/*}"
  (
    # Several tests may start at once, and each of them gets here.
    flock 9
    [ -f "$WINEPREFIX/made" ] && exit
    "${wine_command[@]}" wine wineboot --init || exit
    # Temporary files are in the system's folder for them, so that the programs of both systems find them by a short
    # path.
    for name in TEMP TMP; do
      "${wine_command[@]}" wine reg add 'HKCU\Environment' /f /v $name /d 'Z:\tmp' || exit
    done
    touch "$WINEPREFIX/made"
  ) 9>"$WINEPREFIX.lock" >"$WINEPREFIX.log" 2>&1 </dev/null || {
    cat "$WINEPREFIX.log" >&2
    return 1
  }
}

keep_wine() {
  # They stay as long as a program runs: one that reads a pipe to which nothing writes.
  rm -f "$WINEPREFIX.pipe"
  mkfifo "$WINEPREFIX.pipe" && exec 8<>"$WINEPREFIX.pipe" || return
  "${wine_command[@]}" wine cmd <&8 >/dev/null 2>&1 &
  "${wine_command[@]}" wine cmd /c exit </dev/null >/dev/null 2>&1
}

end_wine() {
  "${wine_command[@]}" wineserver --kill
  exec 8>&-
  rm -f "$WINEPREFIX.pipe"
}

prepare_i386_root() {
  local as_root=() log
  if [ "$(id -u)" -ne 0 ]; then
    if ! sudo -n true 2>/dev/null; then
      echo "the 32-bit root needs root, or sudo without a password"
      return 1
    fi
    as_root=(sudo -n)
  fi
  if ! "${as_root[@]}" unshare --mount --propagation private mount -t tmpfs none /mnt 2>/dev/null; then
    echo "mounting is not permitted here, which the 32-bit root needs"
    return 1
  fi
  log=$(mktemp)
  [ -d "$repository/.cache/i386-root" ] || echo "Making a 32-bit Debian for Wine …" >&2
  if ! "${as_root[@]}" "$repository/scripts/make-i386-root" >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    rm -f "$log"
    echo "the 32-bit root could not be made; see above"
    return 1
  fi
  rm -f "$log"
}
