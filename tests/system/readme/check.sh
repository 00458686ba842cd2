#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# check.sh README SORREL PROGRAM KIT_PROGRAM SAMPLE KIT_SAMPLE: checks the README's output against the output of the commands
# about SAMPLE, and the output of the program for the kit about KIT_SAMPLE.
set -euo pipefail
readme=$1 sorrel=$2 program=$3 kit_program=$4 sample=$5 kit_sample=$6
export LC_ALL=C.UTF-8 SORREL_PLATFORM=

fail() {
    echo "README: $1" >&2
    exit 1
}

# shown COMMAND: the output of the block that starts with COMMAND, up to a line "[...]".
shown() {
    awk -v command="\$ $1" '$0 == command { inside = 1; next } /^```$/ || /^\[\.\.\.\]$/ { inside = 0 } inside' "$readme"
}

expected=$(shown scripts/run.sh)
[ -n "$expected" ] || fail "the output of scripts/run.sh is missing"
actual=$("$sorrel" info "$sample" | head -n "$(wc -l <<<"$expected")")
diff <(tail -n +2 <<<"$expected") <(tail -n +2 <<<"$actual") || fail "scripts/run.sh prints something else"

output=$("$program" "$sample") || fail "the program fails on $sample"
grep -qx 'org.example.notes.ListActivity: Notes' <<<"$output" || fail "the program misses a launcher: $output"
grep -qx '  48x48' <<<"$output" || fail "the program misses an icon: $output"
! "$program" /nonexistent.apk >/dev/null || fail "the program succeeds without a package"

output=$("$kit_program" "$kit_sample") || fail "the program for the kit fails on $kit_sample"
grep -qx 'org.example.babel.Phrasebook: Phrasebook 🗼, 96x96' <<<"$output" || fail "the kit misses a launcher: $output"
! "$kit_program" /nonexistent.apk >/dev/null || fail "the program for the kit succeeds without a package"

for script in scripts/run.sh scripts/test.sh; do
    grep -qF "\$ $script" "$readme" || fail "$script is not mentioned"
done
