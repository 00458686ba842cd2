#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# installed.sh PREFIX LIBDIR VERSION SUFFIX [PART...]: checks that exactly the files of installed.txt are installed below
# PREFIX, besides the optional documentation, that the libraries have their sonames, and that the tools, pkg-config and qmake
# know the version. PART is an optional part that is built: qml or kde.
set -euo pipefail
prefix=$1 libdir=$2 version=$3 suffix=$4
shift 4
export LC_ALL=C

fail() {
    echo "$1" >&2
    exit 1
}

package=Sorrel${suffix/-qt/-Qt}
qt=${suffix#-}
qt=${qt:-qt5}
built=()
for part in "$@"; do
    built+=(-e "s|^$part: ||")
done
expected=$(sed -e '/^#/d' "${built[@]}" -e '/^[a-z]*: /d' -e "s|@libdir@|$libdir|g; s|@version@|$version|g; s|@suffix@|$suffix|g; s|@package@|$package|g; s|@qt@|$qt|g" \
    "$(dirname "$0")/installed.txt" | sort)
# The name of one CMake file contains the build type.
actual=$(cd "$prefix" && find . -path ./share/doc -prune -o ! -type d -printf '%P\n' |
    sed 's/\(Targets\)-[a-z]*\.cmake/\1-TYPE.cmake/' | sort)
diff <(echo "$expected") <(echo "$actual") >&2 || fail "what is installed (right) is not what installed.txt lists (left)"

for library in sorrel sorrelkitcore sorrelkitgui sorrelshelf sorreltrust; do
    file=$prefix/$libdir/lib$library$suffix.so
    readelf -dW "$file" | grep -qF "Library soname: [lib$library$suffix.so.0]" || fail "$library has another soname"
    [ "$(readlink -f "$file")" = "$(readlink -f "$file.$version")" ] || fail "$library is another version"
    said=$(PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig pkg-config --modversion "$library$suffix")
    [ "$said" = "$version" ] || fail "pkg-config says $said of $library"
done
grep -qx "SORREL_VERSION = $version" "$prefix/$libdir/sorrel/sorrel$suffix.pri" || fail "qmake has another version"
for tool in sorrel sorrel-thumbnailer; do
    said=$("$prefix/bin/$tool" --version)
    [ "$said" = "$tool $version" ] || fail "$tool says $said"
done
