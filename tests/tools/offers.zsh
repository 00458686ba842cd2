# SPDX-License-Identifier: LGPL-2.1-or-later
# zsh -f offers.zsh FUNCTIONS WORD...: prints the completions that Zsh offers for the last WORD, one per line, with the
# completion functions of the directory FUNCTIONS. It presses the Tab key in a shell with its own terminal, whose completion
# writes its list to a file in the current directory.
zmodload zsh/zpty || exit 1
site=$1
shift

rm -f zsh.offers zsh.done
cat > .zshrc <<'END'
autoload -Uz compinit
compinit -u -D
compadd() {
    local -a offers
    # These options add nothing to the list.
    if [[ ${@[1,(i)-(|-)]} != *-[OAD]* ]]; then
        builtin compadd -A offers "$@"
        print -rl -- $offers >> zsh.offers
    fi
    builtin compadd "$@"
}
finished() { : > zsh.done }
comppostfuncs=(finished)
LISTMAX=1000
PROMPT=ready
END
export ZDOTDIR=$PWD FPATH=$site:$FPATH
zpty shell zsh -d -i
zpty -r -m shell answer '*ready*'
zpty -w -n shell "$*"$'\t'
for ((i = 0; i < 1200; ++i)); do
    [[ -e zsh.done ]] && break
    zpty -r -t shell answer
    sleep 0.1
done
zpty -d shell
[[ -e zsh.done ]] || exit 1
[[ ! -e zsh.offers ]] || grep -v '^$' zsh.offers
