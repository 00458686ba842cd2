# SPDX-License-Identifier: LGPL-2.1-or-later
# For scripts to source.

# need PROGRAM PACKAGE: ends the script when a program that it runs is missing.
need() {
    command -v "$1" >/dev/null && return
    echo "the program $1, of the package $2, is missing" >&2
    exit 1
}

# subcommands PROGRAM: those that `PROGRAM --help` lists, one a line; none for a program that has none.
subcommands() {
    "$1" --help | sed -n '/^Commands:$/,/^$/s/^  \([a-z]*\) .*/\1/p'
}

# options PROGRAM [SUBCOMMAND]: the options, one a line, that `PROGRAM [SUBCOMMAND] --help` describes.
options() {
    "$@" --help | sed -n 's/^  \(-[^ ].*\)/\1/p' | sed 's/  .*//' | grep -oE '(^|[ ,])--?[A-Za-z0-9][A-Za-z0-9-]*' \
        | tr -d ' ,' | sort -u
}
