#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# metainfo.sh METAINFO DESKTOP: checks that appstreamcli accepts METAINFO without a message, and that METAINFO names the
# types of DESKTOP, a desktop file or the file of a thumbnailer.
set -euo pipefail
metainfo=$1 desktop=$2
export LC_ALL=C.UTF-8
command -v appstreamcli >/dev/null || { echo "appstreamcli, of the package appstream, is missing" >&2; exit 1; }
command -v xmllint >/dev/null || { echo "xmllint, of the package libxml2-utils, is missing" >&2; exit 1; }

status=0
messages=$(appstreamcli validate --no-net --no-color --pedantic "$metainfo" 2>&1) || status=1
if [ $status -ne 0 ] || grep -qE '^ *[EWIP]: ' <<<"$messages"; then
    echo "$messages" >&2
    status=1
fi
diff <(sed -n 's/^MimeType=//p' "$desktop" | tr ';' '\n' | grep . | sort) \
    <(xmllint --xpath '//mediatype/text()' "$metainfo" | sort) >&2 || { echo "$metainfo names other types" >&2; status=1; }
exit $status
