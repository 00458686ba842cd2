#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Counts the instructions of the main rows under Callgrind, and compares them with the baseline.

Counts are of the whole process between start and stop, including Qt, QuaZip, zlib and the C library. They are the same in every
run on one machine. Other versions of the compiler or of a library give other counts; the script prints a note then.
"""

import argparse
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TOLERANCE = 0.05
BASELINE = Path(__file__).with_name("instructions.json")
FRAMEWORK = Path("/usr/share/android-framework-res/framework-res.apk")
# The longest row first, so no processor starts it at the end.
ROWS = ["resources/framework", "floor/framework", "manifest/generated", "resources/generated", "launchers/generated",
        "kit/generated", "floor/generated", "manifest/atlas", "resources/atlas", "kit/atlas", "kit/notes", "launchers/atlas",
        "floor/atlas", "floor/notes"]


def gather_packages(build, directory):
    """The packages under fixed names, because the length of a path changes the counts."""
    directory.mkdir(exist_ok=True)
    shutil.copyfile(build / "samples/atlas.aapt2.apk", directory / "atlas.apk")
    shutil.copyfile(build / "samples/notes.aapt2.apk", directory / "notes.apk")
    shutil.copyfile(build / "packages/generated-100k.apk", directory / "generated.apk")
    shutil.copyfile(FRAMEWORK, directory / "framework.apk")


def counted(build, directory, row):
    program = (build / "bin/bench_instructions").resolve()
    # The seed fixes the order in hash tables.
    environment = {"PATH": os.environ["PATH"], "QT_HASH_SEED": "0", "LC_ALL": "C.UTF-8"}
    with tempfile.TemporaryDirectory() as scratch:
        out = Path(scratch) / "out"
        command = ["valgrind", "--tool=callgrind", "--instr-atstart=no", f"--callgrind-out-file={out}", program, row]
        result = subprocess.run(command, cwd=directory, env=environment, capture_output=True, text=True, check=False)
        if result.returncode != 0:
            sys.exit(f"{row}: {result.stderr}")
        total = re.search(r"^totals: (\d+)$", out.read_text(), re.MULTILINE)
        if total is None or int(total[1]) == 0:
            sys.exit(f"{row}: nothing was counted")
        print(f"  {row}: {int(total[1]):,}", file=sys.stderr)
        return int(total[1])


def toolchain():
    def first_line(*command):
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()[0]

    versions = {name: first_line("pkg-config", "--modversion", name) for name in ("Qt5Core", "quazip1-qt5", "zlib")}
    return {"compiler": first_line("c++", "--version"), "libc": first_line("getconf", "GNU_LIBC_VERSION"), **versions}


def count_rows(build):
    directory = build / "counted"
    gather_packages(build, directory)
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        counts = dict(zip(ROWS, pool.map(lambda row: counted(build, directory, row), ROWS)))
    return {"toolchain": toolchain(), "counts": dict(sorted(counts.items()))}


def compare(now, baseline):
    """Prints a line for each row, and returns whether none grew or is missing."""
    good = True
    if now["toolchain"] != baseline["toolchain"]:
        print(f"the baseline is of {baseline['toolchain']}, this of {now['toolchain']}: counts may differ for that")
    for row in sorted(now["counts"].keys() | baseline["counts"].keys()):
        count, before = now["counts"].get(row), baseline["counts"].get(row)
        if count is None or before is None:
            print(f"{row}: missing in the {'run' if count is None else 'baseline'}")
            good = False
            continue
        growth = count / before - 1
        verdict = "as before"
        if growth > TOLERANCE:
            verdict = f"GREW by more than {TOLERANCE:.0%}"
            good = False
        elif growth < -TOLERANCE:
            verdict = f"shrank by more than {TOLERANCE:.0%}: update the baseline"
        print(f"{row}: {count:,} against {before:,} ({growth:+.2%}), {verdict}")
    return good


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=Path, help="the build tree, with samples and generated packages in it")
    parser.add_argument("--check", action="store_true", help="compare with the baseline; status 1 when a row grew")
    parser.add_argument("--update", action="store_true", help="make this run the baseline")
    arguments = parser.parse_args()

    now = count_rows(arguments.build)
    text = json.dumps(now, indent=4) + "\n"
    (arguments.build / "instructions.json").write_text(text)
    if arguments.update:
        BASELINE.write_text(text)
    if arguments.check and not compare(now, json.loads(BASELINE.read_text())):
        sys.exit(1)


if __name__ == "__main__":
    main()
