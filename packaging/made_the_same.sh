# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What makes packages the same bytes each time. Sourced, not run. Needs SOURCE_DATE_EPOCH.

# settle FOLDER: modes and time stamps of everything in FOLDER, whatever the umask and the clock were.
settle() {
  find "$1" -type d -exec chmod 755 {} +
  find "$1" -type f -perm /111 -exec chmod 755 {} +
  find "$1" -type f ! -perm /111 -exec chmod 644 {} +
  find "$1" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
}

# strip_linux FILE COPY [TRIPLET]: without debug information and the compiler's name. TRIPLET is that of the tools for
# another processor than this machine's.
strip_linux() { "${3:+$3-}strip" --strip-unneeded --remove-section=.comment -o "$2" "$1"; }
