#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# loads.sh PACKAGE DIRECTORY: fails when a command of the installed sorrel that draws nothing loads a library for drawing, a part
# of Qt other than Core, or a plugin, in its own process or in a worker. Runs each on PACKAGE, which is in DIRECTORY. A command
# that draws shows that this check would find them.
set -euo pipefail
package=$1 directory=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# loads ARGUMENT...: the libraries of this project and of Qt, and the plugins, that the command initializes.
loads() {
    rm -f "$work"/log.*
    # Each process writes a file of its own.
    LD_DEBUG=libs LD_DEBUG_OUTPUT=$work/log sorrel "$@" >"$work/output" </dev/null
    [ -s "$work/output" ] || { echo "sorrel $* prints nothing" >&2; exit 1; }
    cat "$work"/log.* | sed -n 's/.*calling init: //p' | grep -E '/lib(Qt|sorrel)|/plugins/' | sort -u
}

drawing='/libQt[56](Gui|Xml|Network|Svg|Widgets|DBus)|/libsorrel(-qt6)?\.so|/libsorrelkitgui|/plugins/'

# loads_no_drawing ARGUMENT...
loads_no_drawing() {
    local found
    found=$(loads "$@")
    [[ $found == */libQt?Core* ]] || { echo "sorrel $* seems to load no QtCore" >&2; exit 1; }
    ! grep -E "$drawing" <<<"$found" || { echo "sorrel $* loads these" >&2; exit 1; }
}

loads_no_drawing --help
loads_no_drawing --version
loads_no_drawing info "$package"
loads_no_drawing info --json "$package"
loads_no_drawing info --help
loads_no_drawing manifest "$package"
loads_no_drawing resources "$package"
loads_no_drawing files "$package"
loads_no_drawing lint "$package"
loads_no_drawing scan "$directory"
loads_no_drawing scan --lint "$directory"

for command in "icon $package" "lint --draw $package" "scan --icon 16 $directory"; do
    # shellcheck disable=SC2086
    found=$(loads $command)
    for library in 'libQt[56]Gui' libsorrelkitgui; do
        grep -qE "/$library" <<<"$found" || { echo "sorrel $command loads no $library" >&2; exit 1; }
    done
done
