# SPDX-License-Identifier: LGPL-2.1-or-later
# Bash completion for sorrel-thumbnailer

_sorrel_thumbnailer() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} file
    COMPREPLY=()
    case $previous in
        -s | --size)
            mapfile -t COMPREPLY < <(compgen -W "64 128 256 512 1024" -- "$current")
            return
            ;;
        --shape)
            mapfile -t COMPREPLY < <(compgen -W "circle none rounded squircle" -- "$current")
            return
            ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "-s --size --shape -h --help -v --version" -- "$current")
        return
    fi
    compopt -o filenames 2>/dev/null
    while IFS= read -r file; do
        # PNG files as well, because the output may replace one.
        [[ -d $file || ${file,,} =~ \.(apk|apks|xapk|apkm|png)$ ]] && COMPREPLY+=("$file")
    done < <(compgen -f -- "$current")
}
complete -F _sorrel_thumbnailer sorrel-thumbnailer
