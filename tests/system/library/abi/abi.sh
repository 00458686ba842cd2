#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# abi.sh LIBRARY BASELINE HEADERS...: checks that programs linked with the library of BASELINE run with LIBRARY: every operation in
# the headers still exists, and every type in them has the same layout. Additions are allowed. LIBRARY has debug information.
# With --update, BASELINE is written again.
# A baseline names its Qt and its processor. Without a baseline for this machine, the test is skipped.
set -euo pipefail
. "$(dirname "$0")/../../../support/skip.sh"
update=
if [ "$1" = --update ]; then
    update=yes
    shift
fi
library=$1 baseline=$2
shift 2
export LC_ALL=C

fail() {
    echo "$1" >&2
    exit 1
}

headers=()
for directory; do
    headers+=(--headers-dir "$directory")
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
readelf -SW "$library" | grep -qF ' .debug_info ' || fail "$library has no debug information"
abidw "${headers[@]}" --suppressions "$(dirname "$0")/public.suppr" --drop-private-types --exported-interfaces-only \
    --no-show-locs --no-corpus-path --no-comp-dir-path --out-file "$work/new.abi" "$library"
grep -q '<function-decl' "$work/new.abi" || fail "$library shows no operation"

if [ -n "$update" ]; then
    cp "$work/new.abi" "$baseline"
    exit
fi
[ -f "$baseline" ] || skip abi "there is no ${baseline##*/} to compare with"
status=0
report=$(abidiff --no-added-syms --no-unreferenced-symbols "$baseline" "$work/new.abi") || status=$?
[ "$status" -eq 0 ] || fail "programs that are linked with the library may fail (abidiff's status $status):"$'\n'"$report"
