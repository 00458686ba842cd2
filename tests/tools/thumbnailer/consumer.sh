#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# consumer.sh tumbler|gnome SAMPLES: checks that a thumbnail program of a desktop finds the installed thumbnailer, and makes
# thumbnails of a package and of a set of packages with it. SAMPLES is the directory of the sample packages.
set -euo pipefail
consumer=$1 samples=$2
. "$(dirname "$0")/desktop.sh"
. "$tests/../../support/skip.sh"

# Debian's Python, which has the modules.
python=/usr/bin/python3
need $python python3
# need_module NAME VERSION PACKAGE
need_module() {
    $python -c "import gi; gi.require_version('$1', '$2')" || fail "$1 for Python, of the package $3, is missing"
}
$python -c 'import gi' || fail "the Python module gi, of the package python3-gi, is missing"
need_module GdkPixbuf 2.0 gir1.2-gdkpixbuf-2.0

case $consumer in
    tumbler)
        need dbus-run-session dbus-daemon
        [ -e /usr/share/dbus-1/services/org.xfce.Tumbler.Thumbnailer1.service ] \
            || fail "the service tumbler, of the package tumbler, is missing"
        dbus-run-session -- $python "$tests/tumbler.py" "$samples" "$directory/files"
        ;;
    gnome)
        need bwrap bubblewrap
        need_sandbox
        need_module GnomeDesktop 3.0 gir1.2-gnomedesktop-3.0
        # The sandbox of GNOME has little besides /usr, so the files are mounted there, only for this command.
        export PATH=/usr/local/bin:/usr/bin:/bin XDG_DATA_DIRS=/usr/local/share:/usr/share
        export LD_LIBRARY_PATH=${LD_LIBRARY_PATH/#$prefix//usr/local}
        # The sandbox forbids ptrace(), which LeakSanitizer needs.
        export ASAN_OPTIONS=${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0
        bwrap --dev-bind / / --bind "$prefix" /usr/local \
            $python "$tests/gnome.py" "$samples" "$directory/files"
        ;;
    *) fail "unknown consumer $consumer" ;;
esac
