#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# check.sh [--update] EXPECTED PROGRAMS SAMPLES: checks that the commands in the text EXPECTED (lines with "$ ") print the lines
# below them. PROGRAMS comes first on the path. A status other than 0 is printed as a line. The current directory has the
# packages of the directory SAMPLES, named without the compiler, and:
#     babel.apks    a set of packages: the base of babel, and its splits
#     broken.apk    a package whose resource table is damaged
#     text.apk      no package at all
#     phone.json    a device: a German phone of 2019; old.json is one of 2014
# With --update, EXPECTED is replaced by the output of the commands.
set -euo pipefail
update=false
[ "$1" != --update ] || { update=true; shift; }
expected=$(realpath "$1") programs=$2 samples=$3

directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
for package in "$samples"/*.aapt2.apk "$samples/notes.aapt.apk" "$samples/babel.sparse.apk"; do
    name=${package##*/}
    cp "$package" "$directory/${name/.aapt2/}"
done
/usr/bin/python3 - "$samples" "$directory" <<'END'
import sys, zipfile
samples, directory = sys.argv[1:]
with zipfile.ZipFile(directory + "/babel.apks", "w") as archive:
    for member in ("base", "de", "es"):
        archive.write(f"{samples}/babel.{member}.apk", f"splits/{member}.apk")
for name, version in ("phone", 29), ("old", 19):
    with open(f"{directory}/{name}.json", "w") as file:
        file.write('{"supportedAbis": ["arm64-v8a"], "supportedLocales": ["de-DE"], "screenDensity": 480, "sdkVersion": %d}' % version)
with zipfile.ZipFile(samples + "/notes.aapt2.apk") as whole, zipfile.ZipFile(directory + "/broken.apk", "w") as archive:
    for name in whole.namelist():
        content = whole.read(name)
        archive.writestr(name, content[:len(content) // 2] if name == "resources.arsc" else content)
END
echo "no package" >"$directory/text.apk"

actual=$(
    cd "$directory"
    # The user's environment must not matter.
    export LC_ALL=C.UTF-8 PATH="$programs:$PATH"
    export QT_LOGGING_RULES='*.debug=false'
    unset LANGUAGE
    sed -n 's/^\$ //p' "$expected" | while IFS= read -r command; do
        echo "\$ $command"
        status=0
        bash -c "$command" 2>&1 </dev/null || status=$?
        [ $status -eq 0 ] || echo "[status $status]"
    done
)
if $update; then
    echo "$actual" >"$expected"
    exit
fi
[[ $actual == "$ "* ]] || { echo "$expected has no commands" >&2; exit 1; }
diff -u --label expected --label actual "$expected" <(echo "$actual") || {
    echo "$(basename "$expected" .txt) prints something else than expected" >&2
    exit 1
}
