#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# completions.sh PROGRAM: checks that Bash, Zsh and fish, with the completions installed beside PROGRAM, offer exactly the options
# in `PROGRAM --help`, the subcommands in it, and for each subcommand the options in `PROGRAM SUBCOMMAND --help`.
set -euo pipefail
program=$1
export LC_ALL=C.UTF-8 TERM=dumb
tests=$(cd "$(dirname "$0")" && pwd)
. "$tests/options.sh"
. "$tests/shells.sh"

status=0
fault() {
    echo "$1" >&2
    status=1
}

need "$program" Sorrel
need bash bash
need fish fish
need zsh zsh
share=$(dirname "$(dirname "$(command -v "$program")")")/share
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cd "$directory"

# offers_options PROGRAM [SUBCOMMAND]
offers_options() {
    local shell missing extra known offered
    known=$(options "$@")
    [ -n "$known" ] || fault "'$* --help' describes no options"
    for shell in bash fish zsh; do
        # A shell may offer long options only after two dashes.
        offered=$({ "in_$shell" "$share" "$@" -; "in_$shell" "$share" "$@" --; } | grep '^-' | sort -u) || true
        missing=$(comm -13 <(echo "$offered") <(echo "$known"))
        [ -z "$missing" ] || fault "$shell does not offer for '$*': $(paste -sd ' ' <<<"$missing")"
        extra=$(comm -23 <(echo "$offered") <(echo "$known"))
        [ -z "$extra" ] || fault "$shell offers for '$*', too: $(paste -sd ' ' <<<"$extra")"
    done
}

offers_options "$program"
for subcommand in $(subcommands "$program"); do
    for shell in bash fish zsh; do
        offered=$("in_$shell" "$share" "$program" "") || true
        grep -qxF -- "$subcommand" <<<"$offered" || fault "$shell does not offer the subcommand $subcommand"
    done
    offers_options "$program" "$subcommand"
done
exit $status
