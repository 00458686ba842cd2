#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# redraw-goldens.sh: draws the reference pictures of the drawable tests (tests/kit/golden) again, and lists the changed ones.
# Look at each before you commit it (scripts/contact-sheet.sh shows all): a golden of a wrong picture keeps it wrong.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

require "${test_packages[@]}"
build release tst_gallery tst_vectordrawable
export SORREL_REDRAW_GOLDENS=1
ctest --preset release -R '^tst_(gallery|vectordrawable)$'
git status --short tests/kit/golden
