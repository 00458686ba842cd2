#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""peer.py SORREL SAMPLES: signs packages by Debian's apksigner in every way that it can, takes signatures away, changes
members and bytes, and compares the output of SORREL verify with that of apksigner verify: whether the package is
verified, by which schemes, and the certificates. SAMPLES is the directory of the sample packages."""

import collections
import concurrent.futures
import json
import os
import pathlib
import random
import shutil
import struct
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "support"))

import apksigner  # noqa: E402
import packages  # noqa: E402
from skip import skip  # noqa: E402

# Fewer comparisons mean that packages were not made.
LEAST_COMPARISONS = 430
DAMAGED_COPIES = 16
SEED = 20

ANY = (None, None)
OLD = (9, 17)
MIDDLE = (18, 23)
NOUGAT = (24, 27)
FROM_NOUGAT = (24, None)
FROM_PIE = (28, None)

# Packages whose lineage is compared.
ROTATED = ("rotated", "rotated-limited", "rotated-twice", "rotated-v3", "rotated-twice-v3")

# A package that is verified for some ranges of API levels. With `isStricter`, sorrel may refuse what apksigner accepts,
# but must not accept what it refuses. Bytes that are changed at random are such cases: apksigner skips some damaged
# parts of a package.
Package = collections.namedtuple("Package", "path ranges idsig isStricter")


class Workshop:
    """Keys, and packages that are signed by them, in a directory."""

    def __init__(self, directory, samples, pool):
        self.directory, self.pool = directory, pool
        kinds = [*apksigner.KINDS, *apksigner.DSA_BITS, "rsa2048-2", "ec256-2", "rsa2048-3", "rsa2048-stamp"]
        self.keys = dict(zip(kinds, pool.map(lambda kind: apksigner.Key(directory, kind), kinds)))
        sample = (samples / "notes.aapt2.apk").read_bytes()
        self.sample = self.written("sample.apk", sample)
        content = bytes(range(256)) * 8192  # more than one chunk of the digests
        self.large = self.written("large.apk", packages.archive(
            [*packages.members(sample), ("assets/large", content, True), ("assets/ümlaut", b"text")], b"comment"))
        self.target30 = samples / "kiosk.aapt2.apk"
        everything = self.directory / "everything.apk"
        apksigner.sign(self.sample, everything, [self.keys["rsa2048"]], {"v1", "v2", "v3"})
        apksigner.keep_classes(directory, "verify", "-v", "--print-certs", everything)
        self.signed = []
        self.futures = []

    def written(self, name, data):
        path = self.directory / name
        path.write_bytes(data)
        return path

    def key(self, name):
        return self.keys[name]

    def sign(self, name, keys, schemes, ranges, options=(), source=None, has_idsig=False):
        """Signs a package in the background. Its file has this name."""
        def work():
            path = self.directory / f"{name}.apk"
            apksigner.sign(source or self.sample, path, [self.keys[key] for key in keys], schemes, options)
            idsig = None
            if has_idsig:
                # Beside the package, sorrel would find it without being asked.
                idsig = self.directory / f"{name}.signature"
                shutil.move(f"{path}.idsig", idsig)
            return Package(path, ranges, idsig, False)
        self.futures.append((name, self.pool.submit(work)))

    def finish(self):
        """Waits for the packages."""
        found = {name: future.result() for name, future in self.futures}
        self.futures = []
        return found

    def derive(self, name, data, ranges, idsig=None, is_stricter=False):
        return Package(self.written(f"{name}.apk", data), ranges, idsig, is_stricter)


def sign_by_every_key(shop):
    for key in [*apksigner.KINDS, *apksigner.DSA_BITS]:
        first = 9 if key.startswith(("rsa", "dsa1")) else 18
        old = ["--min-sdk-version", 21 if key == "dsa2048" else first]
        shop.sign(f"v1-{key}", [key], {"v1"}, [ANY, OLD, FROM_NOUGAT], old)
        shop.sign(f"v1-new-{key}", [key], {"v1"}, [ANY, MIDDLE], ["--min-sdk-version", 23])
        shop.sign(f"v2-{key}", [key], {"v2"}, [ANY, FROM_NOUGAT], ["--min-sdk-version", 24])
        shop.sign(f"v3-{key}", [key], {"v3"}, [NOUGAT, FROM_PIE], ["--min-sdk-version", 28])
        shop.sign(f"all-{key}", [key], {"v1", "v2", "v3"}, [ANY, FROM_NOUGAT], ["--min-sdk-version", 23])


def sign_in_other_ways(shop):
    old = ["--min-sdk-version", 18]
    new = ["--min-sdk-version", 24]
    shop.sign("large", ["rsa2048"], {"v1", "v2", "v3"}, [ANY, NOUGAT, FROM_PIE], old, shop.large)
    shop.sign("large-4096", ["rsa4096"], {"v2"}, [FROM_NOUGAT], new, shop.large)
    shop.sign("v1v2", ["rsa2048"], {"v1", "v2"}, [ANY, MIDDLE, FROM_NOUGAT, FROM_PIE], old)
    shop.sign("v2v3", ["ec256"], {"v2", "v3"}, [FROM_NOUGAT, FROM_PIE, NOUGAT], new)
    shop.sign("target-30", ["rsa2048"], {"v1"}, [ANY, MIDDLE], old, shop.target30)
    two = ["rsa2048", "ec256"]
    shop.sign("two-v1", two, {"v1"}, [ANY, MIDDLE], old)
    shop.sign("two-v2", two, {"v2"}, [FROM_NOUGAT], new)
    shop.sign("two-v1v2", ["ec256", "rsa2048", "rsa4096"], {"v1", "v2"}, [MIDDLE, FROM_NOUGAT], old)
    for key in ("rsa2048", "ec256", "dsa2048", "rsa4096"):
        shop.sign(f"verity-{key}", [key], {"v2", "v3"}, [FROM_NOUGAT, FROM_PIE], [*new, "--verity-enabled"], shop.large)
    for key in ("rsa2048", "ec384", "rsa4096"):
        shop.sign(f"v4-{key}", [key], {"v2", "v3", "v4"}, [FROM_NOUGAT, FROM_PIE], new, shop.large, True)
    shop.sign("v4-v2", ["ec256"], {"v2", "v4"}, [FROM_NOUGAT], new, shop.sample, True)
    shop.sign("v4-verity", ["ec256"], {"v2", "v3", "v4"}, [FROM_PIE], [*new, "--verity-enabled"], shop.large, True)
    stamp = ["--stamp-signer", *shop.key("rsa2048-stamp").options()]
    for name, schemes, ranges in (("stamp-v1", {"v1"}, [ANY, MIDDLE]), ("stamp-v2", {"v2"}, [FROM_NOUGAT]),
                                  ("stamp-v3", {"v3"}, [FROM_PIE]),
                                  ("stamp", {"v1", "v2", "v3"}, [MIDDLE, FROM_NOUGAT, FROM_PIE])):
        shop.sign(name, ["ec256"], schemes, ranges, [*old, *stamp])
    shop.sign("stamp-two", ["ec256", "rsa4096"], {"v1", "v2"}, [MIDDLE, FROM_NOUGAT], [*old, *stamp])
    shop.sign("stamp-verity", ["ec256"], {"v2", "v3"}, [FROM_NOUGAT], [*new, "--verity-enabled", *stamp], shop.large)


def sign_with_rotated_keys(shop):
    first, second, third = (shop.key(name) for name in ("rsa2048", "ec256-2", "rsa2048-3"))
    two, three, limited, of_stamp = (shop.directory / f"lineage-{number}" for number in range(4))
    apksigner.rotate(two, first, second)
    apksigner.rotate(three, second, third, source=two)
    apksigner.rotate(limited, first, second, "--set-rollback", "true", "--set-shared-uid", "false", "--set-permission",
                     "false", "--set-installed-data", "false", "--set-auth", "true")
    apksigner.rotate(of_stamp, shop.key("rsa2048-2"), shop.key("rsa2048-stamp"))
    for name, lineage, keys in (("rotated", two, ["rsa2048", "ec256-2"]),
                                ("rotated-limited", limited, ["rsa2048", "ec256-2"]),
                                ("rotated-twice", three, ["rsa2048", "rsa2048-3"])):
        shop.sign(name, keys, {"v1", "v2", "v3"}, [ANY, NOUGAT, FROM_PIE],
                  ["--min-sdk-version", 18, "--lineage", lineage])
        shop.sign(f"{name}-v3", keys[-1:], {"v3"}, [FROM_PIE], ["--min-sdk-version", 28, "--lineage", lineage])
    shop.sign("rotated-v4", ["rsa2048", "ec256-2"], {"v2", "v3", "v4"}, [FROM_NOUGAT, FROM_PIE],
              ["--min-sdk-version", 24, "--lineage", two], shop.large, True)
    stamp = ["--stamp-signer", *shop.key("rsa2048-stamp").options(), "--stamp-lineage", of_stamp]
    shop.sign("rotated-stamp", ["ec256"], {"v2", "v3"}, [FROM_NOUGAT], ["--min-sdk-version", 24, *stamp])


def without_signatures(shop, signed):
    """Packages that lack a signature which they had."""
    def data(name):
        return signed[name].path.read_bytes()

    yield shop.derive("unsigned", shop.sample.read_bytes(), [ANY, FROM_NOUGAT])
    for name in ("v1v2", "all-rsa2048", "v2-rsa2048", "v2v3", "two-v1v2", "stamp"):
        yield shop.derive(f"{name}-no-block", packages.with_pairs(data(name), []), [MIDDLE, FROM_NOUGAT, FROM_PIE])
    for name in ("all-ec256", "v2v3", "large"):
        for scheme, number in (("v2", packages.V2), ("v3", packages.V3)):
            yield shop.derive(f"{name}-no-{scheme}", packages.without_pair(data(name), number),
                              [MIDDLE, NOUGAT, FROM_NOUGAT, FROM_PIE])
    for name in ("v1-rsa2048", "two-v1"):
        whole = data(name)
        for part in ("/MANIFEST.MF", ".SF", ".RSA"):
            yield shop.derive(f"{name}-no{part.replace('/', '-')}",
                              packages.without(whole, lambda each: each.endswith(part)), [ANY, FROM_NOUGAT])
    yield shop.derive("two-v1-one-left", packages.without(data("two-v1"), lambda each: "EC256" in each), [ANY, MIDDLE])


def with_changed_members(shop, signed):
    """Packages by v1 whose members differ from those that were signed."""
    ranges = [ANY, MIDDLE, FROM_NOUGAT]
    for name in ("v1-rsa2048", "v1-new-ec256"):
        whole = signed[name].path.read_bytes()
        inside = packages.members(whole)
        base = next(each for each, _ in inside if each.endswith(".SF")).removesuffix(".SF")
        last = inside[-4][0] if not inside[-4][0].startswith("META-INF/") else "AndroidManifest.xml"
        variants = {
            "same": packages.with_members(whole, lambda each, content: [(each, content)]),
            "added": packages.archive([*inside, ("added", b"content")]),
            "added-to-meta-inf": packages.archive([*inside, ("META-INF/added", b"content")]),
            "added-directory": packages.archive([*inside, ("directory/", b"")]),
            "removed": packages.without(whole, lambda each: each == last),
            "changed": packages.with_members(
                whole, lambda each, content: [(each, content + b"x" if each == last else content)]),
            "behind-code": packages.behind(whole, b"dex\n035\0"),
            "behind-bytes": b"dex\n035\0" + whole,
            "before-bytes": whole + b"bytes",
            "comment-size": packages.flipped(whole, len(whole) - 2),
            "manifest": packages.changed(whole, "META-INF/MANIFEST.MF", b"Name: ", b"Name:  "),
            "manifest-digest": packages.changed(whole, "META-INF/MANIFEST.MF", b"-Digest: ", b"-Digest: A"),
            "manifest-version": packages.changed(whole, "META-INF/MANIFEST.MF", b"-Version: 1.0", b"-Version: 1.1"),
            "manifest-end": packages.with_members(whole, lambda each, content: [
                (each, content + b"Name: more\r\n\r\n" if each == "META-INF/MANIFEST.MF" else content)]),
            "signature-file": packages.changed(whole, f"{base}.SF", b"Name: ", b"Name:  "),
            "signature-file-version": packages.changed(whole, f"{base}.SF", b"Signature-Version: 1.0",
                                                       b"Signature-Version: 1.1"),
        }
        for variant, data in variants.items():
            # apksigner does not compare the first section of the manifest, and accepts bytes before an archive, which
            # Android refuses.
            is_stricter = variant in ("manifest-version", "behind-code")
            yield shop.derive(f"{name}-{variant}", data, ranges, is_stricter=is_stricter)


def with_damaged_bytes(shop, signed):
    """Packages with one other bit in what is signed, and v4 signatures of which one bit differs."""
    chance = random.Random(SEED)
    for name, range_ in (("large", FROM_NOUGAT), ("v2v3", FROM_PIE), ("verity-ec256", FROM_PIE),
                         ("two-v2", FROM_NOUGAT)):
        whole = signed[name].path.read_bytes()
        for at, data in packages.damaged(whole, packages.signed_regions(whole), DAMAGED_COPIES, chance):
            yield shop.derive(f"{name}-at-{at}", data, [range_], is_stricter=True)
    whole = signed["stamp"].path.read_bytes()
    for at, data in packages.damaged(whole, packages.values(whole, packages.STAMP), DAMAGED_COPIES, chance):
        yield shop.derive(f"stamp-at-{at}", data, [FROM_NOUGAT])
    for name in ("v1-rsa2048", "v1-new-ec256"):
        inside = packages.members(signed[name].path.read_bytes())
        for member, content in inside:
            if not member.startswith("META-INF/"):
                continue
            for at, other in packages.damaged(content, [(0, len(content))], DAMAGED_COPIES // 2, chance):
                data = packages.archive([(each, other if each == member else bytes_) for each, bytes_ in inside])
                yield shop.derive(f"{name}-{member.replace('/', '-')}-at-{at}", data, [MIDDLE], is_stricter=True)
    for name in ("v4-rsa2048", "v4-verity"):
        idsig = signed[name].idsig.read_bytes()
        (hashing,) = struct.unpack_from("<i", idsig, 4)
        (signing,) = struct.unpack_from("<i", idsig, 8 + hashing)
        tree = 12 + hashing + signing
        regions = [(21, 53), (12 + hashing, tree), (tree + 4, len(idsig))]  # root hash, signing info, tree
        for at, other in packages.damaged(idsig, regions, DAMAGED_COPIES // 2, chance):
            path = shop.directory / f"{name}-at-{at}.signature"
            path.write_bytes(other)
            yield Package(signed[name].path, [FROM_PIE], path, False)


def sorrel_reports(sorrel, files, range_, idsig=None):
    """The reports of sorrel verify about these files, in their order."""
    options = []
    for option, level in zip(("--min-sdk", "--max-sdk"), range_):
        options += [option, str(level)] if level else []
    if idsig:
        options += ["--v4-signature", str(idsig)]
    result = subprocess.run([sorrel, "verify", "--json", *options, *map(str, files)], stdout=subprocess.PIPE, text=True,
                            check=False)
    reports = [json.loads(line) for line in result.stdout.splitlines()]
    if result.returncode not in (0, 1) or len(reports) != len(files):
        sys.exit(f"sorrel verify ends with status {result.returncode} and {len(reports)} reports of {len(files)} files")
    if (result.returncode == 0) != all(report["verified"] for report in reports):
        sys.exit(f"sorrel verify ends with status {result.returncode}, which its reports contradict")
    return reports


def certificate_of(owner):
    report = owner["certificate"]
    return {
        "subject": apksigner.name_parts(report["subject"]),
        "sha256": report["sha256"],
        "sha1": report["sha1"],
        "md5": report["md5"],
        "algorithm": owner["publicKey"]["algorithm"],
        "bits": owner["publicKey"]["bits"],
        "key": owner["publicKey"]["sha256"],
    }


def current_signers(report):
    """The certificates of the signers by the newest scheme, which come first."""
    signers = [each for each in report["signers"] if each["scheme"] == report["signers"][0]["scheme"]]
    return [certificate_of(each) for each in signers]


def differences(package, theirs, ours):
    """What the two print differently, as sentences."""
    if theirs.has_failed and package.path.name.startswith("stamp-at-"):
        # It fails before or behind its verdict on a package whose stamp is damaged. The stamp is not verified.
        if ours["stamp"]:
            yield "stamp: apksigner fails, sorrel verifies it"
        return
    v4_fails = package.idsig is not None and "v4" not in theirs.schemes
    if ours["verified"] != (theirs.verified and not v4_fails):
        if package.isStricter and not ours["verified"]:
            return
        yield f"verified: apksigner {theirs.verified}{', but not v4' if v4_fails else ''}, sorrel {ours['verified']}"
        return
    if not ours["verified"]:
        return
    by_digest = [sorted(list_, key=lambda each: each["sha256"]) for list_ in (theirs.signers, current_signers(ours))]
    pairs = [("schemes", theirs.schemes, ours["schemes"]), ("signers", *by_digest),
             ("stamp", theirs.stamp, ours["stamp"] and certificate_of(ours["stamp"]))]
    for name, expected, actual in pairs:
        if expected != actual:
            yield f"{name}: apksigner {expected}, sorrel {actual}"


def compare_lineages(sorrel, paths, pool):
    """The number of lineages that were compared, and the faults. The last key of a lineage has no capabilities, because
    nobody replaced it."""
    faults = []
    for path, theirs, report in zip(paths, pool.map(apksigner.lineage, paths), sorrel_reports(sorrel, paths, FROM_PIE)):
        ours = [(certificate_of(level), level["capabilities"])
                for level in report["signers"][0]["lineage"]]
        same = [a == b for a, b in zip(theirs[:-1], ours[:-1])] + [theirs[-1][0] == ours[-1][0]] if ours else [False]
        if len(theirs) != len(ours) or not all(same):
            faults.append(f"{path.name}: lineages differ:\n    apksigner {theirs}\n    sorrel {ours}")
    return len(paths), faults


def compare(sorrel, all_packages, pool):
    """The number of comparisons, and the faults that they found."""
    tasks = [(package, range_) for package in all_packages for range_ in package.ranges]
    verdicts = pool.map(lambda task: apksigner.Verdict(task[0].path, task[1], task[0].idsig), tasks)
    by_options = collections.defaultdict(list)
    for package, range_ in tasks:
        by_options[range_, package.idsig].append(package.path)
    reports = {}
    for (range_, idsig), paths in by_options.items():
        for path, report in zip(paths, sorrel_reports(sorrel, paths, range_, idsig)):
            reports[path, range_, idsig] = report
    faults = []
    counts = collections.Counter()
    for (package, range_), verdict in zip(tasks, verdicts):
        report = reports[package.path, range_, package.idsig]
        counts["verified" if report["verified"] else "refused"] += 1
        counts["refused by sorrel alone"] += verdict.verified and not report["verified"] and package.idsig is None
        found = list(differences(package, verdict, report))
        if found:
            levels = " to ".join(str(level or "any") for level in range_)
            name = package.path.name if package.idsig is None else f"{package.path.name} with {package.idsig.name}"
            errors = [error["message"] for error in report["errors"]]
            faults.append("\n    ".join([f"{name}, API levels {levels}:", *found, f"sorrel: {errors}",
                                         f"apksigner: {verdict.text.strip()[:400]}"]))
    return counts, faults


def main():
    sorrel, samples = sys.argv[1], pathlib.Path(sys.argv[2])
    if shutil.which("apksigner") is None:
        skip("apksigner", "apksigner is not installed")
    with tempfile.TemporaryDirectory() as name, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        shop = Workshop(pathlib.Path(name), samples, pool)
        sign_by_every_key(shop)
        sign_in_other_ways(shop)
        sign_with_rotated_keys(shop)
        signed = shop.finish()
        derived = [package for make in (without_signatures, with_changed_members, with_damaged_bytes)
                   for package in make(shop, signed)]
        counts, faults = compare(sorrel, [*signed.values(), *derived], pool)
        rotated = [package.path for name, package in signed.items() if name in ROTATED]
        lineages, other_faults = compare_lineages(sorrel, rotated, pool)
        faults += other_faults
    comparisons = counts["verified"] + counts["refused"]
    print(f"{comparisons} comparisons of {len(signed)} signed and {len(derived)} other packages: {counts['verified']} "
          f"verified, {counts['refused']} refused, {counts['refused by sorrel alone']} of them by sorrel alone; "
          f"{lineages} lineages; {len(faults)} different")
    print(*faults, sep="\n")
    if faults or comparisons < LEAST_COMPARISONS or lineages < len(ROTATED):
        sys.exit(1)


if __name__ == "__main__":
    main()
