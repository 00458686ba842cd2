#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Compares Sorrel with other readers of packages; each row is a ratio of two medians of alternating runs.

peers.py [FILE.apk...]          measures, and writes one JSON file for each section of the report
peers.py --check [FILE.apk...]  compares the results of Sorrel with those of Android's own resource library

Without files, it takes the sample packages of the build, the generated one with a table of 1 MB, and Debian's framework-res.apk if
it is installed. A row shows when its other program is missing.

The program with the library follows the rules of libsorrel, and the command follows those of Android: an activity with two
filters is one entry, and each step of a label's references is looked up in the user's language. The sample "notes" differs for
both reasons.
"""

import argparse
import json
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

FRAMEWORK = "/usr/share/android-framework-res/framework-res.apk"
TABLE_OF_1_MB = "table-1MB.apk"
LARGE_FILE = 20 << 20  # bytes
LIBRARY_TARGET = 1.0
AAPT_TARGET = 1.0
AAPT2_TARGET = 0.35
MEMORY_TARGET = 1.0
MISSING = "not installed"


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/bench", help="the build tree (default: %(default)s)")
    parser.add_argument("--output", help="directory for the JSON files (default: the build tree)")
    parser.add_argument("--sorrel", help="the command to measure (default: that of the build tree)")
    parser.add_argument("--check", action="store_true", help="compare answers, not times")
    parser.add_argument("files", nargs="*", metavar="FILE.apk")
    options = parser.parse_args()
    options.output = options.output or options.build
    options.sorrel = options.sorrel or program(options, "sorrel")
    options.files = options.files or default_packages(options.build)
    return options


def program(options, name):
    return os.path.join(options.build, "bin", name)


def default_packages(build):
    samples = os.path.join(build, "samples")
    names = sorted(os.listdir(samples)) if os.path.isdir(samples) else []
    files = [os.path.join(samples, name) for name in names if name.endswith(".apk")]
    files.append(os.path.join(build, "packages", TABLE_OF_1_MB))
    return [file for file in files + [FRAMEWORK] if os.path.exists(file)]


def is_large(file):
    return os.path.getsize(file) >= LARGE_FILE


def runs_of(command, repetitions):
    """The repetitions of each benchmark of a program, by the benchmark's name."""
    with tempfile.NamedTemporaryFile(suffix=".json") as output:
        subprocess.run(
            [command[0], f"--benchmark_repetitions={repetitions}", "--benchmark_enable_random_interleaving=true",
             "--benchmark_min_time=0.02", f"--benchmark_out={output.name}", "--benchmark_out_format=json",
             *command[1:]],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        report = json.load(output)
    runs = {}
    for run in report["benchmarks"]:
        if run["run_type"] == "iteration":
            runs.setdefault(run["name"].split("/")[0], []).append(run)
    return runs


def failure(runs):
    """A short error text for these runs; empty without an error."""
    if not runs:
        return MISSING
    for run in runs:
        if run.get("error_occurred"):
            return "fails: " + run["error_message"]
        if run.get("status"):
            return f"fails with status {run['status']:.0f}"
    return ""


def median(runs, key="real_time"):
    return statistics.median(run[key] for run in runs)


def milliseconds(runs):
    """The median as a text; the unit of Google Benchmark is the nanosecond."""
    return f"{median(runs) / 1e6:.3g} ms"


def mebibytes(runs):
    return f"{median(runs, 'peak_kib') / 1024:.1f} MiB"


def row(name, ours, theirs, text, key, target=None, goal=None):
    """A row of the report; it has no ratio when one side is missing or failed. A package that the other program cannot read
    has no target."""
    wrong = failure(ours), failure(theirs)
    if wrong[1] not in ("", MISSING):
        target = None
    measured = not any(wrong) and all(median(side, key) > 0 for side in (ours, theirs))
    shown = [text(side) if side and not side[0].get("error_occurred") else "-" for side in (ours, theirs)]
    notes = [f"{value} ({problem})" if value != "-" else problem for value, problem in zip(shown, wrong)]
    return {
        "name": name,
        "value": notes[0] if wrong[0] else shown[0],
        "against": notes[1] if wrong[1] else shown[1],
        "ratio": round(median(ours, key) / median(theirs, key), 3) if measured else None,
        "target": target,
        "goal": goal if target is not None else None,
    }


def in_process_rows(options):
    rows = []
    for file in options.files:
        runs = runs_of([program(options, "bench_peers"), file], 7 if is_large(file) else 15)
        name, theirs = os.path.basename(file), runs.get("androidfw")
        rows.append(row(f"{name}, the kit", runs.get("kit"), theirs, milliseconds, "real_time", LIBRARY_TARGET,
                        "the kit against Android's own library, in one process"))
        rows.append(row(f"{name}, libsorrel", runs.get("sorrel"), runs.get("androidfw_opening"), milliseconds,
                        "real_time"))
    return rows


def process_runs(options, files):
    """Runs each command on these files: sorrel on all at once, the others on one at a time."""
    command = [program(options, "bench_processes"), f"sorrel={options.sorrel}", "info", "--json", *files]
    for name in ("aapt", "aapt2"):
        path = shutil.which(name)
        for file in files if path else []:
            command += [f"{name}={path}", "dump", "badging", file]
    return runs_of(command, 11 if any(map(is_large, files)) else 51)


def kind_of(file):
    """The kind of package that a target is for; nothing for other large packages, which have no target."""
    kinds = {os.path.basename(FRAMEWORK): "framework-res", TABLE_OF_1_MB: "a table of 1 MB"}
    return kinds.get(os.path.basename(file)) or (None if is_large(file) else "small packages")


def process_sections(options):
    times, times2, memory = [], [], []
    for file in options.files:
        name, kind = os.path.basename(file), kind_of(file)
        runs = process_runs(options, [file])
        sorrel, aapt, aapt2 = (runs.get(key) for key in ("sorrel", "aapt", "aapt2"))
        for rows, theirs, program_name, target in ((times, aapt, "aapt", AAPT_TARGET), (times2, aapt2, "aapt2", AAPT2_TARGET)):
            rows.append(row(name, sorrel, theirs, milliseconds, "real_time", target if kind else None,
                            f"`sorrel info --json` against `{program_name} dump badging`, {kind}"))
        memory.append(row(name + ", aapt", sorrel, aapt, mebibytes, "peak_kib", MEMORY_TARGET if kind else None,
                          "peak of memory of `sorrel info --json` against `aapt`"))
        memory.append(row(name + ", aapt2", sorrel, aapt2, mebibytes, "peak_kib"))
    small = [file for file in options.files if not is_large(file)]
    if len(small) > 1:
        name = f"{len(small)} packages: one `sorrel`, and another process for each"
        runs = process_runs(options, small)
        times.append(row(name, runs.get("sorrel"), runs.get("aapt"), milliseconds, "real_time"))
        times2.append(row(name, runs.get("sorrel"), runs.get("aapt2"), milliseconds, "real_time"))
    return [
        ("processes-aapt", "Whole processes: `sorrel info --json` against `aapt dump badging`", times),
        ("processes-aapt2", "Whole processes: `sorrel info --json` against `aapt2 dump badging`", times2),
        ("processes-memory", "Whole processes: peak of resident memory", memory),
    ]


def measure(options):
    sections = [("androidfw", "In one process: the same questions to the kit, libsorrel and Android's resource library, "
                              "which decodes neither table nor manifest", in_process_rows(options))]
    sections += process_sections(options)
    os.makedirs(options.output, exist_ok=True)
    for name, title, rows in sections:
        path = os.path.join(options.output, f"peers-{name}.json")
        with open(path, "w", encoding="utf-8") as output:
            json.dump({"section": title, "rows": rows}, output, indent=2)
            output.write("\n")
        print(path)
    return 0


def answer(command):
    """The output of a program about a package, reduced to the facts that both print; None when it fails."""
    result = subprocess.run(command, stdout=subprocess.PIPE, check=False)
    return common_part(json.loads(result.stdout)) if result.returncode == 0 else None


def common_labels(labels):
    """The labels that both programs should print alike. The comparison skips kept behaviours (docs/kept-behaviours.md):
    locales with a language of three letters or a region of three digits, which are garbled; labels behind more than five
    references, which end as a reference text; and characters beyond Unicode's first plane, which become six replacement
    characters in files of aapt2."""
    return {
        locale: re.sub("[\U00010000-\U0010ffff]", 6 * "\ufffd", text)
        for locale, text in labels.items()
        if re.fullmatch("|[a-z]{2}(-[A-Z]{2})?", locale) and not re.fullmatch("@[a-z]+/[0-9]+", text)
    }


def common_part(info):
    """The facts about a package that both programs print."""
    launchers = [{"class": launcher["class"], "labels": common_labels(launcher["labels"])}
                 for launcher in info["launchers"]]
    return {"package": info["package"], "minSdkVersion": info["minSdkVersion"], "launchers": launchers}


def check(options):
    peer = program(options, "androidfw_peer")
    if not os.path.exists(peer):
        print("Android's resource library is " + MISSING, file=sys.stderr)
        return 1
    status = 0
    for file in options.files:
        ours = answer([options.sorrel, "info", "--json", file])
        theirs = answer([peer, "--print", file])
        if ours is not None and ours == theirs:
            print(f"{file}: the same, {len(ours['launchers'])} launchers")
        else:
            print(f"{file}: differs\n  sorrel    {json.dumps(ours, ensure_ascii=False, sort_keys=True)}\n"
                  f"  androidfw {json.dumps(theirs, ensure_ascii=False, sort_keys=True)}")
            status = 1
    return status


def main():
    options = arguments()
    if not options.files:
        print("peers.py: there is no package to look at", file=sys.stderr)
        return 2
    return check(options) if options.check else measure(options)


if __name__ == "__main__":
    sys.exit(main())
