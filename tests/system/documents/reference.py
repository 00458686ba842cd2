#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""reference.py DOXYGEN DOXYFILE QTHELP SOURCE: checks that Doxygen makes the reference without a warning, by DOXYFILE and by
QTHELP, and that every class of the public headers in SOURCE has its page, in the HTML and in the file for Qt Assistant."""

import glob
import os
import re
import sqlite3
import subprocess
import sys
import tempfile

CLASS = re.compile(r"^ *(?:class|struct) (?:SORREL\w*_EXPORT )?(\w+)[^;{]*\{\n", re.MULTILINE)


def fail(message):
    sys.exit(f"reference: {message}")


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def run(doxygen, config, directory):
    """Runs Doxygen by the file `config`. Returns its messages, and whether it succeeded."""
    text = f'@INCLUDE = "{config}"\nOUTPUT_DIRECTORY = "{directory}"\n'
    try:
        result = subprocess.run([doxygen, "-"], input=text, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                timeout=600, check=False)
    except OSError as error:
        fail(f"Doxygen cannot be run: {error}")
    return result.stdout, result.returncode == 0


def check_reference(doxygen, doxyfile, qthelp, source, directory):
    for config in (doxyfile, qthelp):
        said, is_good = run(doxygen, config, directory)
        if not is_good:
            fail(f"{os.path.basename(config)}:\n{said}")

    headers = [path for place in ("include", "kit/include/*/SorrelKit") for path in glob.glob(f"{source}/{place}/*.h")]
    classes = {name for path in headers for name in CLASS.findall(read(path))}
    if not {"ApkFile", "Package", "IconFile"} <= classes:
        fail(f"{source} has no classes but {sorted(classes)}")
    pages = os.listdir(os.path.join(directory, "html"))
    for name in sorted(classes):
        if not any(re.fullmatch(rf"(class|struct)(\w*_1_1)?{name}\.html", page) for page in pages):
            fail(f"{name} has no page")
    overview = read(os.path.join(directory, "html", "index.html"))
    for name in ("ApkFile", "Package", "Resources"):
        if not re.search(rf'href="class(SorrelKit_1_1)?{name}\.html"', overview):
            fail(f"the first page does not lead to {name}")

    help_file = os.path.join(directory, "sorrel.qch")
    if not os.path.isfile(help_file):
        fail("there is no file for Qt Assistant")
    database = sqlite3.connect(help_file)
    indexed = {name for row in database.execute("SELECT Name FROM IndexTable") for name in row[0].split("::")}
    missing = classes - indexed
    if missing:
        fail(f"the file for Qt Assistant lacks {sorted(missing)} in its index")
    kept = {row[0].rsplit("/", 1)[-1] for row in database.execute("SELECT Name FROM FileNameTable")}
    if not {"index.html", "classApkFile.html", "classSorrelKit_1_1Package.html"} <= kept:
        fail(f"the file for Qt Assistant lacks pages; it has {sorted(kept)}")


def main():
    with tempfile.TemporaryDirectory() as directory:
        check_reference(*sys.argv[1:], directory)


main()
