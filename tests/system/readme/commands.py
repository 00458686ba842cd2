#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""commands.py README SAMPLES SIGNED: checks that every command of the README that runs an installed tool prints the lines below it, up
to a line "[...]". The current directory has the packages of the README: notes.apk, babel.apk and others of SAMPLES, also
in the directory shelf, and signed ones of SIGNED. With --update, the README is rewritten with the output of the commands."""

import os
import re
import shutil
import subprocess
import sys
import tempfile

# The names of the samples in the README.
PACKAGES = {"notes.apk": "notes.aapt.apk", "babel.apk": "babel.sparse.apk", "gallery.apk": "gallery.aapt2.apk",
            "kiosk.apk": "kiosk.aapt2.apk", "atlas.apk": "atlas.aapt2.apk", "toolbox.apk": "toolbox.aapt2.apk"}
SIGNED = {"signed.apk": "jane.apk", "changed.apk": "changed.apk"}
TOOL = re.compile(r"(^|[| ])sorrel(-thumbnailer)? ")
CUT = "[...]"


def parts(text):
    """The text as pairs of a command, or none, and lines: the output below each command of a console, and everything
    between."""
    command, lines, is_console = None, [], False
    for line in text.splitlines(keepends=True):
        if line.startswith("```"):
            yield command, lines
            command, lines, is_console = None, [], line == "```console\n"
        elif is_console and line.startswith("$ ") and "scripts/" not in line:
            yield command, lines
            yield None, [line]
            command, lines = line[2:].strip(), []
            continue
        lines.append(line)
    yield command, lines


def output(command, directory):
    run = subprocess.run(["bash", "-c", command], cwd=directory, text=True, stdout=subprocess.PIPE,
                         stderr=subprocess.STDOUT, check=False)
    return run.returncode, run.stdout.splitlines(keepends=True)


def main():
    update = "--update" in sys.argv
    readme, samples, signed = [argument for argument in sys.argv[1:] if not argument.startswith("-")]
    with open(readme, encoding="utf-8") as file:
        text = file.read()
    faults, commands, written = [], 0, []
    with tempfile.TemporaryDirectory() as directory:
        os.mkdir(os.path.join(directory, "shelf"))
        for name, sample in PACKAGES.items():
            for place in (directory, os.path.join(directory, "shelf")):
                shutil.copy(os.path.join(samples, sample), os.path.join(place, name))
        for name, package in SIGNED.items():
            shutil.copy(os.path.join(signed, package), os.path.join(directory, name))
        for command, shown in parts(text):
            if command is not None:
                commands += bool(TOOL.search(command))
                status, printed = output(command, directory)
                tail = [line for line in shown if line == CUT + "\n"]
                expected = shown[:shown.index(tail[0])] if tail else shown
                if tail:
                    printed = printed[:len(expected)]
                if status != 0 or printed != expected:
                    faults.append(f"$ {command}\n{''.join(printed)}[status {status}]")
                shown = printed + tail
            written += shown
        for picture in ("circle.png", "babel.png", "shelf.html"):
            if not os.path.getsize(os.path.join(directory, picture)):
                faults.append(picture + " is empty")
    if update:
        with open(readme, "w", encoding="utf-8") as file:
            file.write("".join(written))
        return
    if commands < 10:
        faults.append(f"only {commands} commands were found")
    if faults:
        sys.exit("The README shows something else than:\n" + "\n".join(faults))


if __name__ == "__main__":
    main()
