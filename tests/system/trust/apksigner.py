# SPDX-License-Identifier: LGPL-2.1-or-later
"""Signs and verifies packages by Debian's apksigner, with keys that OpenSSL makes."""

import os
import pathlib
import re
import subprocess

# Options of openssl genpkey, by the names of keys in the tests.
KINDS = {
    "rsa1024": ["RSA", "-pkeyopt", "rsa_keygen_bits:1024"],
    "rsa2048": ["RSA", "-pkeyopt", "rsa_keygen_bits:2048"],
    "rsa3072": ["RSA", "-pkeyopt", "rsa_keygen_bits:3072"],
    "rsa4096": ["RSA", "-pkeyopt", "rsa_keygen_bits:4096"],
    "ec256": ["EC", "-pkeyopt", "ec_paramgen_curve:P-256"],
    "ec384": ["EC", "-pkeyopt", "ec_paramgen_curve:P-384"],
    "ec521": ["EC", "-pkeyopt", "ec_paramgen_curve:P-521"],
}
DSA_BITS = {"dsa1024": (1024, 160), "dsa2048": (2048, 256)}
SUBJECTS = {
    "rsa2048": '/C=DE/ST=Baden-Württemberg/O=Größe, Ωμέγα und Söhne/OU=a "b"/CN=Two thousand',
    "ec256": "/CN=Android Debug/O=Android/C=US",
}


# Each call runs for less than a second, so the better compiler and collector of Java do not pay.
OPTIONS = "-XX:TieredStopAtLevel=1 -XX:+UseSerialGC"
ENVIRONMENT = {**os.environ, "JDK_JAVA_OPTIONS": OPTIONS}


def run(*command):
    return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False, env=ENVIRONMENT)


def keep_classes(directory, *command):
    """Runs apksigner with this command, and keeps the classes that Java has loaded then in a file below `directory`. Later
    calls map this file, which takes less time than to load and check each class."""
    classes = pathlib.Path(directory) / "classes.jsa"
    ENVIRONMENT["JDK_JAVA_OPTIONS"] = f"{OPTIONS} -XX:ArchiveClassesAtExit={classes}"
    run("apksigner", *command)
    ENVIRONMENT["JDK_JAVA_OPTIONS"] = f"{OPTIONS} -XX:SharedArchiveFile={classes}" if classes.exists() else OPTIONS


def required(*command):
    result = run(*command)
    if result.returncode != 0:
        raise RuntimeError(f"{' '.join(map(str, command))} fails: {result.stdout}")
    return result.stdout


class Key:
    """A secret key in the form that apksigner reads, and its certificate."""

    def __init__(self, directory, name, subject=None):
        kind = name.split("-")[0]
        self.name = name
        self.key = pathlib.Path(directory) / f"{name}.pk8"
        self.certificate = pathlib.Path(directory) / f"{name}.pem"
        pem = self.key.with_suffix(".key")
        if kind in DSA_BITS:
            parameters = self.key.with_suffix(".dsa")
            required("openssl", "genpkey", "-genparam", "-algorithm", "DSA", "-pkeyopt",
                     f"dsa_paramgen_bits:{DSA_BITS[kind][0]}", "-pkeyopt", f"dsa_paramgen_q_bits:{DSA_BITS[kind][1]}",
                     "-out", parameters)
            required("openssl", "genpkey", "-paramfile", parameters, "-out", pem)
        else:
            required("openssl", "genpkey", "-algorithm", *KINDS[kind], "-out", pem)
        required("openssl", "pkcs8", "-topk8", "-nocrypt", "-in", pem, "-outform", "DER", "-out", self.key)
        required("openssl", "req", "-x509", "-utf8", "-sha256", "-key", pem, "-days", "10000", "-subj",
                 subject or SUBJECTS.get(name, f"/CN={name}"), "-out", self.certificate)

    def options(self):
        return ["--key", self.key, "--cert", self.certificate]


def joined(keys):
    """The options of several signers."""
    options = []
    for key in keys:
        options += (["--next-signer"] if options else []) + key.options()
    return options


def sign(source, target, keys, schemes, options=()):
    """Writes `source` to `target`, signed by these keys and schemes. With v4, `target`.idsig is written, too."""
    enabled = []
    for scheme in ("v1", "v2", "v3", "v4"):
        enabled += [f"--{scheme}-signing-enabled", "true" if scheme in schemes else "false"]
    required("apksigner", "sign", *enabled, *joined(keys), *options, "--out", target, source)


def rotate(target, old, new, *options, source=None):
    """Writes a lineage to `target` that leads from one key to the next: that in `source`, and one more."""
    required("apksigner", "rotate", *(["--in", source] if source else []), "--out", target, "--old-signer",
             *old.options(), *options, "--new-signer", *new.options())


class Verdict:
    """What apksigner prints about a package."""

    def __init__(self, path, range_, idsig=None):
        options = []
        for option, level in zip(("--min-sdk-version", "--max-sdk-version"), range_):
            options += [option, level] if level else []
        if idsig:
            options += ["--v4-signature-file", idsig]
        result = run("apksigner", "verify", "-v", "--print-certs", *options, path)
        self.text = result.stdout
        # The status is no measure: apksigner fails when it prints the certificate of a damaged stamp.
        self.verified = "Verifies\n" in self.text
        self.has_failed = "Exception in thread" in self.text
        self.schemes = re.findall(r"^Verified using (v[\d.]+) scheme .*: true$", self.text, re.M)
        self.signers = [certificate_in(self.text, f"Signer #{number}")
                        for number in re.findall(r"^Signer #(\d+) certificate DN: ", self.text, re.M)]
        has_stamp = "Verified for SourceStamp: true\n" in self.text
        self.stamp = certificate_in(self.text, "Source Stamp Signer") if has_stamp else None


def certificate_in(text, prefix):
    """The certificate that apksigner prints in lines with this prefix."""
    def value(field):
        found = re.search(rf"^{prefix} {re.escape(field)}: (.*)$", text, re.M)
        return found[1] if found else ""
    return {
        "subject": name_parts(value("certificate DN")),
        "sha256": value("certificate SHA-256 digest"),
        "sha1": value("certificate SHA-1 digest"),
        "md5": value("certificate MD5 digest"),
        "algorithm": value("key algorithm"),
        "bits": int(value("key size (bits)") or 0),
        "key": value("public key SHA-256 digest"),
    }


def lineage(path):
    """The lineage of a package: for each key its certificate and its capabilities ("installedData")."""
    text = required("apksigner", "lineage", "--in", path, "--print-certs", "-v")
    levels = []
    for number, part in enumerate(re.split(r"^(?=Signer #\d+ in lineage certificate DN: )", text, flags=re.M)[1:], 1):
        words = re.findall(r"^Has (.*?) capability *: true$", part.replace("shared UID", "shared user id"), re.M)
        names = [re.sub(" (.)", lambda match: match[1].upper(), word.lower()) for word in words]
        levels.append((certificate_in(part, f"Signer #{number} in lineage"), names))
    return levels


def name_parts(name):
    """The parts of a distinguished name, as ("CN", "text"). A value may be in quotes, or have backslashes."""
    parts = []
    for part in re.findall(r'(?:[^,"\\]|\\.|"(?:[^"\\]|\\.)*")+', name):
        kind, _, value = part.strip().partition("=")
        if value.startswith('"'):
            value = value[1:-1]
        parts.append((kind.upper(), re.sub(r"\\(.)", r"\1", value)))
    return parts
