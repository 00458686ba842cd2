#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# reproducible.sh SOURCE CMAKE-OPTION...: whether the libraries, debug information and all, and what belongs to them are the
# same, byte for byte, whichever directories the sources and the build tree are in, and whenever they were made.
set -euo pipefail
source=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# make_in SOURCES TREE: builds a copy of the sources in one directory in another, and installs it beside that.
make_in() {
    local copy=$1 tree=$2
    shift 2
    mkdir -p "$copy"
    cp -r "$source"/{CMakeLists.txt,cmake,docs,include,kit,src,tools} "$copy"
    find "$copy" -type f -exec touch -d "@$RANDOM" {} +
    # Many sources at a time: what is told apart here is in every one of them.
    cmake -G Ninja -S "$copy" -B "$tree" "$@" -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=16 \
        -D CMAKE_DISABLE_PRECOMPILE_HEADERS=ON -D SORREL_BUILD_TESTS=OFF -D SORREL_BUILD_SAMPLES=OFF \
        -D SORREL_BUILD_TOOLS=OFF -D SORREL_BUILD_EXAMPLES=OFF -D SORREL_BUILD_DOCS=OFF >/dev/null
    ninja -C "$tree" sorrel sorrelkit >"$work/log" || { cat "$work/log" >&2; return 1; }
}

make_in "$work/one" "$work/one/build" "$@"
make_in "$work/another/place/for/sorrel" "$work/elsewhere" "$@"
for library in "$work"/one/build/lib/*; do
    name=$(basename "$library")
    readelf -SW "$library" | grep -qF ' .debug_info ' || { echo "$name has no debug information" >&2; exit 1; }
    cmp "$library" "$work/elsewhere/lib/$name"
    # Names of sources are in it, or that they are the same would prove nothing.
    strings -a "$library" >"$work/texts"
    grep -q '[A-Za-z]\.cpp$' "$work/texts" || { echo "$name names no source" >&2; exit 1; }
    ! grep -F "$work" "$work/texts" >&2 || { echo "$name names where it was built" >&2; exit 1; }
done
