# SPDX-License-Identifier: LGPL-2.1-or-later
# Fish completion for sorrel-viewer

complete -c sorrel-viewer -l compare -r -d 'Compare with another package'
complete -c sorrel-viewer -l install-command -x -d 'Command of the button Install'
complete -c sorrel-viewer -s h -l help -d 'Show help'
complete -c sorrel-viewer -s v -l version -d 'Show the version'
