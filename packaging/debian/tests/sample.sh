# SPDX-License-Identifier: LGPL-2.1-or-later
# For the tests to source: $sample is a package, compiled from one of the sample applications; $work is for their files.
# shellcheck shell=sh
set -eu
work=$AUTOPKGTEST_TMP
sample=$work/babel.apk
app=$PWD/tests/apps/babel
aapt2 compile --dir "$app/res" -o "$work/compiled.zip"
aapt2 link -I /usr/share/android-framework-res/framework-res.apk --manifest "$app/AndroidManifest.xml" \
    "$work/compiled.zip" -o "$sample"

# check_consumer PROGRAM: whether a program of packaging/consumer answers what is right.
check_consumer() {
    ldd "$1" | grep -E 'libsorrel(kit)?\.so\.0 => /(usr/)?lib/'
    "$1" "$sample" > "$work/answers"
    cat "$work/answers"
    grep -qx org.example.babel "$work/answers"
    grep -qx 'org.example.babel.Phrasebook 48x48' "$work/answers"
    ! "$1" "$work/missing.apk" > /dev/null
}
