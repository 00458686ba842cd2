# SPDX-License-Identifier: LGPL-2.1-or-later
# Fish completion for sorrel-thumbnailer

complete -c sorrel-thumbnailer -s s -l size -x -a '64 128 256 512 1024' -d 'Largest width and height in pixels'
complete -c sorrel-thumbnailer -l shape -x -a 'circle none rounded squircle' -d 'Outline of adaptive icons'
complete -c sorrel-thumbnailer -s h -l help -d 'Show help'
complete -c sorrel-thumbnailer -s v -l version -d 'Show the version'
