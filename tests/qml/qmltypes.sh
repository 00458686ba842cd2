#!/bin/sh
# SPDX-License-Identifier: LGPL-2.1-or-later
# qmltypes.sh QMLPLUGINDUMP IMPORTS FILE: fails when FILE is not the list of the types that the plugin below IMPORTS has.
# With UPDATE=1, writes the list to FILE.
set -eu
list=$(mktemp)
trap 'rm -f "$list"' EXIT
# Without the comments, one of which names the path of the module.
"$1" -nonrelocatable Sorrel 0.5 "$2" | grep -v "^//" >"$list"
[ -z "${UPDATE-}" ] || cp "$list" "$3"
diff -u "$3" "$list"
