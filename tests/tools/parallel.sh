#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# parallel.sh SAMPLES: whether GNU Parallel spreads the installed `sorrel scan` over processes and machines as docs/scaling.md
# shows it, and every package gets the line that it gets otherwise. In place of ssh stands a program that takes its arguments
# and runs the command here.
set -euo pipefail
samples=$1
export LC_ALL=C.UTF-8

command -v parallel >/dev/null || { echo "GNU Parallel is missing" >&2; exit 1; }
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cd "$directory"
mkdir "shelf of packages" home
for copy in 1 2 3 4 5; do
    for sample in "$samples"/*.apk; do
        cp "$sample" "shelf of packages/$(basename "$sample" .apk) $copy.apk"
    done
done
echo "no package" >"shelf of packages/bad.apk"
export HOME=$directory/home

sorted_scan() {
    { "$@" 2>errors || echo "$?" >status; } | sort
}

sorted_scan sorrel scan "shelf of packages" >expected
[ "$(wc -l <expected)" -gt 50 ] || { echo "there are no samples" >&2; exit 1; }
[ "$(cat status)" = 1 ]

fail() {
    echo "$1" >&2
    cat errors >&2
    exit 1
}

rm status
find "shelf of packages" -name '*.apk' |
    sorted_scan parallel --will-cite --jobs 2 --pipe -N 20 sorrel scan -j 1 - >actual
diff -q expected actual || fail "the lines of two processes differ"
# Parallel answers how many of its jobs failed.
[ "$(cat status)" = 1 ] || fail "the status is lost"
grep -qx "sorrel: shelf of packages/bad.apk: could not open APK file" errors || fail "the error is lost"

cat >ssh <<'END'
#!/bin/sh
# Options, the host's name, then the command.
while [ "${1#-}" != "$1" ]; do
    case $1 in -o | -l | -p | -i | -F) shift ;; esac
    shift
done
echo "$1" >>"${0%/*}/hosts"
shift
[ "$1" != -- ] || shift
# A server of ssh names the login's shell, and Parallel's other end runs the job with it.
export SHELL=/bin/sh
cd "$HOME" && exec sh -c "$*"
END
chmod +x ssh
ln -s "$directory/shelf of packages" home/
: >hosts
rm status
find "shelf of packages" -name '*.apk' |
    sorted_scan env PARALLEL_SSH="$directory/ssh" parallel --will-cite --jobs 2 --pipe -N 20 \
        --sshlogin one.example,two.example --env PATH --env LD_LIBRARY_PATH sorrel scan -j 1 - >actual
diff -q expected actual || fail "the lines of two machines differ"
grep -q one.example hosts && grep -q two.example hosts || fail "not both machines were used"
