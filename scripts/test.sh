#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# test.sh [CTEST-OPTION...]: builds and runs every test. Installs what is missing first, when there is need.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require "${test_packages[@]}"
build release
exec ctest --preset release --parallel "$(nproc)" "$@"
