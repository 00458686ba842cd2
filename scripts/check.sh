#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# check.sh: for use after each small change. Builds, runs the unit tests, and checks the format of the sources that differ
# from the last commit. Installs missing packages first.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require "${test_packages[@]}" clang-format git
build release
ctest --preset release --parallel "$(nproc)" --label-regex '^unit$' --progress --quiet
mapfile -t changed < <({
    git diff --name-only --diff-filter=d HEAD
    git ls-files --others --exclude-standard
} | grep -E '\.(cpp|h)$' || true)
[ ${#changed[@]} -eq 0 ] || clang-format --dry-run -Werror "${changed[@]}"
echo "The unit tests pass; ${#changed[@]} changed sources are formatted."
