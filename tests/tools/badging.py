#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""badging.py SAMPLES FRAMEWORK: checks that the installed `sorrel info --json --all` has the permissions and features that
`aapt2 dump badging` prints, those included that aapt2 derives, for the packages in SAMPLES and for packages that aapt2 makes
here of manifests, with the framework package FRAMEWORK."""

import glob
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from skip import skip  # noqa: E402

PERMISSIONS = """ACCESS_COARSE_LOCATION ACCESS_FINE_LOCATION ACCESS_LOCATION_EXTRA_COMMANDS ACCESS_MOCK_LOCATION ACCESS_WIFI_STATE
BLUETOOTH BLUETOOTH_ADMIN CALL_PHONE CALL_PRIVILEGED CAMERA CHANGE_WIFI_MULTICAST_STATE CHANGE_WIFI_STATE
INSTALL_LOCATION_PROVIDER INTERNET MODIFY_PHONE_STATE PROCESS_OUTGOING_CALLS READ_CONTACTS READ_PHONE_STATE READ_SMS RECEIVE_MMS
RECEIVE_SMS RECEIVE_WAP_PUSH RECORD_AUDIO SEND_SMS WRITE_APN_SETTINGS WRITE_CONTACTS WRITE_EXTERNAL_STORAGE WRITE_SMS""".split()
FEATURES = """camera.autofocus camera.flash camera.front location.gps location.network microphone touchscreen
touchscreen.multitouch touchscreen.multitouch.distinct touchscreen.multitouch.jazzhand wifi.direct""".split()
ORIENTATIONS = "landscape portrait sensor sensorLandscape sensorPortrait reverseLandscape reversePortrait userPortrait".split()


def manifests():
    """The children of manifests, each with a name and a target SDK."""
    def permission(name, more=""):
        return f'<uses-permission android:name="android.permission.{name}"{more}/>'

    def feature(name, more=""):
        return f'<uses-feature android:name="android.hardware.{name}"{more}/>'

    for sdk in (3, 4, 5, 15, 16, 20, 21, 29):
        yield f"all.{sdk}", sdk, "".join(map(permission, PERMISSIONS))
        yield f"none.{sdk}", sdk, ""
    for name in PERMISSIONS:
        yield f"permission.{name}", 29, permission(name)
    yield "limited", 29, permission("WRITE_EXTERNAL_STORAGE", ' android:maxSdkVersion="18"')
    yield "optional", 29, permission("CAMERA") + feature("camera", ' android:required="false"')
    for name in FEATURES:
        yield f"feature.{name}", 29, feature(name)
        yield f"optional.{name}", 29, feature(name, ' android:required="false"')
    for name in ORIENTATIONS:
        activity = f'<activity android:name=".A" android:screenOrientation="{name}"/>'
        yield f"orientation.{name}", 29, f"<application>{activity}</application>"


def link(directory, framework, name, sdk, children):
    manifest = pathlib.Path(directory, "AndroidManifest.xml")
    manifest.write_text(
        '<manifest xmlns:android="http://schemas.android.com/apk/res/android" package="org.example.badging">'
        f'<uses-sdk android:minSdkVersion="3" android:targetSdkVersion="{sdk}"/>{children}</manifest>', encoding="utf-8")
    package = f"{directory}/{name}.apk"
    subprocess.run(["aapt2", "link", "-I", framework, "--manifest", manifest, "-o", package], check=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return package


def printed(package):
    """The permissions and features in the output of aapt2: the names, and those that it derives with the last API level."""
    text = subprocess.run(["aapt2", "dump", "badging", package], check=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True).stdout
    line = re.compile(r"^ *(uses-[a-z0-9-]+): name='([^']*)'(?: maxSdkVersion='(\d+)')?", re.MULTILINE)
    found = {"permissions": set(), "implied": set(), "features": set(), "optional": set()}
    for kind, name, last in line.findall(text):
        if kind.startswith("uses-permission"):
            found["permissions"].add(name)
        elif kind == "uses-implied-permission":
            found["implied"].add((name, int(last or 0)))
        elif kind == "uses-feature-not-required":
            found["optional"].add(name)
        elif kind in ("uses-feature", "uses-feature-sdk-23"):
            found["features"].add(name)
    return found


def reported(package):
    run = subprocess.run(["sorrel", "info", "--json", "--all", package], check=True, stdout=subprocess.PIPE)
    details = json.loads(run.stdout)["details"]
    return {
        "permissions": {each["name"] for each in details["permissions"]},
        "implied": {(each["name"], each["maxSdkVersion"]) for each in details["permissions"] if each["impliedReason"]},
        "features": {each["name"] for each in details["features"] if each["required"]},
        "optional": {each["name"] for each in details["features"] if not each["required"]},
    }


def main():
    samples, framework = sys.argv[1:]
    if shutil.which("aapt2") is None or not pathlib.Path(framework).is_file():
        skip("aapt2", "aapt2 or the framework package is missing")
    with tempfile.TemporaryDirectory() as directory:
        packages = [link(directory, framework, *manifest) for manifest in manifests()]
        packages += sorted(glob.glob(samples + "/*.aapt2.apk"))
        assert len(packages) > 80, "packages are missing"
        seen = {"permissions": 0, "implied": 0, "features": 0, "optional": 0}
        for package in packages:
            expected, actual = printed(package), reported(package)
            assert actual == expected, f"{package}: aapt2 has {expected}, sorrel has {actual}"
            for key, names in expected.items():
                seen[key] += len(names)
    assert all(seen.values()), f"the packages do not have everything: {seen}"


if __name__ == "__main__":
    main()
