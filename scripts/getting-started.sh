#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# getting-started.sh: follows every part of docs/getting-started.md in a fresh Debian 12 with a clone of this checkout, and
# copies the packages that the page makes to build/packages. Builds its sample first. Needs root, or sudo.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require "${package_packages[@]}"
build release samples
work=$(mktemp -d)
# mmdebstrap runs apt as another user, who needs access to the directory.
chmod 755 "$work"
trap 'packaging/chroot.sh remove "$work/debian"; rm -rf "$work"' EXIT

# A reader has git for the checkout. Python and the certificates are for follow.py.
packaging/chroot.sh make "$work/debian" git ca-certificates python3
home=$work/debian/root
git clone -q . "$home/sorrel"
cp build/release/samples/notes.aapt2.apk "$home/sample.apk"
# Nobody answers questions here, and other checks test the packages.
echo 'APT::Get::Assume-Yes "true";' >"$work/debian/etc/apt/apt.conf.d/90yes"
packaging/chroot.sh run "$work/debian" env -C /root/sorrel \
    DEB_BUILD_OPTIONS="nocheck noautodbgsym" DEB_BUILD_PROFILES=nocheck DEB_CXXFLAGS_STRIP=-g \
    tests/system/consumers/follow.py docs/getting-started.md /root/sample.apk \
    "As a packager" "With CMake" "With pkg-config" "With qmake" "With Qt 6"
rm -rf build/packages
mkdir -p build
cp -r "$home/sorrel/build/packages" build/
