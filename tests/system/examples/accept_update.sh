#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# accept_update.sh PROGRAM PACKAGE: signs the unsigned PACKAGE with several keys, which are made here, by apksigner, and checks
# that the example PROGRAM accepts and refuses the right ones as updates of each other.
set -euo pipefail
program=$1 package=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

for name in first second; do
    keytool -genkeypair -keystore "$name.jks" -storepass secret -alias key -keyalg RSA -dname "CN=$name" 2>log ||
        { cat log >&2; exit 1; }
done

# sign NAME KEY [OPTION...]
sign() {
    local name=$1 key=$2
    shift 2
    apksigner sign --ks "$key.jks" --ks-pass pass:secret --out "$name.apk" "$@" "$package"
}
sign installed first
sign update first
sign foreign second
apksigner rotate --out lineage --old-signer --ks first.jks --ks-pass pass:secret --new-signer --ks second.jks --ks-pass pass:secret
apksigner sign --ks first.jks --ks-pass pass:secret --next-signer --ks second.jks --ks-pass pass:secret --lineage lineage \
    --out rotated.apk "$package"
cp update.apk damaged.apk
printf 'X' | dd of=damaged.apk bs=1 seek=60 conv=notrunc status=none

# expect STATUS TEXT INSTALLED UPDATE
expect() {
    local status=0 output
    output=$("$program" "$3" "$4") || status=$?
    [ "$status" = "$1" ] && [[ $output == $2 ]] || { echo "$3, $4: $output (status $status), expected $2 ($1)" >&2; exit 1; }
}
expect 0 'install it' installed.apk update.apk
expect 3 'refuse it: someone else signed it' installed.apk foreign.apk
expect 3 'refuse it: it is not verified: *' installed.apk damaged.apk
expect 3 'refuse it: it is not verified: *' installed.apk "$package"
expect 3 'refuse it: it is not verified: *' installed.apk missing.apk
expect 0 'install it' installed.apk rotated.apk
# By default, a lineage allows no return to the old key.
expect 3 'refuse it: someone else signed it' rotated.apk installed.apk
