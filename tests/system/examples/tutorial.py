#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""tutorial.py TUTORIAL EXAMPLE: checks that the pieces of C++ in TUTORIAL are the whole program in the directory EXAMPLE, in
order and except for empty lines, that its build files are those of EXAMPLE, and that the program has at most 60 lines."""

import difflib
import os
import re
import sys

MOST_LINES = 60


def lines_of(text):
    """The lines that are not empty."""
    return [line for line in text.splitlines() if line.strip()]


def main():
    tutorial, example = sys.argv[1:]
    with open(tutorial, encoding="utf-8") as file:
        blocks = re.findall(r"^```([a-z]+)\n(.*?)^```$", file.read(), re.MULTILINE | re.DOTALL)
    faults = []
    for language, name in (("cpp", "main.cpp"), ("cmake", "CMakeLists.txt"), ("qmake", "launcher-grid.pro"),
                           ("qml", "grid.qml")):
        with open(os.path.join(example, name), encoding="utf-8") as file:
            expected = lines_of(file.read())
        # The tutorial does not show the line with the licence.
        shown = [expected[0]] + lines_of("".join(text for kind, text in blocks if kind == language))
        faults += difflib.unified_diff(expected, shown, name, os.path.basename(tutorial), lineterm="")
        if name == "main.cpp":
            code = [line for line in expected if not line.lstrip().startswith("//")]
            if len(code) > MOST_LINES:
                faults.append(f"{name} has {len(code)} lines of code")
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
