#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# coverage.sh: runs the tests of scripts/test.sh and shows the lines and branches of src/ that did not run. The same report, in
# colours, is in build/coverage/report/index.html. Fails when a test fails, or when the coverage is below the bounds.
#
# Each option of the preset "coverage" makes the count fair:
#   -O0              the compiler merges, moves and drops no line or branch
#   -fno-exceptions  the library neither throws nor catches; with exceptions, every call and every temporary has
#                    branches that only an exception takes
#   -fprofile-update=atomic    threads would lose counts
#   -fprofile-abs-path         gcovr finds the sources in every directory that the compiler ran in

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

lines=98
branches=90

require "${coverage_packages[@]}"
build coverage
# gcov adds counts to those of earlier runs of other code.
find build/coverage -name '*.gcda' -delete
ctest --preset coverage --parallel "$(nproc)" --label-exclude '^system$'

# Only the objects of the library count, not the inline functions of its headers in the tests. All branches count:
# --exclude-unreachable-branches of gcovr would drop branches of lines that it takes for empty.
report=build/coverage/report
mkdir -p "$report"
gcovr --root . --filter src/ build/coverage/src/CMakeFiles --json "$report/coverage.json"
# The kit has figures of its own, in kit.html, and no bounds.
gcovr --root . --filter kit/ build/coverage/kit/CMakeFiles \
    --html-details "$report/kit.html" --print-summary --output "$report/kit.txt"
counted=(gcovr --root . --add-tracefile "$report/coverage.json")
"${counted[@]}" --html-details "$report/index.html"
"${counted[@]}"
"${counted[@]}" --branches
"${counted[@]}" --print-summary --output "$report/coverage.txt" \
    --fail-under-line "$lines" --fail-under-branch "$branches"
