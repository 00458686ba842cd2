#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""translations.py SOURCE: checks that each file in SOURCE/tools/sorrel/translations has a text for every word of reports, none
that the sources lack, and the same placeholders as the English text."""

import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree


def sources(root):
    """The texts that are translated, by context. Words of features are optional."""
    tools = root / "tools"
    text = "".join(path.read_text(encoding="utf-8") for path in sorted(tools.rglob("*.cpp")))
    found = {"Report": set(re.findall(r'ReportText::tr\(\s*"([^"]+)"\)', text)),
             "AndroidVersion": set(re.findall(r'of\("AndroidVersion", "([^"]+)"\)', text))}
    words = (root / "kit/permissions/FeatureWords.cpp").read_text(encoding="utf-8")
    return found, set(re.findall(r'\{"android[^"]+", "([^"]+)"\}', words))


def main():
    root = pathlib.Path(sys.argv[1])
    required, features = sources(root)
    assert all(required.values()) and features, "the sources have no texts"
    files = sorted((root / "tools/sorrel/translations").glob("*.ts"))
    assert len(files) == 3, files
    for file in files:
        texts = {}
        for context in ElementTree.parse(file).getroot().iter("context"):
            messages = {each.findtext("source"): each.findtext("translation") for each in context.iter("message")}
            texts[context.findtext("name")] = messages
            for source, translation in messages.items():
                assert translation, f"{file.name}: {source!r} has no translation"
                assert sorted(re.findall(r"%\d|--\w+", source)) == sorted(re.findall(r"%\d|--\w+", translation)), (
                    f"{file.name}: the placeholders of {source!r} differ")
        for context, expected in required.items():
            assert set(texts[context]) == expected, f"{file.name}: {context}: {set(texts[context]) ^ expected}"
        assert set(texts["Feature"]) <= features, f"{file.name}: {set(texts['Feature']) - features}"


if __name__ == "__main__":
    main()
