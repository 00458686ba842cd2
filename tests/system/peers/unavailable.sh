#!/bin/bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# In place of tst_android_formats, when Android's library was not found.
source "${BASH_SOURCE[0]%/*}/../../support/skip.sh"
skip androidfw "android-libandroidfw-dev was not installed when the tests were configured"
