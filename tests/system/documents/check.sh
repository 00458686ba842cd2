#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# check.sh PROGRAMS KEPT DOCUMENT...: checks that every test in the documents (`tst_x`, `tst_x::function`) exists in a test
# program of the directory PROGRAMS, that KEPT names every test called keeps..., and that linked files exist. The sources have
# the tests of a part that is not built, such as the plugins for KDE.
set -euo pipefail
programs=$1 kept=$2
shift 2
export LC_ALL=C

fault() {
    echo "$1" >&2
    status=1
}
status=0

functions=$(for program in "$programs"/tst_*; do
    "$program" -functions | sed -n "s/^\([A-Za-z0-9_]*\)()$/${program##*/}::\1/p"
done)
for source in "$(dirname "$0")"/../../kde/tst_*.cpp; do
    program=$(basename "$source" .cpp)
    functions+=$'\n'$(sed -nE "s/^void \w+::(\w+)\(\)\$/$program::\1/p" "$source")
done
[ -n "$functions" ] || fault "$programs has no test functions"

for document in "$kept" "$@"; do
    [ -f "$document" ] || fault "$document is missing"
    for name in $(grep -oE '\btst_[A-Za-z0-9_]+(::[A-Za-z0-9_]+)?' "$document" | sort -u); do
        grep -qE "^$name(::|$)" <<<"$functions" || fault "$document names the test $name, which is missing"
    done
    for link in $(grep -oE '\]\([^)#]+' "$document" | cut -c3- | grep -v :// | sort -u); do
        [ -e "$(dirname "$document")/$link" ] || fault "$document links to $link, which is missing"
    done
done

for name in $(grep '::keeps' <<<"$functions"); do
    grep -qF "\`$name\`" "$kept" || fault "$kept does not name the test $name"
done
exit $status
