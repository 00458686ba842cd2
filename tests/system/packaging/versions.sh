#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# versions.sh SOURCES VERSION METAINFO: checks that all files with the version have VERSION.
set -euo pipefail
sources=$1 version=$2 metainfo=$3
status=0

# has_version FILE PATTERN [GROUP]: checks that GROUP (by default the first) in the first match of PATTERN is VERSION.
has_version() {
    local found
    found=$(sed -nE "s/$2/\\${3:-1}/p" "$1" | head -n 1)
    [ "$found" = "$version" ] || { echo "$1 has the version '$found', not $version" >&2; status=1; }
}
has_version "$sources/CMakeLists.txt" '^project\(Sorrel VERSION ([0-9.]+) .*'
has_version "$sources/CHANGELOG.md" '^(## \[|Becomes )([0-9.]+).*' 2
has_version "$sources/packaging/debian/changelog" '^sorrel \(([0-9.]+)-[^-]*\) .*'
has_version "$sources/packaging/rpm/sorrel.spec" '^Version: +([0-9.]+)$'
has_version "$sources/packaging/rpm/sorrel.spec" '^\* .* - ([0-9.]+)-[0-9]+$'
has_version "$sources/viewer/org.example.sorrel.viewer.metainfo.xml" '.*<release version="([^"]+)".*'
has_version "$metainfo" '.*<release version="([^"]+)".*'
exit $status
