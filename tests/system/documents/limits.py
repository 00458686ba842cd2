#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""limits.py SOURCE: checks that every limit and every cost in docs/limits.md is a constant of the sources with the value that the
page gives, and that the page has every limit and every cost of a budget that a class of the libraries declares."""

import pathlib
import re
import sys

SOURCE = pathlib.Path(sys.argv[1])
ROW = re.compile(r"^\| (`[^|]*) \| ([^|]*) \|", re.MULTILINE)
# A constant beside its value: what a call may cost, and what something costs.
COST = re.compile(r"`(\w+)::(\w+)`: ([0-9][0-9,]*(?: [KMG]iB)?)")
CONSTANT = re.compile(
    r"\bconstexpr\s+(?:unsigned\s+)?[\w:]+\s+((?:Max|Min|Free)\w+|\w+(?:Work|Bytes))\s*(?:=\s*|\{)([^;}]+)")
# Constants of a format or a representation, and attribute ids.
NO_LIMITS = {("LauncherFinder", "NodeBytes"), ("PictureSample", "MaxWeight"), ("PackageValues", "MaxConfigs"), ("Drawable", "MaxLevel"),
             ("WebpLossless", "MaxLength"), ("AndroidAttributes", "MinSdkVersion"), ("AndroidAttributes", "MaxSdkVersion"),
             ("AndroidAttributes", "MinLevel"), ("AndroidAttributes", "MaxLevel")}
UNITS = {"KiB": 1 << 10, "MiB": 1 << 20, "GiB": 1 << 30}


def constants(directories):
    """The expression of each constant by the name of its class, which is the name of its file, and by its own name."""
    found = {}
    for directory in directories:
        for path in sorted((SOURCE / directory).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                for name, expression in CONSTANT.findall(path.read_text()):
                    found[path.stem, name] = expression, path
    return found


def value(expression, owner, known):
    """The value of a C++ expression of numbers and constants of any class."""
    expression = re.sub(r"'|\bqint64\b|\bquint32\b|(?<=[0-9])(LL|U|L)\b", "", expression.replace("\n", " "))

    def referred(match):
        other = match[1] or owner
        return f"({value(known[other, match[2]][0], other, known)})"

    expression = re.sub(r"(?:(\w+)::)?\b([A-Z]\w+)\b", referred, expression)
    if not re.fullmatch(r"[-0-9.+*/<>() xXa-fA-F]+", expression):
        raise ValueError(expression)
    return eval(expression)  # noqa: S307, numbers and operators alone


def stated(text):
    """The numbers in the column for values."""
    for part in re.split(r"[,;] ", text):
        number, unit = re.match(r"([0-9.,]+) ?(\w*)", part).groups()
        yield float(number.replace(",", "")) * UNITS.get(unit, 1)


def main():
    known = constants(["src", "kit", "qml", "tools", "viewer"])
    faults, described = [], set()
    page = (SOURCE / "docs/limits.md").read_text()
    for owner, name, number in COST.findall(page):
        described.add((owner, name))
        if (owner, name) not in known:
            faults.append(f"there is no {owner}::{name}")
        elif value(known[owner, name][0], owner, known) != next(stated(number)):
            faults.append(f"{owner}::{name} is {known[owner, name][0]}, not {number}")
    for limit, values in ROW.findall(page):
        title = limit.split(": ")[0]
        if not re.search(r"\b(Max|Min|Free)\w+`", title):
            continue
        numbers = list(stated(values))
        # A constant outside of a class is named with its file.
        file = re.search(r"\((\w+)\.(?:cpp|h)\)", title)
        owner = file and file[1]
        for index, (named, name) in enumerate(re.findall(r"`(?:(\w+)::)?((?:Max|Min|Free)\w+)`", title)):
            owner = named or owner
            owners = [owner] if owner else [stem for stem, other in known if other == name]
            described.add((owner, name))
            if len(owners) != 1 or (owners[0], name) not in known:
                faults.append(f"there is no {owner}::{name}")
            elif value(known[owners[0], name][0], owners[0], known) != numbers[min(index, len(numbers) - 1)]:
                faults.append(f"{owner}::{name} is {known[owners[0], name][0]}, not {values}")
    for (owner, name), (_, path) in known.items():
        is_public = path.suffix == ".h" and path.relative_to(SOURCE).parts[0] not in ("tools", "viewer")
        if is_public and (owner, name) not in described | NO_LIMITS:
            faults.append(f"docs/limits.md has no {owner}::{name}")
    if not described:
        faults.append("docs/limits.md has no limits")
    sys.exit("\n".join(faults) or 0)


main()
