#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# versions.sh SOURCES VERSION METAINFO: whether all that tells the version tells VERSION.
set -euo pipefail
sources=$1 version=$2 metainfo=$3
status=0

# tells FILE PATTERN [GROUP]: whether the version in the first match of PATTERN, its first group or this one, is VERSION.
tells() {
    local found
    found=$(sed -nE "s/$2/\\${3:-1}/p" "$1" | head -n 1)
    [ "$found" = "$version" ] || { echo "$1 tells the version '$found', not $version" >&2; status=1; }
}
tells "$sources/CMakeLists.txt" '^project\(Sorrel VERSION ([0-9.]+) .*'
tells "$sources/CHANGELOG.md" '^(## \[|Becomes )([0-9.]+).*' 2
tells "$sources/packaging/debian/changelog" '^sorrel \(([0-9.]+)-[^-]*\) .*'
tells "$sources/packaging/rpm/sorrel.spec" '^Version: +([0-9.]+)$'
tells "$sources/packaging/rpm/sorrel.spec" '^\* .* - ([0-9.]+)-[0-9]+$'
tells "$metainfo" '.*<release version="([^"]+)".*'
exit $status
