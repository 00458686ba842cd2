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
# Nobody answers questions here.
echo 'APT::Get::Assume-Yes "true";' >"$work/debian/etc/apt/apt.conf.d/90yes"

# follow VARIABLE=VALUE... PART...: follows these parts of the page, with these variables in the environment.
follow() {
    local variables=()
    while [[ $1 == *=* ]]; do
        variables+=("$1")
        shift
    done
    packaging/chroot.sh run "$work/debian" env -C /root/sorrel "${variables[@]}" \
        tests/system/consumers/follow.py docs/getting-started.md /root/sample.apk "$@"
}
# Other tests run optimized libraries. Here they are optimized less, which takes a fifth of the processor time away.
follow DEB_BUILD_OPTIONS="nocheck noautodbgsym" DEB_BUILD_PROFILES=nocheck \
    DEB_CXXFLAGS_STRIP=-g DEB_CXXFLAGS_APPEND=-O1 \
    "As a packager" "With CMake" "With pkg-config" "With qmake"
follow CMAKE_BUILD_TYPE=None "With Qt 6"
rm -rf build/packages
mkdir -p build
cp -r "$home/sorrel/build/packages" build/
