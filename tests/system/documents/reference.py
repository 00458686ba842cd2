#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""reference.py DOXYGEN DOXYFILE QTHELP SOURCE: whether the reference is made without a complaint, as DOXYFILE and QTHELP have
it, and every class of the public headers in SOURCE has its page in it, in the HTML and in the file for Qt Assistant.

reference.py --undocumented DOXYGEN DOXYFILE: whether it is not made when anything public is not documented: of copies of the
headers, with an operation more in each class, and without a comment on any."""

import glob
import os
import re
import shlex
import sqlite3
import subprocess
import sys
import tempfile

CLASS = re.compile(r"^ *(?:class|struct) (?:SORRELKIT_EXPORT )?(\w+)[^;{]*\{\n", re.MULTILINE)
COMMENT = re.compile(r"^ +/\*\*(?:.|\n)*?\*/\n|^ +///.*\n| *///<.*$", re.MULTILINE)


def fail(message):
    sys.exit(f"reference: {message}")


def inputs(doxyfile):
    """The files that DOXYFILE describes."""
    with open(doxyfile, encoding="utf-8") as file:
        line = re.search(r"^INPUT *= *(.*)$", file.read(), re.MULTILINE)
    return shlex.split(line.group(1))


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def run(doxygen, config, directory, **settings):
    """Runs Doxygen by the file `config`, with other settings; what it said, and whether it was content."""
    overrides = "".join(f"{name} = {value}\n" for name, value in settings.items())
    text = f'@INCLUDE = "{config}"\nOUTPUT_DIRECTORY = "{directory}"\n{overrides}'
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

    headers = [path for place in ("include", "kit/include/SorrelKit") for path in glob.glob(f"{source}/{place}/*.h")]
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


def operations(header):
    """The names of the operations that the text of a header declares in public."""
    text = re.sub(r"^(private|protected):\n(?:.|\n)*?(?=^public:|^\};)", "", header, flags=re.MULTILINE)
    code = re.sub(r"/\*\*(?:.|\n)*?\*/|//.*", "", text)
    return set(re.findall(r"^ {4,8}[\w:<>, *&]*?[ *&~]?(\w+)\([^;{]*\)[^;{]*(?:;| \{.*)$", code,
                          re.MULTILINE))


def copies(doxyfile, directory, change):
    """Copies of what DOXYFILE describes, headers as `change` makes them out of their text."""
    paths = []
    for number, path in enumerate(inputs(doxyfile)):
        place = os.path.join(directory, str(number))
        os.mkdir(place)
        paths.append(os.path.join(place, os.path.basename(path)))
        with open(paths[-1], "w", encoding="utf-8") as file:
            file.write(change(read(path)) if path.endswith(".h") else read(path))
    return " ".join(f'"{path}"' for path in paths)


def check_complaints(doxygen, doxyfile, directory, change, names):
    place = os.path.join(directory, change.__name__)
    os.mkdir(place)
    said, is_good = run(doxygen, doxyfile, place, INPUT=copies(doxyfile, place, change))
    if is_good:
        fail(f"Doxygen is content with headers that are {change.__name__}")
    if not names:
        fail(f"nothing is {change.__name__}")
    missing = [name for name in sorted(names) if not re.search(rf"Member ~?{name}\b.* is not documented", said)]
    if missing:
        fail(f"Doxygen does not tell that these are not documented: {missing}\n{said}")


def check_undocumented(doxygen, doxyfile, directory):
    added = set()
    uncommented = set()

    def with_more_operations(header):
        def more(match):
            added.add(f"addedTo{match.group(1)}")
            return f"{match.group(0)}public:\n    int addedTo{match.group(1)}(int value) const;\n"

        return re.sub(CLASS, more, header)

    def without_comments(header):
        return re.sub(COMMENT, "", header)

    headers = [read(path) for path in inputs(doxyfile) if path.endswith(".h")]
    for header in headers:
        uncommented |= operations(header)
        with_more_operations(header)
    print(f"{len(added)} classes, {len(uncommented)} names of operations")
    check_complaints(doxygen, doxyfile, directory, with_more_operations, added)
    check_complaints(doxygen, doxyfile, directory, without_comments, uncommented)


def main():
    with tempfile.TemporaryDirectory() as directory:
        if sys.argv[1] == "--undocumented":
            check_undocumented(*sys.argv[2:], directory)
        else:
            check_reference(*sys.argv[1:], directory)


main()
