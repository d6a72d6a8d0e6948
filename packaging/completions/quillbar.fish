# SPDX-License-Identifier: MIT
# Completion of quillbar's commands, options and files in fish.

function __quillbar_needs_command
    not __fish_seen_subcommand_from run check watch describe; and not string match -qr '\.xojo_script$' -- (commandline -opc)
end

function __quillbar_needs_script
    not string match -qr '\.xojo_script$' -- (commandline -opc)
end

complete -c quillbar -n __quillbar_needs_command -a run -d 'Run a script'
complete -c quillbar -n __quillbar_needs_command -a check -d 'Check a script without running it'
complete -c quillbar -n __quillbar_needs_command -a watch -d 'Run a script at every change, and show its documents'
complete -c quillbar -n __quillbar_needs_command -a describe -d 'Print every class and member of the plugins'
complete -c quillbar -n __quillbar_needs_command -l version -d 'Print the version'
complete -c quillbar -n __quillbar_needs_script -l help -d 'Print the commands and options'
complete -c quillbar -n __quillbar_needs_script -l plugin -r -d 'Load this plugin instead of those beside the program'
complete -c quillbar -n '__fish_seen_subcommand_from run; and __quillbar_needs_script' -l account -d 'Print the reference ledger'
complete -c quillbar -n '__fish_seen_subcommand_from watch; and __quillbar_needs_script' -l port -x -d 'The port of the page'
complete -c quillbar -n '__fish_seen_subcommand_from describe' -l json -d 'Print them as JSON'
complete -c quillbar -n '__fish_seen_subcommand_from describe' -f
complete -c quillbar -n '__fish_seen_subcommand_from run watch; and __quillbar_needs_script' -l sandbox -r -d 'Keep the files of the script below this folder'
complete -c quillbar -n '__fish_seen_subcommand_from run watch; and __quillbar_needs_script' -l max-memory -x -d 'End the script when it needs more memory'
complete -c quillbar -n '__fish_seen_subcommand_from run watch; and __quillbar_needs_script' -l max-time -x -d 'End the script after so many seconds'
complete -c quillbar -n '__fish_seen_subcommand_from run watch; and __quillbar_needs_script' -l max-calls -x -d 'Nested calls'
complete -c quillbar -n '__fish_seen_subcommand_from run watch; and __quillbar_needs_script' -l max-string -x -d 'Length of a String'
complete -c quillbar -n '__fish_seen_subcommand_from run watch; and __quillbar_needs_script' -l max-elements -x -d 'Elements of an array'
