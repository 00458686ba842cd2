#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# in_debian.sh COMMAND...: runs a command that makes a Debian system, if this machine can make one.
set -euo pipefail
. "$(dirname "$0")/../../support/skip.sh"

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo -n)
    sudo -n true 2>/dev/null || skip chroot "making a Debian of its own takes root, or sudo without a password"
fi
message=$("${as_root[@]}" unshare --mount --propagation private true 2>&1) || skip chroot "$message"
exec "$@"
