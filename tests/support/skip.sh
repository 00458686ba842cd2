# SPDX-License-Identifier: LGPL-2.1-or-later
# Other scripts source this file.

# skip KIND REASON: ends the test as skipped, because this machine cannot run tests of this kind. Fails when
# SORREL_TESTS_REQUIRE lists the kind.
skip() {
    if [[ ",${SORREL_TESTS_REQUIRE:-}," == *",$1,"* ]]; then
        echo "SORREL_TESTS_REQUIRE lists $1, but: $2" >&2
        exit 1
    fi
    echo "SKIPPED $1: $2"
    exit 77
}

# need_sandbox: skips the test when bubblewrap cannot make a sandbox.
need_sandbox() {
    local message
    message=$(bwrap --unshare-all --ro-bind / / true 2>&1) || skip sandbox "${message%%$'\n'*}"
}
