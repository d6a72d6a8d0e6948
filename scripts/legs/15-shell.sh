# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Every shell script passes shellcheck: no warning and no error.

register_leg shell newcomer "shellcheck over every shell script" check_shell_scripts

check_shell_scripts() {
  if ! install_packages git shellcheck || ! command -v shellcheck >/dev/null; then
    leave_out shell "shellcheck is not on this machine"
    return
  fi
  local scripts
  mapfile -t scripts < <(git grep -lE '^#!.*\<(ba)?sh$|^# shellcheck shell=' -- ':!*.md')
  if [ ${#scripts[@]} -eq 0 ]; then
    failed "shell: git lists no scripts here; run it in a clone."
  elif take shell tests check_files shell 8 shellcheck --severity=warning < <(printf '%s\0' "${scripts[@]}"); then
    passed
  else
    failed "shell: shellcheck warns of the above."
  fi
}
