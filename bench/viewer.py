#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""viewer.py BENCH_VIEWER READER PACKAGE: prints a Markdown table of the time from the start of a program to the first paint of
its window: an empty window of Qt Widgets, and the viewer with PACKAGE; and until the viewer shows the label of the package,
which READER reads. Each is measured without a screen and on a virtual one. The ways are measured in turns; a figure is the
median of its runs."""

import os
import statistics
import subprocess
import sys
import tempfile
import time

RUNS = 31


def milliseconds(command, environment):
    start = time.perf_counter()
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=environment) as process:
        assert process.stdout.readline() == b"shown\n"
        return 1000 * (time.perf_counter() - start)


def measure(kind, commands, environment):
    times = [[milliseconds(command, environment) for command in commands] for _ in range(RUNS)]
    empty, paint, head = (statistics.median(column) for column in zip(*times))
    print(f"| {kind} | empty window, first paint | {empty:.0f} | 1.00 | - |")
    print(f"| {kind} | viewer, first paint | {paint:.0f} | {paint / empty:.2f} | 1.2 |")
    print(f"| {kind} | viewer, the label of the package | {head:.0f} | {head / empty:.2f} | - |")


def main():
    bench, reader, package = sys.argv[1:]
    commands = [[bench, "empty"], [bench, "paint", package], [bench, "head", package]]
    print("| screen | window | ms | times the empty window | at most |\n|---|---|---|---|---|")
    with tempfile.TemporaryDirectory() as home:
        environment = dict(os.environ, LC_ALL="C.UTF-8", HOME=home, XDG_CONFIG_HOME=home, XDG_RUNTIME_DIR=home,
                           SORREL_VIEWER_READER=reader, QT_STYLE_OVERRIDE="fusion")
        measure("none", commands, dict(environment, QT_QPA_PLATFORM="offscreen"))
        # The server would begin anew when its last window is gone, which takes time and sometimes ends it.
        with subprocess.Popen(["Xvfb", "-displayfd", "1", "-noreset", "-nolisten", "tcp", "-screen", "0", "1600x1200x24"],
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as server:
            display = ":" + server.stdout.readline().decode().strip()
            try:
                measure("Xvfb", commands, dict(environment, QT_QPA_PLATFORM="xcb", DISPLAY=display))
            finally:
                server.terminate()


if __name__ == "__main__":
    main()
