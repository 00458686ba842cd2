#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# sandbox.sh SAMPLE: checks that the program makes a thumbnail of the package SAMPLE in a sandbox: without a network, as a user
# without privileges, with an empty environment, and with only the output file to write to.
set -euo pipefail
sample=$1
export LC_ALL=C.UTF-8
. "$(dirname "$0")/../options.sh"
. "$(dirname "$0")/../../support/skip.sh"
need sorrel-thumbnailer Sorrel
need bwrap bubblewrap
need_sandbox
program=$(command -v sorrel-thumbnailer)
prefix=$(dirname "$(dirname "$program")")
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT

fail() {
    echo "$1" >&2
    exit 1
}

# The system and the installed program, read only.
system=(--ro-bind /usr /usr --ro-bind-try /etc/ld.so.cache /etc/ld.so.cache --ro-bind "$prefix" "$prefix")
for path in /bin /lib /lib32 /lib64; do
    [ ! -L $path ] || system+=(--symlink "$(readlink "$path")" "$path")
    [ -L $path ] || [ ! -d $path ] || system+=(--ro-bind "$path" "$path")
done

# sandbox INPUT ARGUMENT...: runs a command with the file INPUT as /in/package.apk, read only, and $directory/icon.png as
# /out/icon.png. $more has further arguments for bwrap.
more=()
sandbox() {
    local input=$1
    shift
    bwrap --unshare-all --unshare-user --uid 1000 --gid 1000 --die-with-parent --new-session --clearenv \
        --setenv LD_LIBRARY_PATH "$LD_LIBRARY_PATH" "${system[@]}" --proc /proc --dev /dev \
        --ro-bind "$input" /in/package.apk --bind "$directory/icon.png" /out/icon.png "${more[@]}" \
        --remount-ro / --remount-ro /dev --remount-ro /proc "$@"
}

"$program" "$sample" "$directory/expected.png"
[ -s "$directory/expected.png" ] || fail "the program writes nothing without a sandbox"

# The sandbox works.
: > "$directory/icon.png"
for path in /x /in/x /in/package.apk /out/x /dev/x /tmp/x "$prefix/x" /usr/x; do
    ! sandbox "$sample" /bin/sh -c ': >> "$0"' "$path" 2>/dev/null || fail "$path can be written to in the sandbox"
done
[ "$(sandbox "$sample" /usr/bin/id -u)" = 1000 ] || fail "the user in the sandbox is another one"

sandbox "$sample" "$program" /in/package.apk /out/icon.png || fail "the program fails in the sandbox"
cmp "$directory/icon.png" "$directory/expected.png" || fail "the program writes another picture in the sandbox"
sandbox "$sample" "$program" file:///in/package.apk /out/icon.png || fail "the program takes no URI in the sandbox"
cmp "$directory/icon.png" "$directory/expected.png" || fail "the program writes another picture for a URI"

# The program writes nothing to a writable directory.
mkdir "$directory/scratch"
more=(--bind "$directory/scratch" /scratch --chdir /scratch --setenv HOME /scratch --setenv TMPDIR /scratch
    --setenv XDG_CACHE_HOME /scratch --setenv XDG_CONFIG_HOME /scratch --setenv XDG_RUNTIME_DIR /scratch)
sandbox "$sample" "$program" /in/package.apk /out/icon.png || fail "the program fails with places to write to"
[ -z "$(ls -A "$directory/scratch")" ] || fail "the program writes $(ls -A "$directory/scratch")"
sandbox "$sample" "$program" /in/package.apk icon.png || fail "the program fails with a name in its directory"
[ "$(ls -A "$directory/scratch")" = icon.png ] || fail "the program writes $(ls -A "$directory/scratch")"
cmp "$directory/scratch/icon.png" "$directory/expected.png" \
    || fail "the program writes another picture in its directory"

# A package that cannot be read leaves the old file.
more=()
echo "no package" > "$directory/bad.apk"
status=0
message=$(sandbox "$directory/bad.apk" "$program" /in/package.apk /out/icon.png 2>&1) || status=$?
[ $status = 1 ] || fail "the program ends with $status for what is no package"
[ "$message" = "sorrel-thumbnailer: /in/package.apk: could not open APK file" ] || fail "the program says: $message"
cmp "$directory/icon.png" "$directory/expected.png" || fail "the program changes the output for what is no package"
