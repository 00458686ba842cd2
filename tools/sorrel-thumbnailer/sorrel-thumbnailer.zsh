#compdef sorrel-thumbnailer
# SPDX-License-Identifier: LGPL-2.1-or-later
# Zsh completion for sorrel-thumbnailer

_arguments -s -S \
    '(-h --help -v --version -s --size)'{-s,--size}'[largest width and height in pixels]:pixels:(64 128 256 512 1024)' \
    '(-h --help -v --version)--shape[outline of adaptive icons]:shape:(circle none rounded squircle)' \
    '(- *)'{-h,--help}'[show help]' \
    '(- *)'{-v,--version}'[show the version]' \
    '1:package:_files -g "*.(#i)(apk|apks|xapk|apkm)(-.)"' \
    '2:PNG file:_files -g "*.(#i)png(-.)"'
