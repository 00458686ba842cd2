#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# check.sh DIRECTORY NAME QT EXPORTS NEEDS [--only]: checks the library NAME in DIRECTORY, made with Qt of the major version QT: its
# file names and soname; that it needs no libraries except NEEDS (a regular expression), QtCore and those of the compiler; and that
# it exports every symbol in EXPORTS; with --only, no other functions.
set -euo pipefail
directory=$1 name=$2 qt=$3 exports=$4 needs=$5 only=${6:-}
library=$directory/$name.so.0.5.1
export LC_ALL=C

fail() {
    echo "$name: $1" >&2
    exit 1
}

[ -f "$library" ] && [ ! -L "$library" ] || fail "$name.so.0.5.1 is missing"
for link in "$name.so.0" "$name.so"; do
    [ -L "$directory/$link" ] || fail "the link $link is missing"
    [ "$(readlink -f "$directory/$link")" = "$(readlink -f "$library")" ] || fail "$link leads elsewhere"
done

dynamic=$(readelf -dW "$library")
grep -qF "Library soname: [$name.so.0]" <<<"$dynamic" || fail "the soname is not $name.so.0"

allowed="$needs|libQt${qt}Core|libquazip1-qt$qt|libdeflate|libz|libstdc\+\+|libgcc_s|libc|libm|ld-linux[-a-z0-9_]*"
allowed+='|lib(a|ub)san'
needed=$(sed -n 's/.*Shared library: \[\(.*\)\]/\1/p' <<<"$dynamic")
extra=$(grep -vE "^($allowed)\.so" <<<"$needed" || true)
[ -z "$extra" ] || fail "needs $extra"

# QStringList is a name for QList<QString> with Qt 6, and a class of its own with Qt 5.
named() {
    c++filt | sed 's/QList<QString>/QStringList/g' | sort -u
}
listed=$(grep -v '^#' "$exports" | sort -u)
missing=$(comm -13 <(nm -D --defined-only "$library" | cut -d' ' -f3- | named) <(echo "$listed"))
[ -z "$missing" ] || fail "does not export:"$'\n'"$missing"
if [ "$only" = --only ]; then
    # Weak symbols too, without the instances of the standard library's templates.
    functions=$(nm -D --defined-only "$library" | sed -n 's/^[0-9a-f]* [TW] //p' | grep -vE '^_ZN?K?St' | named)
    extra=$(comm -23 <(echo "$functions") <(echo "$listed"))
    [ -z "$extra" ] || fail "exports, too:"$'\n'"$extra"
fi
