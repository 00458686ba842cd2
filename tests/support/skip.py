# SPDX-License-Identifier: LGPL-2.1-or-later
"""Skips tests that this machine cannot run."""

import os
import sys


def skip(kind, reason):
    """Ends the test as skipped, because this machine cannot run tests of this kind. Fails when SORREL_TESTS_REQUIRE lists
    the kind."""
    reason = ", ".join(str(reason).strip().splitlines())
    if kind in os.environ.get("SORREL_TESTS_REQUIRE", "").split(","):
        sys.exit(f"SORREL_TESTS_REQUIRE lists {kind}, but: {reason}")
    print(f"SKIPPED {kind}: {reason}", flush=True)
    sys.exit(77)
