# SPDX-License-Identifier: LGPL-2.1-or-later
# Sourced by the tests. $sample is a package, compiled from a sample application; $work is a directory for their files.
# shellcheck shell=sh
set -eu
work=$AUTOPKGTEST_TMP
sample=$work/babel.apk
example=$PWD/examples/home-screen
app=$PWD/tests/apps/babel
aapt2 compile --dir "$app/res" -o "$work/compiled.zip"
aapt2 link -I /usr/share/android-framework-res/framework-res.apk --manifest "$app/AndroidManifest.xml" \
    "$work/compiled.zip" -o "$sample"

# check_example PROGRAM: checks the example home-screen, built against the installed libraries.
check_example() {
    ldd "$1" | grep -E 'libsorrelkitcore\.so\.0 => /(usr/)?lib/'
    "$1" "$sample" > "$work/answers"
    cat "$work/answers"
    grep -qx '  starts org.example.babel/org.example.babel.Phrasebook' "$work/answers"
    ! "$1" "$work/missing.apk" > /dev/null 2>&1
}
