#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# pictures.sh: draws the pictures of the documents again: docs/animated-vectors.png, docs/catalog.png,
# docs/contact-sheet.png, docs/dolphin.png, docs/home-screen-qml.png, docs/launcher-grid.png, docs/nautilus.png,
# docs/platform-icons.png, docs/themed-drawables.png and docs/viewer-*.png. Look at them before you commit them. Installs missing
# packages first.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require "${system_packages[@]}" fonts-noto-core fonts-noto-cjk fonts-noto-color-emoji
build release all animation_sheet contact_sheet home_screen_sheet samples themed_sheet
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
# The browser has no sandbox for root. That is safe, because the page loads nothing.
chromium --headless --no-sandbox --hide-scrollbars --user-data-dir="$scratch/browser" --window-size=1280,700 \
    --screenshot="$docs/catalog.png" "file://$scratch/catalog.html" 2>/dev/null

mkdir Packages
cp "$samples/suite.aapt2.apk" Packages/suite.apk
PYTHONPATH=$OLDPWD/tests/system/examples /usr/bin/python3 -B - "$OLDPWD/build/release/bin/examples/launcher-grid" \
    "$PWD/Packages" "$docs/launcher-grid.png" <<'END'
import sys, time
from display import Screen, Window
program, folder, file = sys.argv[1:]
with Screen() as screen, Window(screen, [program, folder], "Launchers in " + folder, scale=2) as window:
    window.run("xdotool", "windowsize", "--sync", window.id, "1060", "924")
    time.sleep(1)
    window.picture().save(file, optimize=True)
END

# File managers use the installed files.
installed=$scratch/installed
cmake --install "$OLDPWD/build/release" --prefix "$installed" >/dev/null
for manager in dolphin nautilus; do
    PATH=$installed/bin:$PATH LD_LIBRARY_PATH=$installed/lib /usr/bin/python3 -B \
        "$OLDPWD/tests/system/filemanagers/$manager.py" "$installed" "$installed/lib/qt5/plugins" "$samples" \
        "$docs/$manager.png"
done

mkdir Phone
for app in gallery suite toolbox; do
    cp "$samples/$app.aapt2.apk" "Phone/$app.apk"
done
echo "no package" >Phone/Damaged.apk
QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software "$OLDPWD/build/release/bin/home_screen_sheet" \
    "$docs/home-screen-qml.png" "$OLDPWD/examples/home-screen-qml/HomeScreen.qml" "$OLDPWD/build/release/qml" \
    "$PWD/Phone"

QT_QPA_PLATFORM=offscreen "$OLDPWD/build/release/bin/contact_sheet" "$docs/contact-sheet.png" gallery vectors
"$OLDPWD/scripts/platform-sheet.sh" "$docs/platform-icons.png"
QT_QPA_PLATFORM=offscreen "$OLDPWD/build/release/bin/themed_sheet" "$docs/themed-drawables.png" \
    /usr/share/android-framework-res/framework-res.apk
QT_QPA_PLATFORM=offscreen "$OLDPWD/build/release/bin/animation_sheet" "$docs/animated-vectors.png" \
    /usr/share/android-framework-res/framework-res.apk
/usr/bin/python3 -B "$OLDPWD/tests/viewer/window/viewer_pictures.py" "$OLDPWD/build/release/bin/sorrel-viewer" "$samples" \
    "$OLDPWD/tests/system/examples" "$docs"
ls -l "$docs"/*.png
