#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# bare-machine.sh [--keep]: runs the two commands of the README in a fresh Debian 12 with a clone of this checkout. Nothing is
# installed there, /etc/hosts is missing, and namespaces are not allowed. Root installs and builds everything by the two
# commands; then an ordinary user without sudo runs them. Needs root, or sudo.
#
#   --keep  move the build tree to build/release afterwards; the clone has the path of this checkout
#
# CXXFLAGS is passed on.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

if [ "$(id -u)" -ne 0 ]; then
    exec sudo --preserve-env=CXXFLAGS,SORREL_APT_SOURCES,http_proxy,https_proxy,no_proxy scripts/bare-machine.sh "$@"
fi
require mmdebstrap git
work=$(mktemp -d)
# mmdebstrap runs apt as another user, who needs access to the directory.
chmod 755 "$work"
trap 'packaging/chroot.sh remove "$work/debian"; rm -rf "$work"' EXIT
machine=$work/debian

packaging/chroot.sh make "$machine"
git clone -q . "$machine$PWD"

run() {
    echo "== $* (${SECONDS}s)"
    packaging/chroot.sh run "$machine" env -C "$PWD" ${CXXFLAGS:+CXXFLAGS="$CXXFLAGS"} "$@"
}
rm -f "$machine/etc/hosts"
if packaging/chroot.sh run "$machine" unshare --user true 2>/dev/null; then
    echo "bare-machine.sh: namespaces can be made in there" >&2
    exit 1
fi
run scripts/run.sh
# CTest only lists the tests.
run scripts/test.sh -N

packaging/chroot.sh run "$machine" useradd newcomer
packaging/chroot.sh run "$machine" chown -R newcomer "$PWD"
for ((parent = 1; parent <= $(tr -cd / <<<"$PWD" | wc -c); ++parent)); do
    chmod a+x "$machine$(cut -d/ -f "1-$((parent + 1))" <<<"$PWD")"
done
as_newcomer=(HOME=/tmp setpriv --reuid newcomer --regid newcomer --clear-groups)
run "${as_newcomer[@]}" scripts/run.sh
run "${as_newcomer[@]}" scripts/test.sh

if [ "${1:-}" = --keep ]; then
    rm -rf build/release
    mkdir -p build
    mv "$machine$PWD/build/release" build/
    chown -R "$(id -u):$(id -g)" build/release
fi
echo "== Done (${SECONDS}s)"
