#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# manual.sh MANPAGE PROGRAM: checks that mandoc and groff accept the manual page without warnings, and that the page has all
# sections, names every option in `PROGRAM --help`, and names no unknown long option. The options of a subcommand are in the
# subsection whose heading begins with its name, or in OPTIONS.
set -euo pipefail
page=$1 program=$2
export LC_ALL=C.UTF-8
. "$(dirname "$0")/options.sh"

status=0
fault() {
    echo "${page##*/}: $1" >&2
    status=1
}

need mandoc mandoc
need groff groff-base
[ -f "$page" ] || { fault "the file is missing"; exit 1; }

warnings=$(mandoc -T lint -W warning "$page" || true)
[ -z "$warnings" ] || fault "mandoc says:"$'\n'"$warnings"
warnings=$(groff -mandoc -t -ww -T utf8 -P-c "$page" 2>&1 >/dev/null || true)
[ -z "$warnings" ] || fault "groff says:"$'\n'"$warnings"

# The page as text with long lines and without bold type. Sections begin in the first column, subsections in the fourth.
text=$(mandoc -T ascii -O width=200 "$page" | sed 's/.\x08//g')
for section in NAME SYNOPSIS DESCRIPTION OPTIONS "EXIT STATUS" FILES EXAMPLES "SEE ALSO"; do
    grep -qx "$section" <<<"$text" || fault "the section $section is missing"
done
grep -qE "^ +$program - " <<<"$text" || fault "the section NAME does not name $program"

# part HEADING: prints the text from a heading that begins with the word HEADING to the next heading.
part() {
    awk -v heading="$1" '/^(   )?[^ ]/ { inside = index($0 " ", heading " ") == match($0, /[^ ]/) } inside' <<<"$text"
}

# names_options TEXT WHERE PROGRAM [SUBCOMMAND]
names_options() {
    local text=$1 where=$2 option
    shift 2
    local found
    found=$(options "$@")
    [ -n "$found" ] || fault "'$* --help' describes no options"
    for option in $found; do
        grep -qE -- "(^|[^-A-Za-z0-9])$option([^-A-Za-z0-9]|$)" <<<"$text" \
            || fault "$where does not name $option of '$*'"
    done
}

names_options "$text" "the page" "$program"
known=$(options "$program")
for subcommand in $(subcommands "$program"); do
    described=$(part "$subcommand")
    [ -n "$described" ] || fault "the subsection $subcommand is missing"
    names_options "$described"$'\n'"$(part OPTIONS)" "the subsection $subcommand" "$program" "$subcommand"
    known+=$'\n'$(options "$program" "$subcommand")
done

for option in $(grep -oE -- '(^|[^-A-Za-z0-9])--[a-z][a-z0-9-]*' <<<"$text" | grep -oE -- '--.*' | sort -u); do
    grep -qxF -- "$option" <<<"$known" || fault "$option is no option of $program"
done
exit $status
