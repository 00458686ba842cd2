#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# core_alone.sh LIBRARY PROGRAM DRAWING TRUST: fails when the dynamic linker loads a part of Qt other than Core, libsorrel, or a
# library of cryptography, with LIBRARY or PROGRAM, or the last with DRAWING. DRAWING is a program that needs QtGui, and TRUST a
# library that needs cryptography, to see that this check would find them.
set -euo pipefail

# loads FILE: the libraries that the dynamic linker loads with the file, which are not for facts alone.
loads() {
    ldd "$1" | grep -oE '^\s*lib(Qt[56]|sorrel|crypto|ssl)[^ ]*' | grep -vE 'libQt[56]Core|libsorrelkitcore' || true
}

for file in "$1" "$2"; do
    extra=$(loads "$file")
    [ -z "$extra" ] || { echo "${file##*/} loads"$'\n'"$extra" >&2; exit 1; }
done
[[ $(loads "$3") == *Gui* ]] || { echo "${3##*/} does not load QtGui" >&2; exit 1; }
[[ $(loads "$3") != *libcrypto* ]] || { echo "${3##*/} loads libcrypto" >&2; exit 1; }
[[ $(loads "$4") == *libcrypto* ]] || { echo "${4##*/} does not load libcrypto" >&2; exit 1; }
