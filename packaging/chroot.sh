#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# chroot.sh: makes a Debian 12 in a directory, to try packages and instructions. Needs root, or sudo.
#
# chroot.sh make DIRECTORY [PACKAGE...]    make it, with these packages of Debian and their dependencies
# chroot.sh run DIRECTORY COMMAND...       run a command there, as root, in /root and with a clean environment
# chroot.sh remove DIRECTORY               remove it
#
# The packages come from the Debian 12 sources of this machine. On another system, SORREL_APT_SOURCES names a file with lines
# for /etc/apt/sources.list.
set -euo pipefail

fail() {
    echo "chroot.sh: $1" >&2
    exit 2
}

# sources: prints the Debian 12 sources of this machine.
sources() {
    apt-get indextargets --format '$(CODENAME) deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian' | sed -nE 's/^bookworm(-updates|-security)? (deb .*)/\2/p'
}

make_chroot() {
    local lines options=() name value
    if [ -n "${SORREL_APT_SOURCES:-}" ]; then
        lines=$(cat "$SORREL_APT_SOURCES")
    else
        lines=$(sources)
        if [ -z "$lines" ]; then
            # apt knows the origin of a source only after it has fetched its lists.
            apt-get update -qq
            lines=$(sources)
        fi
    fi
    [ -n "$lines" ] || fail "apt has no source of Debian 12; name some by SORREL_APT_SOURCES"
    for name in Acquire::http::Proxy Acquire::https::Proxy; do
        value=
        eval "$(apt-config shell value $name)"
        [ -z "$value" ] || options+=(--aptopt="$name \"$value\"")
    done
    # The system is temporary, so dpkg need not wait for the disk.
    mmdebstrap --quiet --variant=apt --dpkgopt=force-unsafe-io "${options[@]}" \
        ${packages[@]:+--include="${packages[*]}"} bookworm "$directory" - <<<"$lines"
    # No package may start a service.
    printf '#!/bin/sh\nexit 101\n' > "$directory/usr/sbin/policy-rc.d"
    chmod +x "$directory/usr/sbin/policy-rc.d"
}

run_chroot() {
    local environment=(PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8
        TERM=dumb DEBIAN_FRONTEND=noninteractive) name
    for name in http_proxy https_proxy no_proxy; do
        [ -z "${!name:-}" ] || environment+=("$name=${!name}")
    done
    # The mounts end with the command.
    # shellcheck disable=SC2016
    exec unshare --mount --propagation private bash -euc '
        directory=$1
        shift
        mount --rbind /dev "$directory/dev"
        mount -t proc proc "$directory/proc"
        [ ! -e /etc/resolv.conf ] || [ ! -f "$directory/etc/resolv.conf" ] \
            || mount --bind "$(readlink -f /etc/resolv.conf)" "$directory/etc/resolv.conf"
        exec env -i "$@"
    ' chroot.sh "$directory" "${environment[@]}" chroot "$directory" sh -c 'cd && exec "$@"' sh "${command[@]}"
}

case ${1:-} in
    -h | --help)
        sed -n '3,/^[^#]/s/^# \{0,1\}//p' "$0"
        exit
        ;;
    make | run | remove) [ $# -ge 2 ] || fail "which directory?" ;;
    *) fail "make, run or remove? See --help." ;;
esac
if [ "$(id -u)" -ne 0 ]; then
    exec sudo --preserve-env=SORREL_APT_SOURCES,http_proxy,https_proxy,no_proxy "$0" "$@"
fi
action=$1 directory=$2
shift 2
case $action in
    make)
        packages=("$@")
        [ -z "$(ls -A "$directory" 2>/dev/null)" ] || fail "$directory is not empty"
        mkdir -p "$directory"
        directory=$(realpath "$directory")
        make_chroot
        ;;
    run)
        command=("$@")
        [ -d "$directory/usr" ] || fail "$directory is no such directory"
        [ $# -gt 0 ] || fail "which command?"
        directory=$(realpath "$directory")
        run_chroot
        ;;
    remove)
        [ $# -eq 0 ] || fail "remove takes one directory"
        [ -e "$directory" ] || exit 0
        [ -x "$directory/usr/sbin/policy-rc.d" ] || fail "$directory is no such directory"
        rm -rf --one-file-system "$directory"
        ;;
esac
