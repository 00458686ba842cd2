#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# contact-sheet.sh: draws every drawable of the sample applications "gallery" and "vectors" into build/contact-sheet.png,
# each with its name, on a checkerboard, adaptive icons in every mask. What has a red name could not be drawn in full.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require "${test_packages[@]}"
build release contact_sheet samples
QT_QPA_PLATFORM=offscreen build/release/bin/contact_sheet build/contact-sheet.png gallery vectors
echo "$PWD/build/contact-sheet.png"
