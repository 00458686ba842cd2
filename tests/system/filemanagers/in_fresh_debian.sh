#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# in_fresh_debian.sh SOURCE PACKAGES SAMPLES [PICTURES]: looks at packages in Dolphin and in Nautilus of a fresh Debian 12 where
# the Debian packages in the directory PACKAGES are installed, and opens one by a double click. SAMPLES is the directory of the
# sample packages, PICTURES a directory for pictures of the screens. Needs root.
set -euo pipefail
source=$1 packages=$2 samples=$3 pictures=${4:-}
work=$(mktemp -d)
# mmdebstrap runs apt as another user, who needs access to the directory.
chmod 755 "$work"
trap '"$source/packaging/chroot.sh" remove "$work/debian"; rm -rf "$work"' EXIT

"$source/packaging/chroot.sh" make "$work/debian" \
    dolphin kio-extras libkf5baloowidgets-bin nautilus dbus-daemon dbus-bin bubblewrap \
    xvfb xdotool maim tesseract-ocr tesseract-ocr-eng python3-pil fonts-dejavu-core
mkdir "$work/debian/root/new" "$work/debian/srv/samples"
cp "$packages"/*.deb "$work/debian/root/new"
"$source/packaging/chroot.sh" run "$work/debian" sh -c 'apt-get -qq update && apt-get -y -qq -o Dpkg::Use-Pty=0 install ./new/*.deb' \
    >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
/usr/bin/python3 -B "$source/tests/system/filemanagers/make_packages.py" "$samples" "$work/debian/srv/samples"

# look MANAGER: runs a test in that system. The file managers make namespaces, which a process in a chroot cannot, so the root is
# moved. The mounts end with the test.
look() {
    # shellcheck disable=SC2016
    unshare --mount --propagation private bash -euc '
        root=$1 source=$2
        shift 2
        mount --bind "$root" "$root"
        mount --rbind /dev "$root/dev"
        mount -t proc proc "$root/proc"
        mount -t tmpfs -o mode=1777 tmpfs "$root/tmp"
        mkdir -p "$root/srv/tests"
        mount --bind "$source/tests" "$root/srv/tests"
        cd "$root"
        pivot_root . mnt
        umount -l /mnt
        exec env -i "$@"
    ' look "$work/debian" "$source" PATH=/usr/bin:/bin:/usr/sbin:/sbin HOME=/root LC_ALL=C.UTF-8 \
        SORREL_TESTS_REQUIRE="${SORREL_TESTS_REQUIRE:-}" \
        python3 -B "/srv/tests/system/filemanagers/$1.py" /usr /usr/lib /srv/samples ${pictures:+"/root/$1.png" "/root/$1-viewer.png"}
}
for manager in dolphin nautilus; do
    look "$manager"
    [ -z "$pictures" ] || cp "$work/debian/root/$manager"*.png "$pictures"
done
