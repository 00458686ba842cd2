#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# full_disk.sh SORREL SAMPLES: fills an index on a disk of 900 KiB: the command names the reason, prints all reports, and loses
# no row of another folder. With room on the disk, the rest of the index follows.
set -euo pipefail
. "$(dirname "$0")/../../support/skip.sh"
if [[ ${SORREL_ON_DISK:-} == "" ]]; then
    message=$(unshare --map-root-user --mount mount -t tmpfs tmpfs /mnt 2>&1) || skip sandbox "${message%%$'\n'*}"
    directory=$(mktemp -d)
    trap 'rm -rf "$directory"' EXIT
    SORREL_ON_DISK=$directory unshare --map-root-user --mount bash "$0" "$@"
    exit
fi
sorrel=$1
samples=$2
directory=$SORREL_ON_DISK
index=$directory/disk/shelf.db
packages=200
export LC_ALL=C.UTF-8

fail() {
    echo "$1" >&2
    exit 1
}

mkdir "$directory"/{disk,few,many}
mount -t tmpfs -o size=900k tmpfs "$directory/disk"
cp "$samples"/{atlas,notes}.aapt2.apk "$directory/few"
for ((number = 0; number < packages; ++number)); do
    cp "$samples/babel.aapt2.apk" "$directory/many/$number.apk"
done

"$sorrel" scan --index "$index" "$directory/few" >/dev/null
"$sorrel" find --index "$index" org.example >"$directory/rows"
[ -s "$directory/rows" ] || fail "the index has no rows"

status=0
"$sorrel" scan --index "$index" "$directory/many" >"$directory/reports" 2>"$directory/errors" || status=$?
[ "$status" = 1 ] || fail "the status with a full disk is $status"
grep -qx "sorrel: index: $index: database or disk is full" "$directory/errors" || fail "$(cat "$directory/errors")"
[ "$(wc -l <"$directory/reports")" = $packages ] || fail "reports are missing with a full disk"
"$sorrel" find --index "$index" org.example | grep -F "$directory/few/" | cmp - "$directory/rows" \
    || fail "rows of another folder changed"
rows=$("$sorrel" find --index "$index" org.example | wc -l)

mount -o remount,size=20m "$directory/disk"
"$sorrel" scan --index "$index" "$directory/many" | cmp - "$directory/reports" || fail "the reports are other ones"
more=$("$sorrel" find --index "$index" org.example | wc -l)
[ "$more" -gt "$rows" ] || fail "the disk was not full"
"$sorrel" find --index "$index" --json org.example | grep -oE "$directory/many/[0-9]+\.apk" | sort -u | wc -l \
    | grep -qx $packages || fail "packages are missing with room on the disk"
[ ! -e "$index.2" ] || fail "another index took its place"
