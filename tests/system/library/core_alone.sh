#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# core_alone.sh LIBRARY PROGRAM DRAWING: fails when the dynamic linker loads a part of Qt other than Core, or libsorrel, with
# LIBRARY or PROGRAM. DRAWING is a program that needs QtGui, to see that this check would find it.
set -euo pipefail

# loads FILE: the libraries that the dynamic linker loads with the file, which are not for facts alone.
loads() {
    ldd "$1" | grep -oE '^\s*lib(Qt[56]|sorrel)[^ ]*' | grep -vE 'libQt[56]Core|libsorrelkitcore' || true
}

for file in "$1" "$2"; do
    extra=$(loads "$file")
    [ -z "$extra" ] || { echo "${file##*/} loads"$'\n'"$extra" >&2; exit 1; }
done
[[ $(loads "$3") == *Gui* ]] || { echo "${3##*/} does not load QtGui" >&2; exit 1; }
