#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# run.sh [FILE.apk...]: shows the contents of these packages, or of a sample that the build compiles. Installs missing
# packages and builds first, if necessary.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require "${build_packages[@]}"
if [ $# -gt 0 ]; then
    build release sorrel-command
    sorrel=$PWD/build/release/bin/sorrel
    cd "$caller_directory"
    exec "$sorrel" info -- "$@"
fi
build release sorrel-command samples
exec build/release/bin/sorrel info build/release/samples/notes.aapt.apk
