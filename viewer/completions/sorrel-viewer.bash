# SPDX-License-Identifier: LGPL-2.1-or-later
# Bash completion for sorrel-viewer

_sorrel_viewer() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} file
    COMPREPLY=()
    if [[ $previous == --install-command ]]; then
        return
    fi
    if [[ $current == -* && $previous != --compare ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--compare --install-command -h --help -v --version" -- "$current")
        return
    fi
    compopt -o filenames 2>/dev/null
    while IFS= read -r file; do
        [[ -d $file || ${file,,} =~ \.(apk|apks|xapk|apkm)$ ]] && COMPREPLY+=("$file")
    done < <(compgen -f -- "$current")
}
complete -F _sorrel_viewer sorrel-viewer
