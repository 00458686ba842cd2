#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""schema.py DIRECTORY SAMPLES SIGNED: checks the output of the installed `sorrel info --json`, `sorrel scan`,
`sorrel verify --json`, `sorrel diff --json` and `sorrel find --json` on the packages in SAMPLES and SIGNED against
report.schema.json, verify.schema.json, diff.schema.json and find.schema.json in DIRECTORY: it has no other properties. Each schema still has all properties in the
lists of released versions beside this script, because properties are only added. `schema.py --list SCHEMA` prints such a
list."""

import copy
import glob
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import urllib.parse

import jsonschema


def load(path):
    return json.loads(pathlib.Path(path).read_text(encoding="utf-8"))


class Schema:
    """A schema, and those beside it that it refers to."""

    def __init__(self, path):
        self.path = pathlib.Path(path)
        self.root = load(path)
        jsonschema.Draft202012Validator.check_schema(self.root)

    def target(self, reference):
        """The schema that `reference` refers to, and the Schema that contains it."""
        file, pointer = reference.split("#/$defs/")
        owner = Schema(self.path.with_name(file)) if file else self
        return owner, owner.root["$defs"][pointer]

    def properties(self, schema, path=""):
        """Every property below `schema` as a line, with its type and whether it is required."""
        if "$ref" in schema:
            owner, schema = self.target(schema["$ref"])
            yield from owner.properties(schema, path)
            return
        for name, value in schema.get("properties", {}).items():
            target = self.target(value["$ref"])[1] if "$ref" in value else value
            required = "always" if name in schema.get("required", []) else "sometimes"
            yield f"{path}/{name} {target.get('type', 'enum')} {required}"
            yield from self.properties(value, f"{path}/{name}")
        if "items" in schema:
            yield from self.properties(schema["items"], path + "[]")

    def listed(self):
        return sorted(set(self.properties(self.root)))

    def check_released(self):
        name = self.path.name.replace(".schema.json", "-schema-0.5.1.txt")
        released = pathlib.Path(__file__).with_name(name).read_text(encoding="utf-8").splitlines()
        gone = set(released) - set(self.listed())
        assert not gone, f"{self.path.name} no longer has: {gone}"

    def validator(self):
        """A validator that forbids properties that are not in the schemas."""
        base = "file:///"
        others = {base + path.name: closed(load(path)) for path in self.path.parent.glob("*.schema.json")}
        root = closed(self.root)
        resolver = jsonschema.RefResolver(base + self.path.name, root, store=others)
        return jsonschema.Draft202012Validator(root, resolver=resolver)


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


def validated(validator, lines):
    """The objects in `lines`. Ends the program when one is invalid."""
    for line in lines:
        report = json.loads(line)
        for error in validator.iter_errors(report):
            sys.exit(f"{report.get('file')}: {error.json_path}: {error.message}")
        yield report


def main():
    if sys.argv[1] == "--list":
        print("\n".join(Schema(sys.argv[2]).listed()))
        return
    reports, verifications, differences, finds = (Schema(pathlib.Path(sys.argv[1], name + ".schema.json"))
                                                  for name in ("report", "verify", "diff", "find"))
    for schema in (reports, verifications, differences, finds):
        schema.check_released()

    samples = sorted(glob.glob(sys.argv[2] + "/*.apk"))
    assert len(samples) > 10, "the sample packages are missing"
    signed = sorted(glob.glob(sys.argv[3] + "/*.apk*"))
    assert len(signed) > 5, "the signed packages are missing"
    with tempfile.TemporaryDirectory() as directory:
        bad = os.path.join(directory, "bad.apk")
        with open(bad, "wb") as file:
            file.write(b"no package")
        unnamed = os.path.join(directory, os.fsdecode(b"\xff.apk"))
        shutil.copyfile(samples[0], unnamed)
        files = samples + signed + [bad, os.path.join(directory, "missing.apk"), unnamed]
        lines = output("info", "--json", "--all", *files).splitlines()
        lines += output("scan", "--all", *files).splitlines()
        lines += output("scan", "--icon", "16", "--lint", *files).splitlines()
        lines += output("scan", "--timeout", "0.001", *files).splitlines()
        lines += output("info", "--json", "--signer", *files).splitlines()
        device = os.path.join(directory, "device.json")
        with open(device, "w", encoding="utf-8") as file:
            json.dump({"supportedAbis": ["x86"], "supportedLocales": ["de"], "screenDensity": 240, "sdkVersion": 21}, file)
        lines += output("info", "--json", "--device", device, *files).splitlines()
        lines += output("scan", "--verify", *files).splitlines()
        verified = output("verify", "--json", *files).splitlines()
        index = os.path.join(directory, "shelf.db")
        indexed = output("scan", "--verify", "--index", index, *files).splitlines()
        found = output("find", "--json", "--index", index, "example").splitlines()
        found += output("find", "--json", "--index", index, "org.x").splitlines()
        compared = [output("diff", "--json", old, new) for old, new in zip(samples, samples[1:] + [unnamed])]
    assert len(lines) == 7 * len(files), f"there are {len(lines)} lines for {len(files)} files"
    assert len(verified) == len(files), f"there are {len(verified)} lines for {len(files)} files"

    validator = reports.validator()
    seen = {"icon": 0, "lint": 0, "launchers": 0, "failed": 0, "uri": 0, "signer": 0, "signatures": 0, "installs": 0}
    for report in validated(validator, lines):
        if "uri" in report:
            assert urllib.parse.unquote_to_bytes(report["uri"]) == b"file://" + os.fsencode(unnamed)
        for key in ("icon", "lint", "launchers", "uri", "signer", "signatures", "installs"):
            seen[key] += bool(report.get(key))
        seen["failed"] += report["error"]["code"] != 0
    assert all(seen.values()), f"the samples do not have everything: {seen}"

    assert sorted(indexed) == sorted(lines[-len(files):]), "scan --index prints other lines"

    seen = {"error": 0, "file": 0, "labels": 0, "launcher": 0, "package": 0, "permissions": 0, "signer": 0, "state": 0, "uri": 0,
            "versionCode": 0, "versionName": 0}
    for report in validated(finds.validator(), found):
        for key in seen:
            seen[key] += bool(report.get(key))
    assert all(seen.values()), f"the samples do not have everything: {seen}"

    seen = {"errors": 0, "uri": 0, "verified": 0, "signers": 0, "warnings": 0, "packages": 0, "lineage": 0}
    validator = verifications.validator()
    for report in validated(validator, verified):
        for key in seen:
            seen[key] += bool(report.get(key))
        seen["lineage"] += any(signer["lineage"] for signer in report["signers"])
    assert all(seen.values()), f"the samples do not have everything: {seen}"
    report = next(json.loads(line) for line in verified if json.loads(line)["signers"])
    assert refuses(validator, report, lambda altered: altered["signers"][0].pop("certificate"))
    assert refuses(validator, report, lambda altered: altered["signers"][0]["certificate"].update(more=1))
    assert refuses(validator, report, lambda altered: altered.update(schemes=["v9"]))

    seen = set()
    for report in validated(differences.validator(), compared):
        seen.update(key for key, value in report.items() if value)
        seen.update(key for side in ("before", "after") for key in report[side])
    rare = {"complete", "nativeAbis", "otherBytes", "schemes", "signers", "splits"}
    missing = set(differences.root["properties"]) - seen - rare
    assert not missing, f"the differences of the samples do not have: {missing}"
    assert "uri" in seen

    validator = reports.validator()
    report = json.loads(lines[0])
    assert refuses(validator, report, lambda altered: altered.pop("package"))
    assert refuses(validator, report, lambda altered: altered.update(more=1))
    assert refuses(validator, report, lambda altered: altered.update(versionCode=1))
    assert refuses(validator, report, lambda altered: altered["error"].update(code=2))


if __name__ == "__main__":
    main()
