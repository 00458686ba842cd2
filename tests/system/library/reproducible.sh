#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# reproducible.sh SOURCE CMAKE-OPTION...: checks that the installed libraries, including debug information, and their files are the
# same, byte for byte, for other directories of the sources and of the build tree, and at another time.
set -euo pipefail
source=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# make_in SOURCES TREE: copies the sources to SOURCES, builds them in TREE, and installs them beside it.
make_in() {
    local copy=$1 tree=$2
    shift 2
    mkdir -p "$copy"
    cp -r "$source"/{CMakeLists.txt,cmake,docs,include,kit,src,tools} "$copy"
    find "$copy" -type f -exec touch -d "@$RANDOM" {} +
    # Many sources in one file: every source would show a difference.
    cmake -G Ninja -S "$copy" -B "$tree" "$@" -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=16 \
        -D CMAKE_DISABLE_PRECOMPILE_HEADERS=ON -D SORREL_BUILD_TESTS=OFF -D SORREL_BUILD_SAMPLES=OFF \
        -D SORREL_BUILD_TOOLS=OFF -D SORREL_BUILD_QML=OFF -D SORREL_BUILD_KDE=OFF -D SORREL_BUILD_VIEWER=OFF \
        -D SORREL_BUILD_EXAMPLES=OFF -D SORREL_BUILD_DOCS=OFF >/dev/null
    ninja -C "$tree" sorrel sorrelkitcore sorrelkitgui sorrelshelf sorreltrust >"$work/log" || { cat "$work/log" >&2; return 1; }
}

make_in "$work/one" "$work/one/build" "$@"
make_in "$work/another/place/for/sorrel" "$work/elsewhere" "$@"
for library in "$work"/one/build/lib/*; do
    name=$(basename "$library")
    readelf -SW "$library" | grep -qF ' .debug_info ' || { echo "$name has no debug information" >&2; exit 1; }
    cmp "$library" "$work/elsewhere/lib/$name"
    # Without names of sources in the files, the comparison would prove nothing.
    strings -a "$library" >"$work/texts"
    grep -q '[A-Za-z]\.cpp$' "$work/texts" || { echo "$name names no source" >&2; exit 1; }
    ! grep -F "$work" "$work/texts" >&2 || { echo "$name names where it was built" >&2; exit 1; }
done
