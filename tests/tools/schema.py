#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""schema.py SCHEMA RELEASED SAMPLES: checks the output of the installed `sorrel info --json` and `sorrel scan` against SCHEMA:
it has no other properties, and SCHEMA still has all properties of the version in RELEASED, because properties are only added.
`schema.py --list SCHEMA` prints a list in the form of RELEASED."""

import copy
import glob
import json
import os
import shutil
import subprocess
import sys
import tempfile
import urllib.parse

import jsonschema


def properties(schema, path=""):
    """Every property below `schema` as a line, with its type and whether it is required."""
    if "$ref" in schema:
        yield from properties(ROOT["$defs"][schema["$ref"].rsplit("/", 1)[1]], path)
        return
    for name, value in schema.get("properties", {}).items():
        target = ROOT["$defs"][value["$ref"].rsplit("/", 1)[1]] if "$ref" in value else value
        required = "always" if name in schema.get("required", []) else "sometimes"
        yield f"{path}/{name} {target.get('type', 'enum')} {required}"
        yield from properties(value, f"{path}/{name}")
    if "items" in schema:
        yield from properties(schema["items"], path + "[]")


def closed(schema):
    """The same schema, which forbids properties that it does not name."""
    if isinstance(schema, dict):
        schema = {key: closed(value) for key, value in schema.items()}
        if "properties" in schema and isinstance(schema["properties"], dict):
            schema["additionalProperties"] = False
    elif isinstance(schema, list):
        schema = [closed(value) for value in schema]
    return schema


def output(*arguments):
    return subprocess.run(["sorrel", *arguments], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False).stdout


def refuses(validator, report, change):
    """Checks that a report altered by `change` is invalid; otherwise the validation proves nothing."""
    altered = copy.deepcopy(report)
    change(altered)
    return not validator.is_valid(altered)


def main():
    global ROOT
    with open(sys.argv[-1] if sys.argv[1] == "--list" else sys.argv[1], encoding="utf-8") as file:
        ROOT = json.load(file)
    jsonschema.Draft202012Validator.check_schema(ROOT)
    listed = sorted(set(properties(ROOT)))
    if sys.argv[1] == "--list":
        print("\n".join(listed))
        return

    with open(sys.argv[2], encoding="utf-8") as file:
        gone = [line for line in file.read().splitlines() if line not in listed]
    assert not gone, f"the schema no longer says: {gone}"

    samples = sorted(glob.glob(sys.argv[3] + "/*.apk"))
    assert len(samples) > 10, "the sample packages are missing"
    with tempfile.TemporaryDirectory() as directory:
        bad = os.path.join(directory, "bad.apk")
        with open(bad, "wb") as file:
            file.write(b"no package")
        unnamed = os.path.join(directory, os.fsdecode(b"\xff.apk"))
        shutil.copyfile(samples[0], unnamed)
        files = samples + [bad, os.path.join(directory, "missing.apk"), unnamed]
        lines = output("info", "--json", "--all", *files).splitlines()
        lines += output("scan", "--all", *files).splitlines()
        lines += output("scan", "--icon", "16", "--lint", *files).splitlines()
        lines += output("scan", "--timeout", "0.001", *files).splitlines()
    assert len(lines) == 4 * len(files), f"there are {len(lines)} lines for {len(files)} files"

    validator = jsonschema.Draft202012Validator(closed(ROOT))
    seen = {"icon": 0, "lint": 0, "launchers": 0, "failed": 0, "uri": 0}
    for line in lines:
        report = json.loads(line)
        for error in validator.iter_errors(report):
            sys.exit(f"{report.get('file')}: {error.json_path}: {error.message}")
        if "uri" in report:
            assert urllib.parse.unquote_to_bytes(report["uri"]) == b"file://" + os.fsencode(unnamed)
        for key in ("icon", "lint", "launchers", "uri"):
            seen[key] += bool(report.get(key))
        seen["failed"] += report["error"]["code"] != 0
    assert all(seen.values()), f"the samples do not have everything: {seen}"

    report = json.loads(lines[0])
    assert refuses(validator, report, lambda altered: altered.pop("package"))
    assert refuses(validator, report, lambda altered: altered.update(more=1))
    assert refuses(validator, report, lambda altered: altered.update(versionCode=1))
    assert refuses(validator, report, lambda altered: altered["error"].update(code=2))


if __name__ == "__main__":
    main()
