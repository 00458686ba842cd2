#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# mime.sh PACKAGE: checks that the tools accept the XML of the installed types, that file names lead to these types, that the
# thumbnailer handles them, and that other archives keep their types. PACKAGE is any package.
set -euo pipefail
package=$1
. "$(dirname "$0")/desktop.sh"
need xmllint libxml2-utils
need gio libglib2.0-bin
xml=$prefix/share/mime/packages/sorrel-mime.xml
thumbnailer=$prefix/share/thumbnailers/sorrel.thumbnailer

xmllint --noout "$xml" || fail "$xml is no XML"
cd "$directory/files"
declare -A expected=(
    [a.apk]=application/vnd.android.package-archive
    [a.apks]=application/x-apks
    [a.xapk]=application/xapk-package-archive
    [a.apkm]=application/vnd.apkm
    [UPPER.APKS]=application/x-apks
    [a.zip]=application/zip
    [apks]=application/zip
)
for name in "${!expected[@]}"; do
    cp "$package" "$name"
    found=$(gio info -a standard::content-type "$name" | sed -n 's/.*standard::content-type: //p')
    [ "$found" = "${expected[$name]}" ] || fail "$name is of the type '$found'"
    [[ $found == application/zip ]] || grep -qE "^MimeType=(.*;)?$found;" "$thumbnailer" \
        || fail "$thumbnailer does not name $found"
done

types=$(xmllint --xpath '//*[local-name()="mime-type"]/@type' "$xml" | sed 's/ *type="\(.*\)"/\1/')
[ "$(wc -l <<<"$types")" = 3 ] || fail "$xml has other types: $types"
for type in $types; do
    grep -qxF "$type application/zip" "$directory/data/mime/subclasses" || fail "$type is no kind of application/zip"
    for language in de fr pt_BR zh_CN; do
        comment="*[local-name()='comment'][@*[local-name()='lang']='$language']"
        count=$(xmllint --xpath "count(//*[@type='$type']/$comment)" "$xml")
        [ "$count" = 1 ] || fail "$type has $count comments in $language"
    done
done
for line in TryExec=sorrel-thumbnailer 'Exec=sorrel-thumbnailer -s %s %i %o'; do
    grep -qxF "$line" "$thumbnailer" || fail "$thumbnailer lacks $line"
done
