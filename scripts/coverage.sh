#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# coverage.sh: runs the tests of scripts/test.sh and shows which lines and branches of src/ did not run. The same, in colours,
# is written to build/coverage/report/index.html. The status is not 0 when a test fails, or when less ran than the bounds below.
#
# The preset "coverage" compiles what is counted as it is written. Each of its settings is there for a fair count:
#   -O0              nothing is optimized: no line or branch is merged with another, moved or left out
#   -fno-exceptions  the library neither throws nor catches; with exceptions, every call and every temporary has
#                    branches that only an exception would take
#   -fprofile-update=atomic    tests have threads, which would lose counts
#   -fprofile-abs-path         gcovr finds the sources wherever the compiler ran

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

lines=98
branches=90

require "${coverage_packages[@]}"
build coverage
# Counts are added to those of earlier runs, which are of other code.
find build/coverage -name '*.gcda' -delete
ctest --preset coverage --parallel "$(nproc)" --label-exclude '^system$'

# Counted is what was compiled into the library: what the tests themselves inline of the headers in src/ says nothing
# about it. No branch is left out of the count: gcovr's --exclude-throw-branches has nothing to do here, and
# --exclude-unreachable-branches would drop branches from lines that it takes for empty.
report=build/coverage/report
mkdir -p "$report"
gcovr --root . --filter src/ build/coverage/src/CMakeFiles --json "$report/coverage.json"
# The kit's figures alone; its report is kit.html beside the other.
gcovr --root . --filter kit/ build/coverage/kit/CMakeFiles/sorrelkit_objects.dir \
    --html-details "$report/kit.html" --print-summary --output "$report/kit.txt"
counted=(gcovr --root . --add-tracefile "$report/coverage.json")
"${counted[@]}" --html-details "$report/index.html"
"${counted[@]}"
"${counted[@]}" --branches
"${counted[@]}" --print-summary --output "$report/coverage.txt" \
    --fail-under-line "$lines" --fail-under-branch "$branches"
