#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""follow.py PAGE PACKAGE PART...: runs the commands of PAGE in the parts with these titles, with PACKAGE as ~/app.apk, and
fails when a command fails. The first line of a file on the page is its name.

It needs a system of its own, with the checkout as the working directory; root needs no sudo. With --prefix PREFIX --libdir
LIBDIR, it follows a part from the start of its program, in a temporary directory, with the files installed in PREFIX. It then
installs nothing and changes nothing in the system."""

import argparse
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```(\w+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
TO_THE_PROGRAM = "cd ../launchers"


def steps(text):
    """The files of a part of the page, as pairs of name and content, and its commands, as strings."""
    for kind, body in BLOCK.findall(text):
        if kind != "console":
            yield re.match(r"(?://|#) (\S+)\n", body)[1], body
            continue
        lines = [line[2:] for line in body.splitlines() if line.startswith("$ ")]
        if not lines:
            sys.exit("a console without a command:\n" + body)
        yield from lines


def script(work):
    """The steps as a Bash script that starts in the checkout."""
    lines = ["set -euo pipefail", 'if ! command -v sudo >/dev/null; then sudo() { "$@"; }; fi']
    for step in work:
        if isinstance(step, str):
            lines += [f"printf '%s\\n' {shlex.quote('$ ' + step)}", step]
        else:
            name, content = step
            lines.append(f"printf %s {shlex.quote(content)} >\"$PROGRAM\"/{shlex.quote(name)}")
    return "\n".join(lines)


def follow(work, package, checkout, program, environment):
    program.mkdir(exist_ok=True)
    home = pathlib.Path(environment["HOME"])
    if not (home / "app.apk").exists():
        shutil.copyfile(package, home / "app.apk")
    icon = program / "icon.png"
    icon.unlink(missing_ok=True)
    run = subprocess.run(["bash", "-c", script(work)], cwd=checkout, check=False, stdin=subprocess.DEVNULL,
                         env={**environment, "PROGRAM": str(program)})
    if run.returncode != 0:
        sys.exit(f"the page's commands ended with status {run.returncode}")
    if TO_THE_PROGRAM in work and not icon.read_bytes().startswith(b"\x89PNG"):
        sys.exit("the program wrote no picture")


def follow_installed(work, package, prefix, libdir):
    """Follows a part from the start of its program, with the files below PREFIX instead of those of the system."""
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory)
        (root / "sorrel").mkdir()
        libraries = f"{prefix}/{libdir}"
        environment = {**os.environ, "HOME": directory, "CMAKE_PREFIX_PATH": prefix, "LD_LIBRARY_PATH": libraries,
                       "PKG_CONFIG_PATH": f"{libraries}/pkgconfig"}
        start = work.index(TO_THE_PROGRAM)
        work = [step for step in work[:start] if not isinstance(step, str)] + work[start:]
        for place in ("$$[QT_INSTALL_LIBS]", "/usr/local/lib"):
            work = [step if isinstance(step, str) else (step[0], step[1].replace(place, libraries)) for step in work]
        follow(work, package, root / "sorrel", root / "launchers", environment)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("page", type=pathlib.Path)
    parser.add_argument("package", type=pathlib.Path)
    parser.add_argument("parts", nargs="+")
    parser.add_argument("--prefix")
    parser.add_argument("--libdir")
    arguments = parser.parse_args()

    begin, *rest = re.split(r"^## ", arguments.page.read_text(encoding="utf-8"), flags=re.MULTILINE)
    parts = {part.partition("\n")[0]: part for part in rest}
    for title in arguments.parts:
        if title not in parts:
            sys.exit(f"the page has no part {title!r}")
        print(f"== {title}", flush=True)
        work = list(steps(begin)) + list(steps(parts[title]))
        if arguments.prefix:
            follow_installed(work, arguments.package, arguments.prefix, arguments.libdir)
        else:
            checkout = pathlib.Path.cwd()
            follow(work, arguments.package, checkout, checkout.parent / "launchers", dict(os.environ))


if __name__ == "__main__":
    main()
