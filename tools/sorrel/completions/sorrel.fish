# SPDX-License-Identifier: LGPL-2.1-or-later
# Completions of sorrel(1) for fish.

set -l commands info manifest resources icon files lint desktop scan catalog
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -f
complete -c sorrel -s h -l help -d 'Show help'
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -s v -l version -d 'Show the version'

complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -a info -d 'Show name, version and launchers'
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -a manifest -d 'Print the manifest as XML'
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -a resources -d 'List resources and their values'
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -a icon -d 'Write the icon as a PNG file'
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -a files -d 'List the files'
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -a lint -d 'Report what is wrong or unusual'
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -a desktop -d 'Write desktop entries and icons'
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -a scan -d 'Print a line of JSON for every package'
complete -c sorrel -n "not __fish_seen_subcommand_from $commands" -a catalog -d 'Write a web page of every package'

set -l in __fish_seen_subcommand_from
complete -c sorrel -n "$in info resources files lint desktop" -l json -d 'Print JSON objects, one on a line'
complete -c sorrel -n "$in info desktop scan" -l all -d 'Include launchers that are not shown'
complete -c sorrel -n "$in manifest" -l ids -d 'Print references by number'
complete -c sorrel -n "$in icon desktop catalog" -l shape -x -a 'none circle rounded squircle' -d 'Outline of adaptive icons'
complete -c sorrel -n "$in icon" -s s -l size -x -a '48 96 192 512' -d 'Width and height in pixels'
complete -c sorrel -n "$in icon" -l launcher -x -d 'Draw the icon of this launcher'
complete -c sorrel -n "$in icon desktop catalog" -s o -l output -r -d 'Write here'
complete -c sorrel -n "$in lint" -l draw -d 'Also draw the icons'
complete -c sorrel -n "$in lint" -l checks -d 'List the checks'
complete -c sorrel -n "$in desktop" -l exec -x -d 'The command that starts an entry'
complete -c sorrel -n "$in scan catalog" -s 0 -l null -d 'Expect a NUL after each path on standard input'
complete -c sorrel -n "$in scan catalog" -s j -l jobs -x -d 'Number of worker processes'
complete -c sorrel -n "$in scan catalog" -l max-memory -x -d 'Memory limit of a worker in MiB'
complete -c sorrel -n "$in scan catalog" -l timeout -x -d 'Time limit for a file in seconds'
complete -c sorrel -n "$in scan catalog" -l no-progress -d 'Do not show progress'
complete -c sorrel -n "$in scan" -l ordered -d 'Keep the order of the paths'
complete -c sorrel -n "$in scan" -l icon -x -a '48 96 192 512' -d 'Add the icon'
complete -c sorrel -n "$in scan" -l lint -d 'Add the findings of lint'
complete -c sorrel -n "$in catalog" -l title -x -d 'Title of the page'
