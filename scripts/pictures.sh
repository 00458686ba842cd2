#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# pictures.sh: makes the README's pictures anew: docs/catalog.png and docs/contact-sheet.png. Look at them before
# they are committed.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require "${test_packages[@]}" fonts-noto-core fonts-noto-cjk fonts-noto-color-emoji
build release sorrel-command contact_sheet samples
sorrel=$PWD/build/release/bin/sorrel
samples=$PWD/build/release/samples
docs=$PWD/docs
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cd "$scratch"
mkdir shelf
for app in atlas babel gallery kiosk notes toolbox; do
    cp "$samples/$app.aapt2.apk" "shelf/$app.apk"
done
"$sorrel" catalog --shape squircle --title "Sample packages" -o catalog.html shelf
# The superuser has no sandbox in the browser, and the page loads nothing.
chromium --headless --no-sandbox --hide-scrollbars --user-data-dir="$scratch/browser" --window-size=1280,700 \
    --screenshot="$docs/catalog.png" "file://$scratch/catalog.html" 2>/dev/null

QT_QPA_PLATFORM=offscreen "$OLDPWD/build/release/bin/contact_sheet" "$docs/contact-sheet.png" gallery vectors
ls -l "$docs"/*.png
