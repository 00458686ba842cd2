#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# values.sh: checks that Bash, Zsh and fish offer the values of the program's options and the names of packages, and that the
# program accepts these values.
set -euo pipefail
export LC_ALL=C.UTF-8 TERM=dumb
tests=$(cd "$(dirname "$0")/.." && pwd)
. "$tests/options.sh"
. "$tests/shells.sh"
need sorrel-thumbnailer Sorrel
need bash bash
need fish fish
need zsh zsh
share=$(dirname "$(dirname "$(command -v sorrel-thumbnailer)")")/share
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cd "$directory"
mkdir home
touch home/one.apk home/two.APKS home/other.txt

status=0
for shell in bash fish zsh; do
    shapes=$("in_$shell" "$share" sorrel-thumbnailer --shape "" | sort | paste -sd ' ')
    [ "$shapes" = "circle none rounded squircle" ] || { echo "$shell offers the shapes $shapes" >&2; status=1; }
    for option in -s --size; do
        sizes=$("in_$shell" "$share" sorrel-thumbnailer $option "" | sort -n | paste -sd ' ')
        [ "$sizes" = "64 128 256 512 1024" ] || { echo "$shell offers the sizes $sizes" >&2; status=1; }
    done
    files=$("in_$shell" "$share" sorrel-thumbnailer home/)
    for file in one.apk two.APKS; do
        grep -qE "(^|/)$file\$" <<<"$files" || { echo "$shell does not offer $file" >&2; status=1; }
    done
done
# The program checks a value before the missing file.
for shape in circle none rounded squircle; do
    code=0
    sorrel-thumbnailer --shape $shape missing.apk icon.png 2>/dev/null || code=$?
    [ $code = 1 ] || { echo "the program does not know the shape $shape" >&2; status=1; }
done
exit $status
