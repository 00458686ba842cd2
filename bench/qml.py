#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""qml.py BENCH_QML BENCH_SHELF IMPORTS EXAMPLE EMPTY SAMPLES: prints a Markdown table of the time from the start of a
program to the first frame of its window: an empty window, and the example home-screen-qml with 500 packages in a warm
index, also until each icon of the page is shown. The index is that of the user, which the module begins to read when it
is loaded, or another one. The ways are measured in turns; a figure is the median of its runs."""

import glob
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

PACKAGES = 500
RUNS = 21


def milliseconds(command):
    start = time.perf_counter()
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as process:
        assert process.stdout.readline() == b"shown\n"
        return 1000 * (time.perf_counter() - start)


def main():
    bench, bench_shelf, imports, example, empty, samples = sys.argv[1:]
    os.environ.update(QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software", LC_ALL="C.UTF-8")
    with tempfile.TemporaryDirectory() as work:
        packages = os.path.join(work, "packages")
        index = os.path.join(work, "sorrel", "shelf.db")
        other = os.path.join(work, "other.db")
        os.environ["XDG_CACHE_HOME"] = work
        os.mkdir(packages)
        os.mkdir(os.path.dirname(index))
        files = [path for name in ("atlas", "babel", "gallery", "kiosk", "notes", "toolbox")
                 for path in sorted(glob.glob(os.path.join(samples, name + ".aapt2.apk")))]
        for number in range(PACKAGES):
            shutil.copyfile(files[number % len(files)], os.path.join(packages, f"{number}.apk"))
        subprocess.run([bench_shelf, "fill", index, packages], check=True)
        page = [bench, "page", example, imports, packages, ""]
        subprocess.run(page, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)  # stores icons of this size
        shutil.copyfile(index, other)
        ways = [[bench, "frame", empty, imports],
                [bench, "frame", example, imports, packages, ""],
                [bench, "frame", example, imports, packages, other],
                page]
        for way in ways:
            milliseconds(way)  # the engine stores compiled QML files
        times = [[milliseconds(way) for way in ways] for _ in range(RUNS)]
        bare, frame, elsewhere, icons = (statistics.median(column) for column in zip(*times))
    print("| window | ms | times the empty window | at most |\n|---|---|---|---|")
    print(f"| empty, first frame | {bare:.0f} | 1.00 | - |")
    print(f"| {PACKAGES} packages, first frame | {frame:.0f} | {frame / bare:.2f} | 1.5 |")
    print(f"| {PACKAGES} packages of another index, first frame | {elsewhere:.0f} | {elsewhere / bare:.2f} | - |")
    print(f"| {PACKAGES} packages, the page with its icons | {icons:.0f} | {icons / bare:.2f} | - |")


if __name__ == "__main__":
    main()
