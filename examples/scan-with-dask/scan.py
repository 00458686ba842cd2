#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Scan packages on a Dask cluster, and write the lines of `sorrel scan --ordered` to a file.

The list of packages is split into parts. A task of the cluster reads a part with `sorrel scan`. Each finished part is a
file in the directory FILE.parts, so the same command continues an interrupted scan.
"""

import argparse
import hashlib
import json
import os
import shutil
import subprocess
import sys

from distributed import Client, as_completed

ENDINGS = (b".apk", b".apks", b".xapk", b".apkm")
COMMAND = ["scan", "--ordered", "-0", "-j", "1", "-"]


def packages(path):
    """The packages that a path means, in the order of `sorrel scan --ordered`."""
    # The cluster has other working directories.
    path = os.path.join(os.getcwdb(), path)
    if not os.path.isdir(path):
        yield path
    for directory, directories, names in os.walk(path):
        directories.sort()
        for name in sorted(names):
            file = os.path.join(directory, name)
            if name.lower().endswith(ENDINGS) and os.path.isfile(file):
                yield file


def read_arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("paths", metavar="PATH", nargs="+",
                        help="a package, a directory to search for packages, or '-' for a list on standard input")
    parser.add_argument("-s", "--scheduler", metavar="ADDRESS", required=True, help="for example tcp://host:8786")
    parser.add_argument("-o", "--output", metavar="FILE", required=True, help="the file for the lines")
    parser.add_argument("-0", "--null", action="store_true", help="a NUL follows each path on standard input")
    parser.add_argument("--part", metavar="N", type=int, default=500, help="packages in a part; by default 500")
    parser.add_argument("--sorrel", metavar="PROGRAM", default="sorrel", help="the program 'sorrel' on each machine")
    arguments = parser.parse_args()
    if arguments.part < 1:
        parser.error("--part is at least 1")
    return arguments


def read_paths(arguments):
    for argument in arguments.paths:
        if argument != "-":
            yield from packages(os.fsencode(argument))
            continue
        for line in sys.stdin.buffer.read().split(b"\0" if arguments.null else b"\n"):
            if line:
                yield from packages(line)


def split(paths, size, directory):
    """The parts as a map from their files to their paths. A part of another list has another file."""
    parts = {}
    for first in range(0, len(paths), size):
        part = paths[first:first + size]
        digest = hashlib.sha256(b"\0".join(part)).hexdigest()
        parts[os.path.join(directory, f"{first:09}-{digest}")] = part
    return parts


def read_part(command, paths):
    """Runs on the cluster. Returns the lines about the packages, one for each."""
    run = subprocess.run(command, input=b"\0".join(paths), stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    # Status 1 is an unreadable package. Its line has the error.
    if run.returncode not in (0, 1) or run.stdout.count(b"\n") != len(paths):
        raise RuntimeError(f"{command[0]} ended with status {run.returncode}: {run.stderr.decode(errors='replace')}")
    return run.stdout


def write(file, lines):
    """Writes a file as a whole or not at all."""
    with open(file + ".new", "wb") as new:
        new.writelines(lines)
    os.replace(file + ".new", file)


def read_missing(client, command, parts):
    """Reads the parts that have no file yet. Returns the reasons for the parts that could not be read."""
    waiting = {client.submit(read_part, command, paths, pure=False): file
               for file, paths in parts.items() if not os.path.exists(file)}
    total = sum(map(len, parts.values()))
    done = total - sum(len(parts[file]) for file in waiting.values())
    faults = []
    for future in as_completed(list(waiting)):
        file = waiting.pop(future)
        try:
            write(file, [future.result()])
            done += len(parts[file])
        except Exception as fault:  # pylint: disable=broad-except
            # Whatever the task raised, or that too many workers died with it.
            faults.append(str(fault).strip())
        print(f"{done} of {total} packages", end="\r" if sys.stderr.isatty() else "\n", file=sys.stderr, flush=True)
    return faults


def join(parts, output):
    """Writes the lines of all parts. Returns the number of packages that could not be read."""
    unreadable = 0

    def lines():
        nonlocal unreadable
        for file in parts:
            with open(file, "rb") as part:
                for line in part:
                    unreadable += json.loads(line)["error"]["code"] != 0
                    yield line

    write(output, lines())
    return unreadable


def main():
    arguments = read_arguments()
    directory = arguments.output + ".parts"
    try:
        parts = split(list(read_paths(arguments)), arguments.part, directory)
        os.makedirs(directory, exist_ok=True)
        with Client(arguments.scheduler) as client:
            if not client.scheduler_info()["workers"]:
                print("scan.py: waiting for the first worker of the cluster", file=sys.stderr)
            faults = read_missing(client, [arguments.sorrel] + COMMAND, parts)
        if faults:
            sys.exit(f"scan.py: {len(faults)} of {len(parts)} parts were not read: {faults[0]}\n"
                     "scan.py: the same command reads only these parts again")
        unreadable = join(parts, arguments.output)
        shutil.rmtree(directory)
    except OSError as fault:
        sys.exit(f"scan.py: {fault}")
    except KeyboardInterrupt:
        sys.exit("scan.py: interrupted; the same command reads only the missing parts")
    if unreadable:
        sys.exit(f"scan.py: {unreadable} packages could not be read; their lines have the reasons")


if __name__ == "__main__":
    main()
