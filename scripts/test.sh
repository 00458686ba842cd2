#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# test.sh [--system] [--qt6] [CTEST-OPTION...]: builds everything and runs the tests of the libraries, the tools and the
# README. Installs missing packages first.
#
#   --system  run the other tests instead: a browser, thumbnailers in sandboxes, a window on a virtual screen, shells and fresh
#             Debian systems use the installed files; documents, licences and the binary interface are checked
#   --qt6     build and test with Qt 6
#
# A test that this machine cannot run is skipped, and the last lines print the reason. SORREL_TESTS_REQUIRE lists the kinds of
# tests, separated by commas, that fail instead: sandbox, browser, screen, chroot, androidfw, apksigner, abi.

if [[ " $* " == *" --help "* || " $* " == *" -h "* ]]; then
    sed -n '3,/^[^#]/s/^# \{0,1\}//p' "$0"
    exit
fi

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

preset=release
packages=("${test_packages[@]}")
lane=(--label-exclude '^system$')
while :; do
    case ${1:-} in
        --system)
            packages+=("${system_packages[@]}")
            lane=(--label-regex '^system$')
            ;;
        --qt6)
            packages+=("${qt6_packages[@]}")
            preset=qt6
            ;;
        *) break ;;
    esac
    shift
done
require "${packages[@]}"
build "$preset"
results=$PWD/build/$preset/tests.xml
rm -f "$results"
status=0
ctest --preset "$preset" --parallel "$(nproc)" "${lane[@]}" --output-junit "$results" "$@" || status=$?
[ -f "$results" ] || exit $status

awk '
    /<testsuite / { inside = 1 }
    inside && match($0, /^[ \t]*(tests|failures|skipped)="[0-9]+"/) {
        split($1, pair, "\"")
        count[substr(pair[1], 1, length(pair[1]) - 1)] = pair[2]
    }
    match($0, /<testcase name="[^"]*"/) { inside = 0; name = substr($0, RSTART + 16, RLENGTH - 17) }
    match($0, /SKIPPED [a-z]+: .*/) { print "skipped " name ": " substr($0, RSTART + 8) }
    END {
        passed = count["tests"] - count["failures"] - count["skipped"]
        print passed " passed, " count["failures"] + 0 " failed, " count["skipped"] + 0 " skipped"
    }
' "$results"
exit $status
