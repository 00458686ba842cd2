#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""hostile.py PROGRAMS RESULTS [PAGE] | --programs: measures the hostile files, in the tests that hold their bounds.

PROGRAMS is the directory of the test programs, which append the cost of each row to the file in SORREL_COSTS. Writes all rows
to RESULTS/hostile.json, for the report. Prints a table of the slowest rows of each test and its largest one, and replaces the
table in the Markdown page PAGE with it. Time is processor time as a ratio to inflating 64 MiB in the same run; figures are
medians. --programs prints the names of the programs.
"""

import json
import os
import re
import statistics
import subprocess
import sys
import tempfile
import time
import zlib
from collections import defaultdict
from pathlib import Path

RUNS = 3
SLOWEST = 3
PLACE = r"\| test \| file \|(?:.*\n)+?\n.*"  # of the table and the line below it
TESTS = [  # program, its tests
    ("tst_hostile", ["boundsHold"]),
    ("tst_hostile_packages", ["boundsHold"]),
    ("tst_pictures", ["boundsHold"]),
    ("tst_hostile_kit", ["boundsHold"]),
    ("tst_resourcelimits", ["boundsHold"]),
    ("tst_drawablelimits", ["hostile", "hostilePictures"]),
    ("tst_vectorlimits", ["hostile"]),
    ("tst_packagenormalizer", ["aHostileTableIsAnswered"]),
    ("tst_package_lint", ["boundsHold"]),
]


def packed_reference():
    """64 MiB of decimal numbers, deflated."""
    text = b"".join(b"%d," % number for number in range(9_000_000))
    return zlib.compress(text[:64 << 20])


def reference_seconds(packed):
    start = time.process_time()
    zlib.decompress(packed)
    return time.process_time() - start


def costs(programs, program, tests):
    """The costs of each row of the tests. When a row has several measurements, such as two sizes, the slowest counts."""
    with tempfile.NamedTemporaryFile() as file:
        environment = dict(os.environ, SORREL_COSTS=file.name, QT_QPA_PLATFORM="offscreen")
        subprocess.run([programs / program, *tests], env=environment, stdout=subprocess.DEVNULL, check=True)
        rows = {}
        for line in file.read().splitlines():
            cost = json.loads(line)
            name = cost["row"] or cost["test"]
            if name not in rows or cost["seconds"] > rows[name]["seconds"]:
                rows[name] = cost
    return rows


def measure(programs):
    """The median seconds of the reference, and for each program the median seconds and the memory of its rows."""
    packed = packed_reference()
    references = []
    times = defaultdict(list)
    memory = {}
    for _ in range(RUNS):
        for program, tests in TESTS:
            print(f"   {program}", file=sys.stderr)
            references.append(reference_seconds(packed))
            for name, cost in costs(programs, program, tests).items():
                times[program, name].append(cost["seconds"])
                memory[program, name] = cost["memory"]
    rows = [{"program": program, "row": name, "seconds": statistics.median(values), "memory": memory[program, name]}
            for (program, name), values in times.items()]
    return statistics.median(references), rows


def shown(rows):
    """The slowest rows of each program, and the one that takes the most memory."""
    for program, _ in TESTS:
        own = sorted((row for row in rows if row["program"] == program), key=lambda row: -row["seconds"])
        slowest = own[:SLOWEST]
        largest = max(own, key=lambda row: row["memory"])
        yield from slowest + ([largest] if largest not in slowest else [])


def table(reference, rows):
    lines = ["| test | file | time | peak of the heap |", "|---|---|---|---|"]
    lines += [f"| {row['program']} | {row['row']} | {row['seconds'] / reference:.2f} | {row['memory'] / 2**20:.1f} MiB |"
              for row in shown(rows)]
    slowest = max(row["seconds"] for row in rows)
    lines += ["", f"{len(rows)} files were measured. Inflating 64 MiB took {reference:.2f} s, and the slowest file took "
              f"{slowest:.1f} s."]
    return "\n".join(lines)


def main():
    if sys.argv[1:] == ["--programs"]:
        print("\n".join(program for program, _ in TESTS))
        return
    programs, results, *pages = map(Path, sys.argv[1:])
    reference, rows = measure(programs)
    results.mkdir(parents=True, exist_ok=True)
    report = {"section": "Hostile files", "rows": [
        {"name": f"{row['program']}: {row['row']}", "value": f"{row['seconds']:.3f} s, {row['memory'] / 2**20:.1f} MiB",
         "against": f"{reference:.3f} s", "ratio": row["seconds"] / reference, "target": None} for row in rows]}
    (results / "hostile.json").write_text(json.dumps(report, indent=4) + "\n")

    text = table(reference, rows)
    print(text)
    for page in pages:
        page.write_text(re.sub(PLACE, lambda _: text, page.read_text(), count=1))


if __name__ == "__main__":
    main()
