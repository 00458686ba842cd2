#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# licences.sh SOURCE: checks that `reuse` finds the licence of every file below SOURCE, and that every source file names its
# licence itself, because it may be copied alone.
set -euo pipefail
cd "$1"

report=$(reuse lint 2>&1) || {
    echo "$report" >&2
    exit 1
}
unnamed=$(find . \( -name build -o -name .git \) -prune -o -type f \
    \( -name '*.cpp' -o -name '*.h' -o -name '*.py' -o -name '*.sh' -o -name '*.js' -o -name '*.css' -o -name '*.cmake' \
    -o -name CMakeLists.txt -o -name '*.in' -o -name '*.1' -o -name '*.java' \) -print0 |
    xargs -0 grep -L 'SPDX-License-Identifier: LGPL-2.1-or-later' || true)
if [ -n "$unnamed" ]; then
    echo "These name no licence:"$'\n'"$unnamed" >&2
    exit 1
fi
