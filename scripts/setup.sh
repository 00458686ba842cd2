# SPDX-License-Identifier: LGPL-2.1-or-later
# The other scripts source this file. It changes to the checkout, lists the packages that each step needs, and has functions
# to install them and to build.
# shellcheck shell=bash

set -euo pipefail
caller_directory=$PWD
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# To build the libraries, the tools, the samples and the test programs.
build_packages=(
    cmake ninja-build make g++ pkg-config
    qtbase5-dev libqt5sql5-sqlite qttools5-dev qttools5-dev-tools libquazip1-qt5-dev libdeflate-dev libssl-dev zlib1g-dev
    libseccomp-dev libbz2-dev libpng-dev libqt5svg5-dev aapt android-framework-res qt5-image-formats-plugins
    qtdeclarative5-dev qtdeclarative5-dev-tools qml-module-qtquick2 qml-module-qtquick-window2 qml-module-qttest
)
# To build with Qt 6.
qt6_packages=(
    qt6-base-dev libqt6sql6-sqlite qt6-tools-dev qt6-l10n-tools libquazip1-qt6-dev qt6-5compat-dev qt6-svg-dev
    qt6-image-formats-plugins
    qt6-declarative-dev qml6-module-qtquick qml6-module-qtquick-window qml6-module-qttest qml6-module-qtqml-workerscript
)
# To build the plugins for KDE, which are left out where these are missing.
kde_packages=(libkf5kio-dev libkf5filemetadata-dev)
# To run the tests: other programs to compare with, and checkers of the written files.
test_packages=(
    "${build_packages[@]}" binutils libxml2-utils unzip bsdutils util-linux jq
    python3 python3-gi python3-jsonschema desktop-file-utils libglib2.0-bin
)
# To build Debian packages and try them in a fresh Debian.
package_packages=(
    "${build_packages[@]}" "${kde_packages[@]}" build-essential debhelper devscripts dpkg-dev lintian xz-utils mmdebstrap
    appstream git
)
# To build RPM packages.
rpm_packages=(rpm rpmlint)
# To run the system tests: programs that use the installed files (thumbnailers, file managers, a browser, a screen, shells, a
# cluster), and checkers of documents, licences and the binary interface.
system_packages=(
    "${test_packages[@]}" "${package_packages[@]}" abigail-tools reuse
    bubblewrap dbus-daemon tumbler gir1.2-gdkpixbuf-2.0 gir1.2-gnomedesktop-3.0 shared-mime-info
    chromium chromium-driver python3-selenium
    dolphin kio-extras libkf5baloowidgets-bin nautilus
    xvfb xdotool maim tesseract-ocr tesseract-ocr-eng python3-pil
    bash fish zsh mandoc groff-base python3-distributed apksigner openssl
    doxygen qhelpgenerator-qt5
)
# scripts/coverage.sh
coverage_packages=("${test_packages[@]}" gcovr)
# scripts/bench.sh
bench_packages=("${build_packages[@]}" libbenchmark-dev libsqlite3-dev valgrind python3 gnuplot-nox)
# bench/peers: other readers of packages.
peer_packages=(libbenchmark-dev android-libandroidfw-dev android-libutils-dev android-libbase-dev aapt python3)
# .ci/run: formatting, static analysis, sanitizers and fuzzers.
check_packages=("${test_packages[@]}" git clang clang-format clang-tidy libclang-rt-14-dev lld)

# require PACKAGE...: installs the missing packages. Prints nothing and starts no installer when all are installed.
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

# build PRESET [TARGET...]: builds. Configures the build tree first when it is new, or when packages were installed since,
# because CMake may find more parts then. Prints nothing when everything is up to date.
build() {
    local preset=$1 dir="build/$1"
    shift
    if [ ! -f "$dir/build.ninja" ]; then
        cmake --preset "$preset" >&2
    elif [ /var/lib/dpkg/status -nt "$dir/build.ninja" ]; then
        cmake "$dir" >&2
        touch "$dir/build.ninja"
    fi
    local plan
    plan=$(ninja -C "$dir" -n "$@")
    [[ $plan == *"no work to do"* ]] || ninja -C "$dir" "$@" >&2
}
