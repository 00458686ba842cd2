#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""translations.py LUPDATE VIEWER: checks that each file in VIEWER/translations has exactly the texts of the sources in VIEWER, as
LUPDATE finds them, and a translation of each with the same placeholders. This command adds the missing texts to a file:

    lupdate -no-obsolete -I viewer -locations none viewer -ts viewer/translations/sorrel_viewer_de.ts
"""

import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree


def messages(file):
    """The translations by context, text and comment: a list of the forms of each."""
    found = {}
    for context in ElementTree.parse(file).getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            forms = [form.text for form in translation.iter("numerusform")] or [translation.text]
            if translation.get("type") == "unfinished":
                forms = [None]
            found[context.findtext("name"), message.findtext("source"), message.findtext("comment")] = forms
    return found


def placeholders(text):
    return sorted(re.findall(r"%[\dnf]", text))


def main():
    lupdate, viewer = sys.argv[1], pathlib.Path(sys.argv[2])
    with tempfile.TemporaryDirectory() as work:
        new = pathlib.Path(work) / "new.ts"
        subprocess.run([lupdate, "-silent", "-I", viewer, "-locations", "none", viewer, "-ts", new], check=True)
        expected = messages(new).keys()
    assert len(expected) > 100, "the sources have no texts"
    files = sorted((viewer / "translations").glob("*.ts"))
    assert len(files) == 2, files
    for file in files:
        found = messages(file)
        assert found.keys() == expected, f"{file.name}: {found.keys() ^ expected}"
        for (_, source, _), forms in found.items():
            for form in forms:
                assert form, f"{file.name}: {source!r} has no translation"
                # A form for one or two may leave out the number.
                if len(forms) == 1:
                    assert placeholders(form) == placeholders(source), f"{file.name}: the placeholders of {source!r} differ"
                if "&" in source:
                    assert "&" in form, f"{file.name}: {source!r} has no mnemonic"


if __name__ == "__main__":
    main()
