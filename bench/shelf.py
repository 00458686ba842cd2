#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""shelf.py BENCH_SHELF SORREL SAMPLES: prints a Markdown table of the index beside the bare work: listing 2,000 packages with
icons of 96 pixels beside a program that uses SQLite alone and beside reading the packages; finding that nothing changed
beside `find -newer`; and `sorrel find` beside `sorrel --version`. The packages are copies of samples in the page cache. The
ways are measured in turns; a figure is the median of its runs."""

import glob
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

PACKAGES = 2000
RUNS = 21
STARTS = 200


def milliseconds(command):
    start = time.perf_counter()
    subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
    return 1000 * (time.perf_counter() - start)


def in_turns(runs, *commands):
    """The median time of each command."""
    times = [[milliseconds(command) for command in commands] for _ in range(runs)]
    return [statistics.median(column) for column in zip(*times)]


def output(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, check=True, text=True).stdout


def main():
    bench, sorrel, samples = sys.argv[1:]
    with tempfile.TemporaryDirectory() as work:
        packages = os.path.join(work, "packages")
        index = os.path.join(work, "index", "shelf.db")
        # Packages with up to three launchers, and one that is to be found.
        found = glob.glob(os.path.join(samples, "notes.aapt2.apk"))
        files = [path for name in ("atlas", "babel", "gallery", "kiosk", "toolbox", "vectors")
                 for path in sorted(glob.glob(os.path.join(samples, name + ".*.apk")))]
        for number in range(PACKAGES):
            folder = os.path.join(packages, str(number % 20))
            os.makedirs(folder, exist_ok=True)
            source = found[0] if number == 0 else files[number % len(files)]
            shutil.copyfile(source, os.path.join(folder, f"{number}.apk"))
        subprocess.run([bench, "fill", index, packages], check=True)
        bare, listing = map(float, output(bench, "list", index, str(RUNS)).split())
        reading = statistics.median(
            milliseconds([sorrel, "scan", "--no-progress", "--icon", "96", packages]) for _ in range(3))
        # A refresh in an open shelf; the first of a process also starts its thread.
        newer_runs, unchanged_runs = [], []
        for _ in range(RUNS):
            newer_runs.append(milliseconds(["find", packages, "-newer", index]))
            unchanged_runs.append(float(output(bench, "refresh", index, "3")))
        newer, unchanged = statistics.median(newer_runs), statistics.median(unchanged_runs)
        version, find = in_turns(STARTS, [sorrel, "--version"], [sorrel, "find", "Notizen", "--index", index])
    rows = [
        ("listing with icons", listing, "SQLite alone", bare, "1.5 times"),
        ("listing with icons", listing, "reading the packages", reading, "a fiftieth"),
        ("finding that nothing changed", unchanged, "`find -newer`", newer, "2 times"),
        ("`sorrel find`", find, "`sorrel --version`", version, "2 times"),
    ]
    print("| work | ms | beside | ms | ratio | at most |\n|---|---|---|---|---|---|")
    for name, own, other, bare_time, goal in rows:
        print(f"| {name} | {own:.1f} | {other} | {bare_time:.1f} | {own / bare_time:.2f} | {goal} |")


if __name__ == "__main__":
    main()
