#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# contact-sheet.sh: draws every drawable of the sample applications "gallery" and "vectors" into build/contact-sheet.png.
# Each has its name below it and a checkerboard behind it. Adaptive icons are drawn in every mask. The name is red when a part
# of the drawable could not be drawn.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require "${test_packages[@]}"
build release contact_sheet samples
QT_QPA_PLATFORM=offscreen build/release/bin/contact_sheet build/contact-sheet.png gallery vectors
echo "$PWD/build/contact-sheet.png"
