#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# symbols.sh SOURCES: checks that the symbols files of the Debian packages have every name in the lists of exports, and that the
# files of the kit, which exports nothing else, have no other names.
set -euo pipefail
sources=$1
export LC_ALL=C
status=0

promised() {
    sed -nE 's/^ \(c\+\+\)"(.*)@Base" [0-9.]+$/\1/p' "$sources/packaging/debian/$1" | sort -u
}
exported() {
    grep -v '^#' "$sources/tests/system/library/$1" | sort -u
}
missing=$(comm -13 <(promised libsorrel0.symbols) <(exported exports.txt))
[ -z "$missing" ] || { printf 'libsorrel0.symbols lacks:\n%s\n' "$missing" >&2; status=1; }
for part in core gui; do
    diff <(promised "libsorrelkit${part}0.symbols") <(exported "kit$part-exports.txt") >&2 \
        || { echo "libsorrelkit${part}0.symbols and kit$part-exports.txt differ" >&2; status=1; }
done
exit $status
