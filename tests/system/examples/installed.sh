#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# installed.sh EXAMPLES PREFIX LIBDIR PACKAGE: checks that each example in the directory EXAMPLES is a project of its own for the
# libraries installed below PREFIX. It configures all examples, builds and runs two small ones, and builds home-screen-qml, and
# launcher-grid by CMake and by qmake.
set -euo pipefail
examples=$1 prefix=$2 libdir=$3 package=$4
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT

fail() {
    cat "$directory/log" >&2
    echo "examples: $1" >&2
    exit 1
}

cmake -S "$examples" -B "$directory/all" -D "CMAKE_PREFIX_PATH=$prefix" >"$directory/log" 2>&1 || fail "CMake refuses them"
cmake --build "$directory/all" --parallel 2 --target home-screen home-screen-qml launcher-grid package-shelf >"$directory/log" 2>&1 ||
    fail "CMake does not build them"
"$directory/all/bin/examples/home-screen" "$package" >"$directory/log" || fail "home-screen fails"
grep -qF 'starts org.example.notes/org.example.notes.ListActivity' "$directory/log" || fail "home-screen misses a launcher"

mkdir "$directory/packages"
cp "$package" "$directory/packages"
"$directory/all/bin/examples/package-shelf" "$directory/shelf.db" "$directory/packages" >"$directory/log" ||
    fail "package-shelf fails"
grep -qF 'org.example.notes' "$directory/log" || fail "package-shelf misses a package"

# As if the files were installed beside Qt.
mkdir "$directory/qmake"
cp "$examples/launcher-grid/main.cpp" "$directory/qmake"
sed "s|\$\$\[QT_INSTALL_LIBS\]|$prefix/$libdir|" "$examples/launcher-grid/launcher-grid.pro" >"$directory/qmake/launcher-grid.pro"
cd "$directory/qmake"
/usr/lib/qt5/bin/qmake >"$directory/log" 2>&1 || fail "qmake refuses launcher-grid"
make >"$directory/log" 2>&1 || fail "make does not build launcher-grid"
[ -x launcher-grid ] || fail "there is no launcher-grid"
