#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""scan.py SORREL SAMPLES [OTHER | OUTPUT.json]: prints a Markdown table of the packages a second that `sorrel scan` reads with
one and with two workers, and the time to start a worker. OTHER is the program `sorrel` of another build, for a second column.
The packages are copies of the samples in the page cache. The ways are measured in turns; a figure is the median of its
runs. With OUTPUT.json, measures only the ways of `sorrel scan`, and writes them there for report.py."""

import glob
import json
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

COPIES = 60
RUNS = 5


def seconds(command, paths):
    start = time.perf_counter()
    subprocess.run(command, input=paths, stdout=subprocess.DEVNULL, check=True)
    return time.perf_counter() - start


def medians(ways, paths):
    """The median time of each way, measured in turns."""
    times = {name: [] for name in ways}
    for _ in range(RUNS):
        for name, command in ways.items():
            times[name].append(seconds(command, paths))
    return {name: statistics.median(values) for name, values in times.items()}


def ways_of(sorrel):
    return {
        "`sorrel scan -j 1 -`": [sorrel, "scan", "-j", "1", "-"],
        "`sorrel scan -j 2 -`": [sorrel, "scan", "-j", "2", "-"],
        "`sorrel scan -j 2 --icon 96 -`": [sorrel, "scan", "-j", "2", "--icon", "96", "-"],
        "`sorrel scan -j 2 --lint -`": [sorrel, "scan", "-j", "2", "--lint", "-"],
        "`sorrel info --json`, one process for all": ["xargs", "-d", "\n", sorrel, "info", "--json"],
        "`sorrel info --json`, a process each": ["xargs", "-d", "\n", "-n", "1", sorrel, "info", "--json"],
    }


def write_section(path, rates):
    """Packages a second have no target. They are compared with earlier ones."""
    rows = [{"name": way, "value": f"{rate:,.0f} a second", "measured": rate, "goal": "packages a second"}
            for way, rate in rates.items()]
    with open(path, "w", encoding="utf-8") as output:
        json.dump({"section": "Many packages", "rows": rows}, output, indent=2)
        output.write("\n")


def main():
    sorrel, samples, *others = sys.argv[1:]
    output = others.pop() if others and others[-1].endswith(".json") else None
    with tempfile.TemporaryDirectory() as shelf:
        for sample in sorted(glob.glob(samples + "/*.apk")):
            for copy in range(COPIES):
                shutil.copy(sample, os.path.join(shelf, f"{copy}-{os.path.basename(sample)}"))
        files = sorted(glob.glob(shelf + "/*.apk"))
        paths = "".join(path + "\n" for path in files).encode()

        if output:
            ways = {way: command for way, command in ways_of(sorrel).items() if "scan" in command}
            write_section(output, {way: len(files) / value for way, value in medians(ways, paths).items()})
            return
        builds = [ways_of(build) for build in [sorrel, *others]]
        times = medians({(name, build): command for build, ways in enumerate(builds) for name, command in ways.items()},
                        paths)
        print(f"{len(files)} packages:\n\n| way | packages a second |{' of the other build |' * len(others)}\n"
              f"|---|---|{'---|' * len(others)}")
        for name in builds[0]:
            rates = [f" {round(len(files) / times[name, build], -1):.0f} |" for build in range(len(builds))]
            print(f"| {name} |{''.join(rates)}")

        # One file for each worker, so each further worker adds one start and one file.
        few = {jobs: [sorrel, "scan", "-j", str(jobs), "-"] for jobs in (1, 41)}
        starts = medians(few, "".join(path + "\n" for path in files[:41]).encode())
        print(f"\n40 workers more for the same 41 files take {(starts[41] - starts[1]) * 1000:.0f} ms more: "
              f"{(starts[41] - starts[1]) * 1000 / 40:.1f} ms each.")


if __name__ == "__main__":
    main()
