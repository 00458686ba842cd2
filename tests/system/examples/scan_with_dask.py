# SPDX-License-Identifier: LGPL-2.1-or-later
"""scan_with_dask.py SCAN SORREL SAMPLES: runs the example scan-with-dask on a cluster of two workers. Checks that every
package has its line, also when a worker is killed, or the scan itself, or when parts cannot be read."""

import glob
import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

SCAN, SORREL, SAMPLES = "", "", ""
PYTHON = "/usr/bin/python3"
COPIES = 6
PART = 10
# Reads parts as sorrel does. `started` has a directory for each part so far. The parts after the first $(cat free) wait
# for a file `go`.
GATE = """#!/bin/bash
number=1
until mkdir "{0}/started/$number" 2>/dev/null; do
    number=$((number + 1))
done
if [ "$number" -gt "$(cat "{0}/free")" ]; then
    mkdir "{0}/waiting/$number"
    until [ -e "{0}/go" ]; do
        sleep 0.02
    done
fi
exec "{1}" "$@"
"""


def wait_for(condition, what):
    """CTest ends a test that waits for too long."""
    while not condition():
        time.sleep(0.02)
    print(what, flush=True)


class ScanWithDask(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.directory = cls.enterClassContext(tempfile.TemporaryDirectory(prefix="dask"))
        # Dask writes its settings to the home directory otherwise.
        cls.environment = {**os.environ, "DASK_CONFIG": os.path.join(cls.directory, "settings"), "LC_ALL": "C.UTF-8",
                           "HOME": cls.directory}
        scheduler = os.path.join(cls.directory, "scheduler.json")
        cls.start("scheduler", "--host", "127.0.0.1", "--port", "0", "--no-dashboard", "--scheduler-file", scheduler)
        wait_for(lambda: os.path.exists(scheduler) and os.path.getsize(scheduler), "The scheduler has started")
        with open(scheduler, encoding="utf-8") as file:
            cls.address = json.load(file)["address"]
        cls.shelf = os.path.join(cls.directory, "shelf")
        for copy in range(COPIES):
            for sample in glob.glob(SAMPLES + "/*.apk"):
                place = os.path.join(cls.shelf, str(copy % 2), f"{copy}-{os.path.basename(sample)}")
                os.makedirs(os.path.dirname(place), exist_ok=True)
                shutil.copy(sample, place)
        with open(os.path.join(cls.shelf, "unreadable.apk"), "w", encoding="utf-8") as file:
            file.write("no package")

    @classmethod
    def start(cls, program, *arguments):
        """Starts a process of Dask."""
        process = subprocess.Popen([PYTHON, "-m", "distributed.cli.dask_" + program, *arguments], env=cls.environment,
                                   cwd=cls.directory)
        cls.addClassCleanup(process.wait)
        cls.addClassCleanup(process.kill)
        return process

    def setUp(self):
        self.place = tempfile.mkdtemp(dir=self.directory)
        self.output = os.path.join(self.place, "shelf.jsonl")
        # No nanny: it would start a killed worker again.
        self.workers = [self.start("worker", "--host", "127.0.0.1", "--no-nanny", "--no-dashboard", "--nthreads", "1",
                                   "--local-directory", self.place, self.address) for _ in range(2)]
        for worker in self.workers:
            self.addCleanup(worker.wait)
            self.addCleanup(worker.kill)

    def write(self, name, text):
        path = os.path.join(self.place, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        return path

    def gate(self, name, free):
        """A program like sorrel, which reads only some parts before it is opened."""
        for room in ("started", "waiting"):
            os.makedirs(os.path.join(self.place, name, room))
        self.write(name + "/free", str(free))
        gate = self.write(name + "/gate", GATE.format(os.path.join(self.place, name), SORREL))
        os.chmod(gate, 0o755)
        return gate

    def count(self, name):
        path = os.path.join(self.place, name)
        return len(os.listdir(path)) if os.path.isdir(path) else 0

    def command(self, program, *paths):
        return [PYTHON, SCAN, "-s", self.address, "-o", self.output, "--part", str(PART), "--sorrel", program, *paths]

    def scan(self, program, *paths, **options):
        return subprocess.run(self.command(program, *paths), env=self.environment, stderr=subprocess.PIPE, text=True,
                              check=False, **options)

    def lines(self):
        with open(self.output, "rb") as file:
            return file.read().splitlines()

    def expected(self):
        run = subprocess.run([SORREL, "scan", "--ordered", self.shelf], stdout=subprocess.PIPE,
                             stderr=subprocess.DEVNULL, check=False)
        lines = run.stdout.splitlines()
        self.assertEqual(len(set(lines)), len(glob.glob(SAMPLES + "/*.apk")) * COPIES + 1)
        return lines

    def start_half(self):
        """Starts a scan whose first half is done, with each worker in the middle of another part."""
        expected = self.expected()
        parts = -(-len(expected) // PART)
        half = parts // 2
        scan = subprocess.Popen(self.command(self.gate("first", half), self.shelf), env=self.environment,
                                stderr=subprocess.PIPE, text=True)
        self.addCleanup(scan.wait)
        self.addCleanup(scan.kill)
        self.addCleanup(scan.stderr.close)
        wait_for(lambda: self.count("shelf.jsonl.parts") == half and self.count("first/waiting") == 2,
                 f"{half} of {parts} parts are done")
        return scan, expected, parts

    def test_a_killed_worker(self):
        scan, expected, parts = self.start_half()
        self.workers[0].send_signal(signal.SIGKILL)
        self.workers[0].wait()
        self.assertFalse(os.path.exists(self.output))
        self.write("first/go", "")
        errors = scan.communicate()[1]
        self.assertEqual(self.lines(), expected)
        # The part of the killed worker was started twice.
        self.assertEqual(self.count("first/started"), parts + 1)
        self.assertEqual(scan.returncode, 1)
        self.assertEqual(errors.splitlines()[-2:],
                         [f"{len(expected)} of {len(expected)} packages",
                          "scan.py: 1 packages could not be read; their lines have the reasons"])
        self.assertEqual(self.count("shelf.jsonl.parts"), 0)

    def test_a_killed_scan(self):
        scan, expected, parts = self.start_half()
        scan.send_signal(signal.SIGKILL)
        scan.communicate()
        missing = parts - self.count("shelf.jsonl.parts")
        self.write("first/go", "")
        self.assertEqual(self.scan(self.gate("second", parts), self.shelf).returncode, 1)
        self.assertEqual(self.lines(), expected)
        self.assertEqual(self.count("second/started"), missing)

    def test_parts_that_cannot_be_read(self):
        with open(self.write("list", f"{self.shelf}/0\0{self.shelf}/1\0"), encoding="utf-8") as paths:
            run = self.scan("/missing/sorrel", "-0", "-", stdin=paths)
            self.assertEqual(run.returncode, 1)
            self.assertIn("parts were not read: [Errno 2] No such file or directory: '/missing/sorrel'", run.stderr)
            self.assertFalse(os.path.exists(self.output))
            paths.seek(0)
            self.assertEqual(self.scan(SORREL, "-0", "-", stdin=paths).returncode, 0)
        self.assertEqual(self.lines(), [line for line in self.expected() if b"unreadable.apk" not in line])

    def test_no_scheduler(self):
        self.address = "tcp://127.0.0.1:1"
        self.environment = {**self.environment, "DASK_DISTRIBUTED__COMM__TIMEOUTS__CONNECT": "1s"}
        run = self.scan(SORREL, self.shelf)
        self.assertEqual(run.returncode, 1)
        self.assertIn("scan.py: Timed out trying to connect to tcp://127.0.0.1:1", run.stderr)


if __name__ == "__main__":
    SCAN, SORREL, SAMPLES = sys.argv[1:4]
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)
