#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# bare-machine.sh: runs the two commands of the README, and then both again, as a newcomer would: in a fresh Debian 12 with a
# clone of what is committed here, where nothing is installed and no namespaces can be made. The first round is run by root
# and without /etc/hosts; the second one by an ordinary user without sudo. Needs root, or sudo.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require mmdebstrap git
work=$(mktemp -d)
# mmdebstrap runs apt as another user, who has to get into the directory.
chmod 755 "$work"
trap 'packaging/chroot.sh remove "$work/debian"; rm -rf "$work"' EXIT
machine=$work/debian

packaging/chroot.sh make "$machine"
git clone -q . "$machine/home/sorrel"

run() {
    echo "== $* (${SECONDS}s)"
    packaging/chroot.sh run "$machine" "$@"
}
rm -f "$machine/etc/hosts"
if packaging/chroot.sh run "$machine" unshare --user true 2>/dev/null; then
    echo "bare-machine.sh: namespaces can be made in there" >&2
    exit 1
fi
for command in scripts/run.sh scripts/test.sh; do
    run env -C /home/sorrel "$command"
done

echo "127.0.0.1 localhost" >"$machine/etc/hosts"
packaging/chroot.sh run "$machine" useradd newcomer
packaging/chroot.sh run "$machine" chown -R newcomer /home/sorrel
for command in scripts/run.sh scripts/test.sh; do
    run env -C /home/sorrel HOME=/tmp setpriv --reuid newcomer --regid newcomer --clear-groups "$command"
done
echo "== Done (${SECONDS}s)"
