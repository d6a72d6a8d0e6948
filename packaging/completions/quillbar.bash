# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of quillbar's commands, options and files in bash.

_quillbar() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command='' script='' i
  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      --plugin | --port | --sandbox | --max-*) ((i++)) ;;
      -?*) ;;
      run | check | watch | describe)
        if [ -z "$command" ]; then command=${COMP_WORDS[i]}; else script=${COMP_WORDS[i]}; fi
        ;;
      *) script=${COMP_WORDS[i]} ;;
    esac
  done

  COMPREPLY=()
  compopt -o filenames 2>/dev/null
  # What follows the script belongs to the script.
  if [ -n "$script" ]; then
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  elif [ "$before" = --plugin ]; then
    mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X '!*.so' -- "$word")
  elif [ "$before" = --sandbox ]; then
    mapfile -t COMPREPLY < <(compgen -d -- "$word")
  elif [[ $before = --max-* ]]; then
    return
  elif [[ $word = -* ]]; then
    local options='--help --plugin' limits=' --sandbox --max-memory --max-time --max-calls --max-string --max-elements'
    case $command in
      run) options+=" --account$limits" ;;
      watch) options+=" --port$limits" ;;
      describe) options+=' --json' ;;
      '') options+=" --account --version$limits" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
  elif [ "$command" != describe ]; then
    mapfile -t COMPREPLY < <(
      [ -n "$command" ] || compgen -W 'run check watch describe' -- "$word"
      compgen -d -- "$word"
      compgen -f -X '!*.xojo_script' -- "$word"
    )
  fi
}
complete -F _quillbar quillbar
