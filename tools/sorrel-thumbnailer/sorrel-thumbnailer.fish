# SPDX-License-Identifier: LGPL-2.1-or-later
# Fish completion for sorrel-thumbnailer

complete -c sorrel-thumbnailer -s s -l size -x -a '64 128 256 512 1024' -d 'Pixels a side'
complete -c sorrel-thumbnailer -l shape -x -a 'circle none rounded squircle' -d 'Outline of adaptive icons'
complete -c sorrel-thumbnailer -s h -l help -d 'Print help'
complete -c sorrel-thumbnailer -s v -l version -d 'Print the version'
