# SPDX-License-Identifier: LGPL-2.1-or-later
# Other scripts source this file.

# need PROGRAM PACKAGE: ends the script when PROGRAM is missing.
need() {
    command -v "$1" >/dev/null && return
    echo "the program $1, of the package $2, is missing" >&2
    exit 1
}

# subcommands PROGRAM: prints the subcommands in `PROGRAM --help`, one per line.
subcommands() {
    "$1" --help | sed -n '/^Commands:$/,/^$/s/^  \([a-z]*\) .*/\1/p'
}

# options PROGRAM [SUBCOMMAND]: prints the options in `PROGRAM [SUBCOMMAND] --help`, one per line.
options() {
    "$@" --help | sed -n 's/^  \(-[^ ].*\)/\1/p' | sed 's/  .*//' | grep -oE '(^|[ ,])--?[A-Za-z0-9][A-Za-z0-9-]*' \
        | tr -d ' ,' | sort -u
}
