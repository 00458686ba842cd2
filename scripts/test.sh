#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# test.sh [--qt6] [CTEST-OPTION...]: builds and runs every test; with --qt6, of what is built with Qt 6. Installs what is
# missing first, when there is need.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

preset=release
packages=("${test_packages[@]}")
if [ "${1:-}" = --qt6 ]; then
    shift
    preset=qt6
    packages+=("${qt6_packages[@]}")
fi
require "${packages[@]}"
build "$preset"
exec ctest --preset "$preset" --parallel "$(nproc)" "$@"
