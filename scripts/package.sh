#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# package.sh [--quick] [--check] [--rpm]: builds the Debian packages and the source package of the files that git tracks, as
# they are now, checks them with lintian, and puts them into build/packages. Installs missing packages first.
#
#   --quick  skip the tests and the debug information, for a much faster build
#   --check  install, use, upgrade and remove the packages in a fresh Debian 12
#   --rpm    build RPM packages as well, and check them with rpmlint
#
# DEB_BUILD_OPTIONS is passed on.

if [[ " $* " == *" --help "* || " $* " == *" -h "* ]]; then
    sed -n '3,/^[^#]/s/^# \{0,1\}//p' "$0"
    exit
fi

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

quick='' check='' rpm=''
for option in "$@"; do
    case $option in
        --quick) quick=1 ;;
        --check) check=1 ;;
        --rpm) rpm=1 ;;
        *)
            echo "package.sh: unknown option $option; see --help" >&2
            exit 2
            ;;
    esac
done

require "${package_packages[@]}" ${rpm:+"${rpm_packages[@]}"}
# The packages do not depend on the umask of the user.
umask 022
version=$(sed -n 's/^project(Sorrel VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
results=$PWD/build/packages
work=$PWD/build/package
tree=$work/sorrel-$version
rm -rf "$results" "$work"
mkdir -p "$results" "$tree"

# Every file has the time of the changelog's latest entry, so the same sources give the same packages.
SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l packaging/debian/changelog -S Timestamp)
export SOURCE_DATE_EPOCH
git ls-files -z --deduplicate | while IFS= read -r -d '' file; do
    [ ! -e "$file" ] || printf '%s\0' "$file"
done > "$work/files"
tarball=$work/sorrel_$version.orig.tar.xz
tar --null --files-from "$work/files" --transform "s,^,sorrel-$version/," --mtime "@$SOURCE_DATE_EPOCH" \
    --owner 0 --group 0 --numeric-owner --sort name --format gnu --mode go=rX,u+rw -cf - | xz -T0 > "$tarball"
tar -xf "$tarball" -C "$work" --no-same-owner
cp -R packaging/debian "$tree/debian"

jobs=$(nproc)
if [ -n "$quick" ]; then
    export DEB_BUILD_OPTIONS="${DEB_BUILD_OPTIONS:+$DEB_BUILD_OPTIONS }nocheck noautodbgsym" DEB_BUILD_PROFILES=nocheck
    export DEB_CXXFLAGS_STRIP=-g
fi
echo "Building the packages for Debian" >&2
(cd "$tree" && dpkg-buildpackage --no-sign -j"$jobs") > "$work/debian.log" 2>&1 || {
    tail -n 50 "$work/debian.log" >&2
    echo "package.sh: the packages for Debian cannot be built; all of it is in build/package/debian.log" >&2
    exit 1
}
changes=$(echo "$work"/sorrel_"$version"-*_*.changes)
# Hints about a missing home page, and matters of taste, are printed and do not fail.
lintian --allow-root --fail-on error,warning --display-info --pedantic --tag-display-limit 0 "$changes"
dcmd cp "$changes" "$results"

if [ -n "$rpm" ]; then
    echo "Building the packages for RPM" >&2
    packaging/rpm/build.sh "$tarball" "$work/rpm" "$results" ${quick:+--without tests}
fi
if [ -n "$check" ]; then
    packaging/check-debian.sh "$results"
fi
ls "$results"
