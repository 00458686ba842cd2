#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# check-debian.sh PACKAGES: installs the Debian packages in the directory PACKAGES, made by scripts/package.sh, in a fresh
# Debian 12, runs debian/tests there, upgrades them, and checks that removing them leaves no trace. Needs root, or sudo.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
if [ "$(id -u)" -ne 0 ]; then
    exec sudo --preserve-env=SORREL_APT_SOURCES,http_proxy,https_proxy,no_proxy "$0" "$@"
fi
packages=$(cd "$1" && pwd)
export LC_ALL=C.UTF-8
umask 022
work=$(mktemp -d)
# In memory if there is enough: about 20 000 files are written and removed again.
if awk '/^MemAvailable:/ { exit $2 < 4000000 }' /proc/meminfo && mount -t tmpfs tmpfs "$work"; then
    trap 'umount "$work"; rmdir "$work"' EXIT
else
    trap 'rm -rf --one-file-system "$work"' EXIT
fi
chmod 755 "$work"
root=$work/debian

fail() {
    echo "check-debian.sh: $1" >&2
    exit 1
}
say() {
    echo "-- $1 (${SECONDS}s)"
}
inside() {
    "$here/chroot.sh" run "$root" "$@"
}
# quietly COMMAND...: runs a command and prints its output only when it fails.
quietly() {
    "$@" > "$work/output" 2>&1 || {
        cat "$work/output" >&2
        fail "failed: $*"
    }
}

dsc=$(echo "$packages"/sorrel_*.dsc)
debs=("$packages"/*_*.deb)
[[ -f $dsc && -f ${debs[0]} ]] || fail "$packages has no packages"
names=()
for deb in "${debs[@]}"; do
    # This check does not install debug information.
    [[ $deb == *-dbgsym_* ]] || names+=("$(dpkg-deb -f "$deb" Package)")
done
version=$(dpkg-deb -f "${debs[0]}" Version)
[ "${names[*]}" = "libsorrel-dev libsorrel0 libsorrelkitcore0 libsorrelkitgui0 libsorrelshelf0 libsorreltrust0 qml-module-sorrel sorrel-kde sorrel-tools sorrel-viewer" ] || fail "the packages are ${names[*]}"

dpkg-source --no-check -x "$dsc" "$work/source" >/dev/null

# The dependencies of the packages and their tests, with the first of alternatives.
mapfile -t needed < <({
    for deb in "${debs[@]}"; do
        dpkg-deb -f "$deb" Pre-Depends Depends Recommends
    done
    grep '^Depends:' "$work/source/debian/tests/control"
} | sed 's/^[A-Za-z-]*: //' | tr ',' '\n' | sed 's/[|(:].*//; s/ //g' \
    | grep -vxF "$(printf '%s\n' "${names[@]}")" | sort -u)
say "making a Debian 12 with ${needed[*]}"
quietly "$here/chroot.sh" make "$root" "${needed[@]}"

# Lists every file, and the content of files that packages share, without the data of apt, dpkg and ldconfig.
snapshot() {
    (
        cd "$root"
        find . \( -path ./proc -o -path ./dev -o -path ./sys -o -path ./root -o -path ./tmp -o -path ./var/lib/dpkg \
            -o -path ./var/lib/apt -o -path ./var/cache/apt -o -path ./var/cache/debconf -o -path ./var/log \
            -o -path ./var/cache/ldconfig -o -path ./etc/ld.so.cache \) -prune -o -printf '%M %u:%g %p %l\n' | sort
        find etc usr/share/mime -type f ! -path etc/ld.so.cache -exec sha256sum {} + | sort -k 2
    )
}
snapshot > "$work/before"

# The packages, and copies of them with a version before this one. The copies are not compressed, because they are read once.
mkdir -p "$root/root/new" "$root/root/old"
for name in "${names[@]}"; do
    cp "$packages/${name}_${version}"_*.deb "$root/root/new"
    dpkg-deb -R "$packages/${name}_${version}"_*.deb "$work/old"
    sed -i -E "s/^Version: .*/&~/; /^Depends:/s/\(= ${version//./\\.}\)/(= $version~)/g" "$work/old/DEBIAN/control"
    dpkg-deb --root-owner-group -Znone -b "$work/old" "$root/root/old/$name.deb" >/dev/null
    rm -r "$work/old"
done
cp -R "$work/source" "$root/root/source"

# installed VERSION: checks that all packages are installed in that version, with unchanged files.
installed() {
    local state
    state=$(inside dpkg-query -W -f '${db:Status-Abbrev} ${Package} ${Version}\n' "${names[@]}")
    [ "$state" = "$(printf "ii  %s $1\n" "${names[@]}")" ] || fail "installed is, instead of $1:"$'\n'"$state"
    quietly inside dpkg --verify "${names[@]}"
    [ ! -s "$work/output" ] || fail "dpkg --verify says $(cat "$work/output")"
    quietly inside dpkg --audit
    [ ! -s "$work/output" ] || fail "dpkg --audit says $(cat "$work/output")"
}
apt=(apt-get -y -o Dpkg::Use-Pty=0)

say "installing $version~"
quietly inside sh -c "${apt[*]} install ./old/*.deb"
installed "$version~"
say "upgrading to $version"
quietly inside sh -c "${apt[*]} install ./new/*.deb"
installed "$version"
known=$(inside ldconfig -p)
for library in libsorrel libsorrelkitcore libsorrelkitgui libsorrelshelf libsorreltrust; do
    grep -q "$library\.so\.0 " <<<"$known" || fail "the linker does not know $library"
done
[ "$(inside pkg-config --modversion sorrel)" = "${version%-*}" ] || fail "pkg-config knows another version"
for type in x-apks xapk-package-archive vnd.apkm; do
    [ -f "$root/usr/share/mime/application/$type.xml" ] || fail "the database of types has no application/$type"
done
broken=$(inside sh -c "dpkg -L ${names[*]} | sort -u | while read -r file; do
    [ -e \"\$file\" ] || echo \"\$file\"
done")
[ -z "$broken" ] || fail "these links lead nowhere:"$'\n'"$broken"

# As in autopkgtest, a test fails by its status or by any output on standard error.
for test in $(sed -n 's/^Tests: //p' "$work/source/debian/tests/control"); do
    say "debian/tests/$test"
    status=0
    inside sh -c 'cd source && AUTOPKGTEST_TMP=$(mktemp -d) && export AUTOPKGTEST_TMP && exec "$@"' sh \
        "debian/tests/$test" > "$work/output" 2> "$work/errors" || status=$?
    if [ $status -ne 0 ] || [ -s "$work/errors" ]; then
        cat "$work/output" "$work/errors" >&2
        fail "debian/tests/$test fails with status $status"
    fi
done

say "removing and purging"
quietly inside "${apt[@]}" remove "${names[@]}"
# Nothing is left to purge; dpkg only prints a message about an unknown package.
quietly inside dpkg --purge "${names[@]}"
snapshot > "$work/after"
diff "$work/before" "$work/after" >&2 || fail "this is left, or lost, when the packages are gone"
known=$(inside ldconfig -p)
! grep libsorrel <<<"$known" || fail "the linker still knows the libraries"
left=$(find "$root/var/lib/dpkg" \( -name 'libsorrel*' -o -name 'sorrel*' \))
[ -z "$left" ] || fail "dpkg keeps $left"
say "the packages are good"
