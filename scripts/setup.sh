# SPDX-License-Identifier: LGPL-2.1-or-later
# Sourced by the other scripts, not run: goes to the checkout, installs what a step needs, builds.
# shellcheck shell=bash

set -euo pipefail
caller_directory=$PWD
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# What building takes, and compiling the sample packages; the tests are configured with everything else, for which there
# is the SVG library.
build_packages=(
    cmake ninja-build make g++ pkg-config
    qtbase5-dev libquazip1-qt5-dev zlib1g-dev libbz2-dev libpng-dev libqt5svg5-dev
    aapt android-framework-res qt5-image-formats-plugins
)
# What building with Qt 6 takes, on top or in place of those for Qt 5.
qt6_packages=(qt6-base-dev libquazip1-qt6-dev qt6-5compat-dev qt6-svg-dev qt6-image-formats-plugins)
# What the tests take on top: programs that they look at libraries, pages and archives with; those whose work the tools have
# a part in; a browser; a screen, and what looks at it and reads it; shells and typesetters for what tells people about the
# tools; and what the reference is made by.
test_packages=(
    "${build_packages[@]}" abigail-tools binutils reuse libxml2-utils unzip bsdutils util-linux
    python3 python3-gi python3-jsonschema
    bubblewrap dbus-daemon tumbler gir1.2-gdkpixbuf-2.0 gir1.2-gnomedesktop-3.0 shared-mime-info libglib2.0-bin
    desktop-file-utils appstream parallel jq
    chromium chromium-driver python3-selenium
    xvfb xdotool maim tesseract-ocr tesseract-ocr-eng python3-pil
    bash fish zsh mandoc groff-base
    doxygen qhelpgenerator-qt5
)
# What scripts/package.sh takes on top of building: the packages for Debian and for RPM, and a Debian to try them in.
package_packages=(
    "${build_packages[@]}" build-essential debhelper devscripts dpkg-dev lintian xz-utils mmdebstrap
    rpm rpmlint appstream
)
# What scripts/coverage.sh takes on top.
coverage_packages=("${test_packages[@]}" gcovr)
# What scripts/bench.sh takes on top of building.
bench_packages=("${build_packages[@]}" libbenchmark-dev valgrind python3 gnuplot-nox)
# What bench/peers takes: the benchmark library, and the other programs that read packages.
peer_packages=(libbenchmark-dev android-libandroidfw-dev android-libutils-dev android-libbase-dev aapt python3)
# What the checks of .ci/run take on top.
check_packages=("${test_packages[@]}" git clang clang-format clang-tidy libclang-rt-14-dev lld)

# require PACKAGE...: installs those that are missing; says nothing and starts no installer when none is.
require() {
    local package missing=()
    local installed
    installed=" $(dpkg-query -W -f '${db:Status-Status}:${Package} ' "$@" 2>/dev/null || true)"
    for package in "$@"; do
        [[ $installed == *" installed:$package "* ]] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Packages are missing, and there is no sudo to install them with. As root:" >&2
            echo "  apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}" >&2
    "${as_root[@]}" apt-get update -qq >&2
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# build PRESET [TARGET...]: configures the preset's build tree when it is new, and builds; says nothing when
# everything is up to date.
build() {
    local preset=$1 dir="build/$1"
    shift
    [ -f "$dir/build.ninja" ] || cmake --preset "$preset" >&2
    local plan
    plan=$(ninja -C "$dir" -n "$@")
    [[ $plan == *"no work to do"* ]] || ninja -C "$dir" "$@" >&2
}
