#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""files.py PACKAGING PREFIX LIBDIR: checks that exactly one Debian package and one RPM package has each file installed below
PREFIX, and that no package names a missing file. LIBDIR is the directory of the libraries in PREFIX."""

import fnmatch
import pathlib
import re
import sys


def debian_patterns(directory):
    """The patterns of the .install files, as (package, pattern) below the prefix."""
    for file in sorted(directory.glob("*.install")):
        for line in file.read_text().splitlines():
            if line and not line.startswith("#"):
                # Debian's directory of libraries has the name of the architecture.
                pattern = re.sub("^usr/lib/[*]/", "LIBDIR/", line.split()[0])
                yield file.stem, pattern.removeprefix("usr/")


def rpm_patterns(spec):
    """The patterns of the lists of files, as (package, pattern) below the prefix."""
    macros = {"%{_bindir}": "bin", "%{_datadir}": "share", "%{_includedir}": "include", "%{_libdir}": "LIBDIR",
              "%{_libexecdir}": "libexec", "%{_mandir}": "share/man", "%{version}": "*"}
    package = None
    for line in spec.read_text().splitlines():
        if match := re.fullmatch(r"%files( \w+)?", line):
            package = "sorrel" + (match[1] or "").replace(" ", "-")
        elif line.startswith("%changelog"):
            return
        elif package and line.startswith("%{"):
            for macro, value in macros.items():
                line = line.replace(macro, value)
            yield package, line


def faults(kind, patterns, installed):
    """The faults of `patterns`, the patterns of all packages of a kind."""
    patterns = list(patterns)
    if not patterns:
        yield f"{kind}: no package has a file"
    takers = {file: set() for file in installed}
    for package, pattern in patterns:
        taken = [file for file in installed if fnmatch.fnmatch(file, pattern) or fnmatch.fnmatch(file, pattern + "/*")]
        if not taken:
            yield f"{kind}: {package} takes {pattern}, which is not installed"
        for file in taken:
            takers[file].add(package)
    for file, packages in takers.items():
        if len(packages) != 1:
            yield f"{kind}: {file} is in {' and '.join(sorted(packages)) or 'no package'}"


def main():
    packaging, prefix, libdir = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    paths = [path for path in prefix.rglob("*") if path.is_symlink() or not path.is_dir()]
    installed = sorted(re.sub(f"^{re.escape(libdir)}/", "LIBDIR/", str(path.relative_to(prefix))) for path in paths)
    found = [*faults("Debian", debian_patterns(packaging / "debian"), installed),
             *faults("RPM", rpm_patterns(packaging / "rpm" / "sorrel.spec"), installed)]
    if not installed:
        found.append(f"{prefix} is empty")
    for fault in found:
        print(fault, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
