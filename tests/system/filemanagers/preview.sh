#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# preview.sh PREVIEW_JOB WORKER PLUGINS SAMPLES: checks that KDE's worker for thumbnails, the plugin WORKER, finds the installed
# plugin in the directory PLUGINS, and makes previews of packages and of a set with it, and none of a broken package.
# PREVIEW_JOB is the program that requests them. SAMPLES is the directory of the sample packages.
set -euo pipefail
preview_job=$1 worker=$2 plugins=$3 samples=$4
. "$(dirname "$0")/../../tools/thumbnailer/desktop.sh"
need dbus-run-session dbus-daemon
[ -e "$worker" ] || fail "the worker thumbnail, of the package kio-extras, is missing"

files=$directory/files
cp "$samples/notes.aapt2.apk" "$files/Ä package #1.apk"
cp "$samples/babel.aapt2.apk" "$files/babel.apk"
python3 -m zipfile -c "$files/a set 100%.apks" "$samples/babel.base.apk" "$samples/babel.de.apk"
head -c 1000 "$samples/notes.aapt2.apk" > "$files/broken.apk"

export QT_PLUGIN_PATH=$plugins QT_QPA_PLATFORM=offscreen
for arguments in "128 1" "256 1" "128 2"; do
    # shellcheck disable=SC2086
    dbus-run-session -- "$preview_job" $arguments "$files/Ä package #1.apk" "$files/babel.apk" "$files/a set 100%.apks" \
        - "$files/broken.apk" || fail "the previews with size and ratio $arguments are wrong"
done
# They are in the cache, where other programs find them.
[ -n "$(ls "$XDG_CACHE_HOME"/thumbnails/*/*.png)" ] || fail "the worker keeps no thumbnails"

# The user's shape, in new thumbnails.
rm -r "$XDG_CACHE_HOME/thumbnails"
printf '[Thumbnails]\nShape=circle\n' > "$XDG_CONFIG_HOME/sorrelrc"
mkdir "$directory/bin"
printf '#!/bin/sh\nexec %q --shape circle "$@"\n' "$program" > "$directory/bin/sorrel-thumbnailer"
chmod +x "$directory/bin/sorrel-thumbnailer"
PATH=$directory/bin:$PATH dbus-run-session -- "$preview_job" 128 1 "$files/babel.apk" || fail "the shape is another one"
