# SPDX-License-Identifier: LGPL-2.1-or-later
# Other scripts source this file. It prints the completions of real shells for an installed command. $tests is the directory of
# this file. The current directory is empty, and the shells may write to it.

# in_bash SHARE PROGRAM WORD...: prints the completions of Bash for the last WORD, one per line, with the files of the data
# directory SHARE. It calls the registered function, as readline does.
in_bash() {
    bash --norc --noprofile -c '
        set +e
        . "$1/bash-completion/completions/$2" || exit 1
        shift
        registered=$(complete -p "$1") || exit 1
        [[ $registered =~ -F\ ([^ ]+) ]] || exit 1
        COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMP_LINE="$*" COMP_POINT=$((${#COMP_LINE})) COMP_TYPE=9 COMP_KEY=9
        "${BASH_REMATCH[1]}" "$1" "${!#}" "${COMP_WORDS[COMP_CWORD - 1]}"
        for reply in "${COMPREPLY[@]}"; do
            echo "${reply% }"
        done' in_bash "$@"
}

# in_fish SHARE PROGRAM WORD...: prints the completions of fish.
in_fish() {
    local share=$1
    shift
    HOME=$PWD XDG_CONFIG_HOME=$PWD XDG_DATA_HOME=$PWD XDG_DATA_DIRS=$share:/usr/local/share:/usr/share \
        fish -c 'complete -C "$argv"' -- "$@" | cut -f 1
}

# in_zsh SHARE PROGRAM WORD...: prints the completions of Zsh.
in_zsh() {
    local share=$1
    shift
    HOME=$PWD timeout 300 zsh -f "$tests/offers.zsh" "$share/zsh/site-functions" "$@"
}
