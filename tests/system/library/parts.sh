#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# parts.sh SOURCE CMAKE-OPTION...: checks that a plain configuration needs only the dependencies of the libraries and prints each
# part that it leaves out with the reason, that a requested part without its requirements is an error, and that BUILD_TESTING
# works.
set -euo pipefail
source=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "$1" >&2
    cat "$work/output" >&2
    exit 1
}
# configure OPTION...: configures again; $work/output has the output of cmake with spaces for line breaks.
configure() {
    local status=0
    cmake --fresh -S "$source" -B "$work/build" "$@" >"$work/printed" 2>&1 || status=$?
    tr -s '\n ' '  ' <"$work/printed" >"$work/output"
    return $status
}
# prints TEXT
prints() {
    grep -qF -- "$1" "$work/output" || fail "cmake does not print: $1"
}
# Hides the installed requirements.
hidden=(-D CMAKE_IGNORE_PATH=/usr/share/android-framework-res)
for name in PNG Doxygen KF5KIO Qt5Quick Qt5Widgets Qt5Test Qt5Svg Qt6Quick Qt6Widgets Qt6Test Qt6Svg; do
    hidden+=(-D "CMAKE_DISABLE_FIND_PACKAGE_$name=ON")
done

configure "$@" "${hidden[@]}" || fail "a plain configuration fails"
! grep -qF "Built besides the libraries:" "$work/output" || fail "something is built besides the libraries"
prints "* tools, the commands sorrel and sorrel-thumbnailer: libpng 1.6 or later was not found"
prints "* samples, the sample packages: framework-res.apk was not found"
prints "* examples, the example programs: Qt"
prints "* qml, the QML module: libpng 1.6 or later was not found"
prints "* kde, the plugins for KDE: "
prints "* viewer, the viewer: it uses code of the commands, which are left out"
prints "* docs, the reference of the public classes: Doxygen was not found"
prints "* tests, the test programs: Qt"
prints "Test was not found"
grep -q '^CMAKE_BUILD_TYPE:STRING=Release$' "$work/build/CMakeCache.txt" || fail "a plain build is not optimized"

! configure "$@" "${hidden[@]}" -D SORREL_BUILD_TOOLS=ON || fail "tools without libpng are no error"
prints "SORREL_BUILD_TOOLS is ON, but the commands sorrel and sorrel-thumbnailer cannot be built: libpng"

configure "$@" -D BUILD_TESTING=OFF || fail "a configuration without tests fails"
prints "* tests, the test programs: BUILD_TESTING is OFF"
prints "Built besides the libraries: * tools,"

configure "$@" || fail "a configuration with everything fails"
prints "* tests, the test programs --"
