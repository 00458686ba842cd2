# SPDX-License-Identifier: LGPL-2.1-or-later
# Sourced by the other scripts, not run: finds the checkout and installs what a step needs.
# shellcheck shell=bash

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# What building the library and the tool takes, and compiling the sample package that run.sh shows.
build_packages=(
    cmake ninja-build g++ pkg-config
    qtbase5-dev libquazip1-qt5-dev zlib1g-dev
    aapt android-framework-res qt5-image-formats-plugins
)
# What the tests take on top.
test_packages=("${build_packages[@]}" libxml2-utils binutils)
# What the checks of .ci/run take on top.
check_packages=("${test_packages[@]}" clang clang-format clang-tidy libclang-rt-14-dev)

# require PACKAGE...: installs those that are missing; says nothing and starts no installer when none is.
require() {
    local package missing=() status
    for package in "$@"; do
        status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) || status=missing
        [ "$status" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Missing packages, and no sudo to install them with. As root: apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}" >&2
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# build PRESET [CMAKE-OPTION...]: configures when the options are not yet those of the build tree, then builds.
build() {
    local preset=$1 dir="build/$1"
    shift
    local wanted="$preset $*"
    if [ ! -f "$dir/build.ninja" ] || [ "$(cat "$dir/.configured-with" 2>/dev/null)" != "$wanted" ]; then
        cmake --preset "$preset" "$@" >&2
        echo "$wanted" >"$dir/.configured-with"
    fi
    cmake --build "$dir" >&2
}
