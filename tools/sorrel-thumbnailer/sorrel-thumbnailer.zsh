#compdef sorrel-thumbnailer
# SPDX-License-Identifier: LGPL-2.1-or-later
# Zsh completion for sorrel-thumbnailer

_arguments -s -S \
    '(-h --help -v --version -s --size)'{-s,--size}'[pixels a side]:pixels:(64 128 256 512 1024)' \
    '(-h --help -v --version)--shape[outline of adaptive icons]:shape:(circle none rounded squircle)' \
    '(- *)'{-h,--help}'[print help]' \
    '(- *)'{-v,--version}'[print the version]' \
    '1:package:_files -g "*.(#i)(apk|apks|xapk|apkm)(-.)"' \
    '2:PNG file:_files -g "*.(#i)png(-.)"'
