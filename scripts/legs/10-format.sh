# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# The sources are laid out as .clang-format says. Other versions of clang-format lay some things out differently, so
# this leg alone needs a certain version, and is left out where Debian doesn't have it.

register_leg format newcomer "the layout that .clang-format describes" check_format

# Every source names its licence at the top.
check_licences() {
  local lacking
  lacking=$({
    git grep -L 'SPDX-License-Identifier: MIT$' -- '*.cpp' '*.h' '*.cmake' '*CMakeLists.txt' '*.sh'
    git grep -lE '^#!.*\<(ba)?sh$' -- ':!*.md' ':!*.sh' | xargs git grep -L 'SPDX-License-Identifier: MIT$' --
  })
  if [ -z "$lacking" ]; then
    passed
  else
    failed "format: these have no line \"SPDX-License-Identifier: MIT\":"
    printf '%s\n' "$lacking"
  fi
}

check_format() {
  if ! install_packages git clang-format-14 || ! command -v clang-format-14 >/dev/null; then
    leave_out format "clang-format-14 is not on this machine"
    return
  fi
  ! prepared || return 0
  check_licences
  local sources
  mapfile -t sources < <(git ls-files '*.cpp' '*.h')
  if [ ${#sources[@]} -eq 0 ]; then
    failed "format: git lists no sources here; run it in a clone."
  elif take format tests check_files format 50 clang-format-14 --dry-run --Werror < <(printf '%s\0' "${sources[@]}"); then
    passed
  else
    failed "format: some files are not laid out as .clang-format says; clang-format-14 -i mends them."
  fi
}
