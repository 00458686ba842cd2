#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# diff_in_git.sh COMMAND PAGE SAMPLES: checks the example diff-in-git in a repository of its own, with the sample packages: a
# package that changes, comes and goes, and the text conversion. Runs the step for build servers in PAGE as well.
set -euo pipefail
command=$1 page=$2 samples=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
export HOME=$work GIT_CONFIG_NOSYSTEM=1 LC_ALL=C.UTF-8 GIT_PAGER=cat
unset GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE

fail() {
    echo "$1" >&2
    exit 1
}

# has TEXT PATTERN...
has() {
    local text=$1 pattern
    shift
    for pattern in "$@"; do
        grep -qE -- "$pattern" <<<"$text" || fail "no '$pattern' in:"$'\n'"$text"
    done
}

git init -q -b main repository
cd repository
git config user.name test
git config user.email test@example.org
git config diff.apk.command "$command"
echo '*.apk diff=apk' >.gitattributes
cp "$samples/notes.aapt.apk" app.apk
cp "$samples/kiosk.aapt.apk" gone.apk
git add . && git commit -qm before
cp "$samples/atlas.aapt2.apk" app.apk
git rm -q gone.apk
cp "$samples/toolbox.aapt2.apk" new.apk
git add . && git commit -qm after

output=$(git diff HEAD~1) || fail "git diff fails"
has "$output" '^package app.apk$' '^  - android.permission.INTERNET$' '^  ~ package +org.example.notes → org.example.atlas$'
has "$output" '^package gone.apk$' '^deleted$' 'package +org.example.kiosk'
has "$output" '^package new.apk$' '^new$' 'package +org.example.toolbox'
[ "$(git diff HEAD)" = "" ] || fail "equal packages differ"

git config diff.apk.textconv 'sorrel manifest'
output=$(git log -p -1 -- app.apk) || fail "git log fails"
has "$output" '^-.*package="org.example.notes"' '^\+.*package="org.example.atlas"'
output=$(git log -p -1 --ext-diff -- app.apk)
has "$output" '^package app.apk$'

# The first block of Bash in the page. No sample is signed, so its condition about signers is dropped.
sed -n '/^```bash$/,/^```$/p' "$page" | sed '/^```/d' >step
grep -q '\.signerMatch == "same" and ' step || fail "the step does not check the signer"
sed -i 's/\.signerMatch == "same" and //' step
cp app.apk release.apk
cp "$samples/kiosk.aapt2.apk" build.apk
bash -e step >/dev/null || fail "the step refuses a package without new permissions"
cp "$samples/notes.aapt2.apk" build.apk
! bash -e step >/dev/null || fail "the step accepts a new permission"
echo "no package" >build.apk
status=0
bash -e step >/dev/null 2>&1 || status=$?
[ "$status" -eq 2 ] || fail "the step has the status $status for a file that is no package"

# The conditions in the table are valid.
sorrel diff --json release.apk "$samples/notes.aapt2.apk" >diff.json || [ $? -eq 1 ]
count=0
while read -r condition; do
    result=$(jq "$condition" diff.json) || fail "jq refuses $condition"
    [[ $result == true || $result == false ]] || fail "$condition is $result"
    count=$((count + 1))
done < <(sed -n 's/^| `\(.*\)` | .*/\1/p' "$page" | sed 's/\\|/|/g')
[ "$count" -gt 2 ] || fail "the page has no conditions"
