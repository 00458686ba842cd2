#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# loads.sh PACKAGE DIRECTORY: fails when a command of the installed sorrel that draws nothing loads a library for drawing, a part
# of Qt other than Core, or a plugin, or when one that verifies nothing loads a library of cryptography, in its own process or
# in a worker. Runs each on PACKAGE, which is in DIRECTORY. Commands that draw or verify show that this check would find them.
set -euo pipefail
package=$1 directory=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# loads ARGUMENT...: the libraries of this project and of Qt, and the plugins, that the command initializes.
loads() {
    rm -f "$work"/log.*
    # Each process writes a file of its own.
    LD_DEBUG=libs LD_DEBUG_OUTPUT=$work/log sorrel "$@" >"$work/output" </dev/null || [ "$1" = verify ]
    [ -s "$work/output" ] || { echo "sorrel $* prints nothing" >&2; exit 1; }
    cat "$work"/log.* | sed -n 's/.*calling init: //p' | grep -E '/lib(Qt|sorrel|crypto|ssl)|/plugins/' | sort -u
}

drawing='/libQt[56](Gui|Xml|Network|Svg|Widgets|DBus)|/libsorrel(-qt6)?\.so|/libsorrelkitgui|/plugins/'

cryptography='/lib(crypto|ssl|sorreltrust)'

# loads_none_of PATTERN ARGUMENT...
loads_none_of() {
    local pattern=$1 found
    shift
    found=$(loads "$@")
    [[ $found == */libQt?Core* ]] || { echo "sorrel $* seems to load no QtCore" >&2; exit 1; }
    ! grep -E "$pattern" <<<"$found" || { echo "sorrel $* loads these" >&2; exit 1; }
}

loads_core_alone() {
    loads_none_of "$drawing|$cryptography" "$@"
}

# loads_all ARGUMENT... -- LIBRARY...
loads_all() {
    local arguments=() found
    for (( ; $# > 0; )); do
        [ "$1" != -- ] || { shift; break; }
        arguments+=("$1")
        shift
    done
    found=$(loads "${arguments[@]}")
    for library in "$@"; do
        grep -qE "/$library" <<<"$found" || { echo "sorrel ${arguments[*]} loads no $library" >&2; exit 1; }
    done
}

loads_core_alone --help
loads_core_alone --version
loads_core_alone info "$package"
loads_core_alone info --json "$package"
loads_core_alone info --help
loads_core_alone manifest "$package"
loads_core_alone resources "$package"
loads_core_alone files "$package"
loads_core_alone scan "$directory"

for command in lint verify "info --signer" "scan --lint" "scan --verify"; do
    # shellcheck disable=SC2086
    loads_none_of "$drawing" $command "$package"
done
for command in lint verify "info --signer" "scan --lint" "scan --verify" "scan --icon 16 --verify"; do
    # shellcheck disable=SC2086
    loads_all $command "$package" -- libcrypto libsorreltrust
done

# An index needs Qt's driver for SQLite, and nothing that draws.
sorrel scan --index "$work/shelf.db" "$package" >/dev/null
loads_none_of "/libQt[56](Gui|Xml|Network)|/libsorrel(-qt6)?\\.so|/libsorrelkitgui|$cryptography" find --index "$work/shelf.db" example
loads_all find --index "$work/shelf.db" example -- 'libQt[56]Sql'

for command in icon "lint --draw" "scan --icon 16"; do
    # shellcheck disable=SC2086
    loads_all $command "$package" -- 'libQt[56]Gui' libsorrelkitgui
done
