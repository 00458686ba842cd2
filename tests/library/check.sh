#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# check.sh DIRECTORY EXPORTS: whether the library in DIRECTORY has its names, needs no library that it should not, and
# exports every symbol that EXPORTS lists.
set -euo pipefail
directory=$1 exports=$2
library=$directory/libsorrel.so.0.5.1
export LC_ALL=C

fail() {
    echo "libsorrel: $1" >&2
    exit 1
}

[ -f "$library" ] && [ ! -L "$library" ] || fail "libsorrel.so.0.5.1 is missing"
for link in libsorrel.so.0 libsorrel.so; do
    [ -L "$directory/$link" ] || fail "the link $link is missing"
    [ "$(readlink -f "$directory/$link")" = "$(readlink -f "$library")" ] || fail "$link leads elsewhere"
done

dynamic=$(readelf -dW "$library")
grep -qF 'Library soname: [libsorrel.so.0]' <<<"$dynamic" || fail "the soname is not libsorrel.so.0"

allowed='libQt5(Core|Gui|Xml)|libquazip1-qt5|libstdc\+\+|libgcc_s|libc|libm|ld-linux[-a-z0-9_]*|lib(a|ub)san'
needed=$(sed -n 's/.*Shared library: \[\(.*\)\]/\1/p' <<<"$dynamic")
extra=$(grep -vE "^($allowed)\.so" <<<"$needed" || true)
[ -z "$extra" ] || fail "needs $extra"

missing=$(comm -13 <(nm -DC --defined-only "$library" | cut -d' ' -f3- | sort -u) <(grep -v '^#' "$exports" | sort -u))
[ -z "$missing" ] || fail "does not export:"$'\n'"$missing"
