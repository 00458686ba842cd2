#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# fuzz.sh MINUTES [ENTRY...]: runs each fuzzer fuzz/fuzz_ENTRY.cpp, or those named, for MINUTES, which may be a fraction.
# One fuzzer runs on each processor. build/fuzz/corpus keeps the inputs that reach new code. build/fuzz/found keeps the
# inputs that break the libraries; the exit status is then 1.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

minutes=${1:?usage: fuzz.sh MINUTES [ENTRY...]}
shift
entries=("$@")
if [ ${#entries[@]} -eq 0 ]; then
    entries=(fuzz/fuzz_*.cpp)
    entries=("${entries[@]#fuzz/fuzz_}")
    entries=("${entries[@]%.cpp}")
fi

require "${check_packages[@]}"
build fuzz write_seeds "${entries[@]/#/fuzz_}"
build/fuzz/bin/write_seeds build/fuzz/seeds

# LeakSanitizer of LLVM 14 misreads the thread-local storage of Qt's plugins and crashes.
export ASAN_OPTIONS=intercept_tls_get_addr=0
fuzz() {
    local entry=$1
    mkdir -p "build/fuzz/corpus/$entry" "build/fuzz/found"
    "build/fuzz/bin/fuzz_$entry" -max_total_time="$seconds" -timeout=60 -rss_limit_mb=1024 -max_len=16384 \
        -dict=fuzz/chunks.dict -artifact_prefix="build/fuzz/found/$entry-" -print_final_stats=1 \
        "build/fuzz/corpus/$entry" "build/fuzz/seeds/$entry" >"build/fuzz/$entry.log" 2>&1
}
export -f fuzz
seconds=$(awk -v minutes="$minutes" 'BEGIN { print int(minutes * 60) }')
export seconds

status=0
printf '%s\n' "${entries[@]}" | xargs -P "$(nproc)" -I{} bash -c 'fuzz {}' || status=1
for entry in "${entries[@]}"; do
    echo "$entry: $(grep -E '^#[0-9]+.*cov:' "build/fuzz/$entry.log" | tail -n 1)"
    grep -E '^(SUMMARY|==.*ERROR)' "build/fuzz/$entry.log" || true
done
exit $status
