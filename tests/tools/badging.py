#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""badging.py SAMPLES FRAMEWORK: checks that the installed `sorrel info --json --all` has the facts that `aapt2 dump badging`
prints, those included that aapt2 derives, for the packages in SAMPLES and for packages that aapt2 makes here of manifests,
with the framework package FRAMEWORK."""

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

SCREENS = "smallScreens normalScreens largeScreens xlargeScreens anyDensity".split()
WIDTHS = (100, 320, 720)
# Words of attributes of uses-configuration, in the order of their numbers.
TOUCH_SCREENS = ["", "notouch", "stylus", "finger"]
KEYBOARDS = ["", "nokeys", "qwerty", "twelvekey"]
NAVIGATIONS = ["", "nonav", "dpad", "trackball", "wheel"]
CONFIGURATIONS = [("notouch", "nokeys", "nonav"), ("stylus", "qwerty", "trackball"), ("finger", "twelvekey", "wheel"),
                  ("undefined", "undefined", "dpad")]


def component(kind, action, more=""):
    return f'<{kind} android:name=".C"{more}><intent-filter><action android:name="{action}"/></intent-filter></{kind}>'


def guarded(kind, action, permission):
    return component(kind, action, f' android:permission="android.permission.{permission}"')


# Components, by the word that the report has for them. aapt2 has other words, and prints none for cameras and cards.
SERVICES = {
    "accessibility": guarded("service", "android.accessibilityservice.AccessibilityService", "BIND_ACCESSIBILITY_SERVICE"),
    "device-admin": guarded("receiver", "android.app.action.DEVICE_ADMIN_ENABLED", "BIND_DEVICE_ADMIN"),
    "documents": guarded("provider", "android.content.action.DOCUMENTS_PROVIDER",
                         'MANAGE_DOCUMENTS" android:exported="true" android:grantUriPermissions="true" android:authorities="a'),
    "input-method": component("service", "android.view.InputMethod"),
    "notification-listener": guarded("service", "android.service.notification.NotificationListenerService",
                                     "BIND_NOTIFICATION_LISTENER_SERVICE"),
    "print": guarded("service", "android.printservice.PrintService", "BIND_PRINT_SERVICE"),
    "screen-saver": guarded("service", "android.service.dreams.DreamService", "BIND_DREAM_SERVICE"),
    "search": component("activity", "android.intent.action.SEARCH"),
    "wallpaper": component("service", "android.service.wallpaper.WallpaperService"),
    "widget": component("receiver", "android.appwidget.action.APPWIDGET_UPDATE"),
    "none-1": component("service", "android.service.dreams.DreamService"),
    "none-2": component("receiver", "android.app.action.DEVICE_ADMIN_ENABLED"),
}
AAPT2_SERVICES = {"app-widget": "widget", "document-provider": "documents", "dream": "screen-saver", "ime": "input-method",
                  "print-service": "print"}
AAPT2_LANGUAGES = {"in": "id", "iw": "he", "ji": "yi"}

# A manifest with the facts that the others lack. References lead through an alias.
RICH_ROOT = (' android:versionCode="7" android:versionCodeMajor="1" android:versionName="@string/version"'
             ' android:installLocation="preferExternal"')
RICH = """
<original-package android:name="org.example.old"/>
<supports-screens android:requiresSmallestWidthDp="320" android:compatibleWidthLimitDp="@integer/width"
    android:largestWidthLimitDp="600"/>
<compatible-screens>
    <screen android:screenSize="small" android:screenDensity="ldpi"/>
    <screen android:screenSize="normal" android:screenDensity="480"/>
    <screen android:screenSize="large" android:screenDensity="xhdpi"/>
    <screen android:screenSize="xlarge" android:screenDensity="mdpi"/>
</compatible-screens>
<supports-gl-texture android:name="GL_OES_compressed_ETC1_RGB8_texture"/>
<supports-gl-texture android:name="GL_KHR_texture_compression_astc_ldr"/>
<supports-input><input-type android:name="touch"/></supports-input>
<uses-feature android:glEsVersion="0x00030001"/>
<uses-feature android:name="android.hardware.camera" android:version="2"/>
<uses-permission android:name="android.permission.CAMERA"/>
<feature-group android:label="@string/app">
    <uses-feature android:name="android.hardware.camera.front"/>
    <uses-feature android:name="android.hardware.nfc" android:version="3"/>
    <uses-feature android:glEsVersion="0x00030002"/>
</feature-group>
<feature-group><uses-feature android:name="android.hardware.usb.host"/></feature-group>
<package-verifier android:name="org.example.verifier" android:publicKey="MIIB"/>
<overlay android:targetPackage="org.example.target" android:priority="5" android:isStatic="true"
    android:requiredSystemPropertyName="ro.x" android:requiredSystemPropertyValue="y"/>
<application android:label="@string/app" android:icon="@mipmap/icon" android:debuggable="@bool/yes" android:testOnly="true"
    android:isGame="@bool/yes">
    <uses-library android:name="org.apache.http.legacy" android:required="@bool/no_of_no"/>
    <uses-library android:name="org.example.lib"/>
    <uses-static-library android:name="org.example.one" android:version="5" android:certDigest="ab:cd"/>
    <uses-static-library android:name="org.example.two" android:version="6" android:versionMajor="2" android:certDigest="EF">
        <additional-certificate android:certDigest="12:34"/>
    </uses-static-library>
    <static-library android:name="org.example.own" android:version="4" android:versionMajor="1"/>
    <activity android:name=".Main" android:label="@string/app"><intent-filter>
        <action android:name="android.intent.action.MAIN"/>
        <category android:name="android.intent.category.LAUNCHER"/>
    </intent-filter></activity>
    <activity android:name=".Television" android:label="On a television"><intent-filter>
        <action android:name="android.intent.action.MAIN"/>
        <category android:name="android.intent.category.LEANBACK_LAUNCHER"/>
    </intent-filter></activity>
</application>
"""
RESOURCES = {
    "values/values.xml": """<resources><string name="app">Notes</string><string name="version">4.5</string>
        <bool name="yes">true</bool><bool name="no">false</bool><item name="no_of_no" type="bool">@bool/no</item>
        <integer name="width">400</integer></resources>""",
    "values-de/values.xml": '<resources><string name="app">Notizen</string></resources>',
    "values-b+sr+Latn/values.xml": '<resources><string name="app">Beleške</string></resources>',
    "values-iw/values.xml": '<resources><string name="app">פתקים</string></resources>',
    "mipmap-mdpi/icon.xml": "<selector/>",
    "mipmap-xxhdpi/icon.xml": "<selector/>",
    "mipmap-anydpi-v26/icon.xml": "<selector/>",
    "drawable-hdpi/picture.xml": "<selector/>",
}


def manifests():
    """The children of manifests, each with a name and a target SDK; the root may have more attributes."""
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
    for name in SCREENS:
        for sdk in (3, 4, 9):
            for value in ("true", "false", "@bool/yes", "@bool/no_of_no"):
                yield f"{name}.{sdk}.{value.split('/')[-1]}", sdk, f'<supports-screens android:{name}="{value}"/>'
    for place in ("auto", "internalOnly", "preferExternal"):
        yield f"place.{place}", 29, "", f' android:installLocation="{place}"'
    for touch, keyboard, navigation in CONFIGURATIONS:
        yield f"configuration.{touch}", 29, (
            f'<uses-configuration android:reqTouchScreen="{touch}" android:reqKeyboardType="{keyboard}"'
            f' android:reqNavigation="{navigation}" android:reqHardKeyboard="true"/>')
    for name, text in SERVICES.items():
        yield f"service.{name}", 29, f"<application>{text}</application>"
    for smallest in WIDTHS:
        for compatible in (0, *WIDTHS):
            yield f"width.{smallest}.{compatible}", 29, (
                f'<supports-screens android:requiresSmallestWidthDp="{smallest}"'
                f' android:compatibleWidthLimitDp="{compatible}"/>')
    yield "rich", 29, RICH, RICH_ROOT
    for name in ORIENTATIONS:
        activity = f'<activity android:name=".A" android:screenOrientation="{name}"/>'
        yield f"orientation.{name}", 29, f"<application>{activity}</application>"


def compile_resources(directory):
    for name, text in RESOURCES.items():
        path = pathlib.Path(directory, "res", name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
    subprocess.run(["aapt2", "compile", "--dir", f"{directory}/res", "-o", f"{directory}/res.zip"], check=True)


def link(directory, framework, name, sdk, children, attributes=""):
    manifest = pathlib.Path(directory, "AndroidManifest.xml")
    manifest.write_text(
        '<manifest xmlns:android="http://schemas.android.com/apk/res/android" package="org.example.badging"'
        f'{attributes}><uses-sdk android:minSdkVersion="3" android:targetSdkVersion="{sdk}" android:maxSdkVersion="30"/>'
        f"{children}</manifest>", encoding="utf-8")
    package = f"{directory}/{name}.apk"
    # aapt2 warns of elements that it prints and does not know.
    subprocess.run(["aapt2", "link", "--warn-manifest-validation", "-I", framework, "--manifest", manifest, "-o", package,
                    f"{directory}/res.zip"], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return package


def facts():
    """The facts that are compared, without any."""
    sets = "permissions implied features optional originals textures inputs libraries static verifiers launchers television"
    numbers = "max smallest compatible largest"
    return {
        **{key: set() for key in (sets + " provides locales densities abis screens provided configurations").split()},
        **{key: 0 for key in numbers.split()}, "sdk": 1, "target": 1, "labels": {}, "icons": {}, "package": {},
        "compatibleScreens": [], "groups": [],
        "place": "", "overlay": None, "game": False, "debuggable": False, "testOnly": False, "anyDensity": False,
    }


def language(text):
    """A language of aapt2's, with today's code."""
    first, *rest = text.split("-")
    return "-".join([AAPT2_LANGUAGES.get(first, first), *rest])


def long_version(values):
    return (int(values.get("versionMajor", 0)) << 32) + int(values["version"])


def printed(package):
    """The facts in the output of aapt2."""
    text = subprocess.run(["aapt2", "dump", "badging", package], check=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True).stdout
    found = facts()
    groups = []
    for line in text.splitlines():
        kind, rest = re.fullmatch(r" *([A-Za-z0-9-]+):?(.*)", line).groups()
        pairs = re.findall(r"([A-Za-z0-9]+)='(.*?)'(?= |$)", rest)
        values = dict(pairs)
        name = values.get("name")
        single = rest.strip().strip("'")
        many = re.findall(r"'([^']*)'", rest)
        if kind == "package":
            found["package"] = {**{key: values.get(key, "") for key in PACKAGE_KEYS},
                                "versionCode": values["versionCode"] or "0"}
        elif kind in ("sdkVersion", "targetSdkVersion", "maxSdkVersion"):
            found[{"s": "sdk", "t": "target", "m": "max"}[kind[0]]] = int(single)
        elif kind == "install-location":
            found["place"] = single
        elif kind == "original-package":
            found["originals"].add(single)
        elif kind == "uses-configuration":
            found["configurations"].add((
                TOUCH_SCREENS[int(values.get("reqTouchScreen", 0))], KEYBOARDS[int(values.get("reqKeyboardType", 0))],
                NAVIGATIONS[int(values.get("reqNavigation", 0))], values.get("reqHardKeyboard", "0") != "0"))
        elif kind == "compatible-screens":
            found["compatibleScreens"] = [tuple(map(int, each.split("/"))) for each in many]
        elif kind == "supports-gl-texture":
            found["textures"].add(single)
        elif kind == "supports-input":
            found["inputs"].update(re.findall(r"value='([^']*)'", rest))
        elif kind.startswith("uses-permission"):
            found["permissions"].add(name)
        elif kind == "uses-implied-permission":
            found["implied"].add((name, int(values.get("maxSdkVersion", 0))))
        elif kind == "package-verifier":
            found["verifiers"].add((name, values["publicKey"]))
        elif kind == "overlay":
            found["overlay"] = values
        elif kind.startswith("application-label"):
            found["labels"][language(kind[len("application-label-"):])] = single
        elif kind.startswith("application-icon-"):
            found["icons"][int(kind.rsplit("-", 1)[1])] = single
        elif kind in ("application-isGame", "application-debuggable"):
            found["game" if kind.endswith("Game") else "debuggable"] = True
        elif line.startswith("testOnly="):
            found["testOnly"] = True
        elif kind in ("uses-library", "uses-library-not-required"):
            found["libraries"].add((single, kind == "uses-library"))
        elif kind == "uses-static-library":
            digests = tuple(value.lower() for key, value in pairs if key == "certDigest")
            found["static"].add((name, long_version(values), digests))
        elif kind == "static-library":
            found["provided"].add((name, long_version(values)))
        elif kind in ("launchable-activity", "leanback-launchable-activity"):
            found["launchers" if kind[1] == "a" else "television"].add(name)
        elif kind == "feature-group":
            groups.append({"label": values["label"], "openGlEs": 0, "features": set(), "optional": set()})
        elif kind == "uses-gl-es":
            groups[-1]["openGlEs"] = int(single, 16)
        elif kind == "uses-feature-not-required":
            groups[-1]["optional"].add((name, int(values.get("version", 0))))
        elif kind in ("uses-feature", "uses-feature-sdk-23"):
            groups[-1]["features"].add((name, int(values.get("version", 0))))
        elif kind == "provides-component":
            found["provides"].add(AAPT2_SERVICES.get(single, single))
        elif kind == "supports-screens":
            found["screens"] = set(many)
        elif kind == "supports-any-density":
            found["anyDensity"] = single == "true"
        elif kind in ("requires-smallest-width", "compatible-width-limit", "largest-width-limit"):
            found[kind.replace("requires-", "").split("-")[0]] = int(single)
        elif kind == "locales":
            found["locales"] = {language(each) for each in many} - {"--_--"}
        elif kind == "densities":
            found["densities"] = set(map(int, many)) | {160}
        elif kind in ("native-code", "alt-native-code"):
            found["abis"].update(many)
        else:
            assert kind in UNUSED, f"{package}: {line!r} is unknown"
    found["groups"] = groups
    return found


PACKAGE_KEYS = "name versionCode versionName platformBuildVersionName compileSdkVersion compileSdkVersionCodename".split()
# Lines that repeat others, or that name components without a place in the report.
UNUSED = ["application", "main", "other-activities", "other-receivers", "other-services", "uses-implied-feature"]


def open_gl(text):
    major, minor = (text or "0.0").split(".")
    return int(major) << 16 | int(minor)


def reported(package):
    """The facts in the report."""
    run = subprocess.run(["sorrel", "info", "--json", "--all", package], check=True, stdout=subprocess.PIPE)
    report = json.loads(run.stdout)
    details = report["details"]
    found = facts()
    names = {key: {each["name"] for each in details[key]} for key in ("permissions", "features")}
    found.update({
        "permissions": names["permissions"],
        "implied": {(each["name"], each["maxSdkVersion"]) for each in details["permissions"] if each["impliedReason"]},
        "package": {**{key: details.get(key, "") for key in PACKAGE_KEYS}, "name": report["package"],
                    # aapt2 prints the lower half.
                    "versionCode": str(int(report["versionCode"]) & 0xffffffff), "versionName": report["versionName"]},
        "sdk": report["minSdkVersion"], "target": report["targetSdkVersion"], "max": details["maxSdkVersion"],
        "place": details["installLocation"], "originals": set(details["originalPackages"]),
        "configurations": {(each["touchScreen"], each["keyboard"], each["navigation"], each["hardKeyboard"])
                           for each in details["usesConfigurations"]},
        "compatibleScreens": [({"small": 200, "normal": 300, "large": 400, "xlarge": 500}[each["size"]], each["density"])
                              for each in details["compatibleScreens"]],
        "textures": set(details["glTextures"]), "inputs": set(details["inputs"]),
        "verifiers": {(each["name"], each["publicKey"]) for each in details["packageVerifiers"]},
        "labels": report["labels"], "icons": {each["density"]: each["path"] for each in details["icons"]},
        "game": details["game"], "debuggable": details["debuggable"], "testOnly": details["testOnly"],
        "libraries": {(each["name"], each["required"]) for each in details["libraries"] if each["kind"] == "java"},
        "static": {(each["name"], int(each["version"]), tuple(each["certDigests"])) for each in details["libraries"]
                   if each["kind"] == "static"},
        "provided": {(each["name"], int(each["version"])) for each in details["providedLibraries"]},
        "launchers": {each["name"] for each in report["launchers"]},
        "aliases": {each["name"] for each in report["launchers"] if each["class"] != each["name"]},
        "television": {each["name"] for each in report["entries"] if each["kind"] == "television"},
        "provides": set(details["provides"]),
        "screens": {name for name in ("small", "normal", "large", "xlarge") if details["screens"][name]},
        "anyDensity": details["screens"]["anyDensity"], "smallest": details["screens"]["smallestWidth"],
        "compatible": details["screens"]["compatibleWidth"], "largest": details["screens"]["largestWidth"],
        "locales": set(details["languages"]), "densities": set(details["densities"]) | {160},
        "abis": set(report["nativeAbis"]),
    })
    if "overlay" in details:
        overlay = details["overlay"]
        found["overlay"] = {"targetPackage": overlay["targetPackage"], "priority": str(overlay["priority"]),
                            "isStatic": str(overlay["static"]).lower(), "requiredPropertyName": overlay["requiredProperty"],
                            "requiredPropertyValue": overlay["requiredPropertyValue"]}
    # Every group has the features outside of groups. aapt2 prints one group when the manifest has none.
    outside = {key: {(each["name"], each["version"]) for each in details["features"] if each["required"] == (key == "features")}
               for key in ("features", "optional")}
    for group in details["featureGroups"] or [{"label": "", "openGlEs": "", "features": []}]:
        own = {(each["name"], each["version"]) for each in group["features"]}
        found["groups"].append({
            "label": group["label"], "openGlEs": max(open_gl(details["openGlEs"]), open_gl(group["openGlEs"])),
            "features": outside["features"] | own, "optional": outside["optional"]})
    return found


# Activities with the action in one filter and the category in another: no launchers for Android.
NO_LAUNCHERS = {"org.example.toolbox.Square"}


def reconcile(expected, actual):
    """Removes what only one of both prints: labels of languages that the label does not have, and aliases of activities."""
    for tag, text in expected["labels"].items():
        if tag not in actual["labels"] and text in actual["labels"].values():
            actual["labels"][tag] = text
    actual["launchers"] -= actual.pop("aliases") - expected["launchers"]
    expected["launchers"] -= NO_LAUNCHERS


def main():
    samples, framework = sys.argv[1:]
    if shutil.which("aapt2") is None or not pathlib.Path(framework).is_file():
        skip("aapt2", "aapt2 or the framework package is missing")
    with tempfile.TemporaryDirectory() as directory:
        compile_resources(directory)
        packages = [link(directory, framework, *manifest) for manifest in manifests()]
        packages += sorted(glob.glob(samples + "/*.aapt2.apk"))
        assert len(packages) > 150, "packages are missing"
        seen = set()
        for package in packages:
            expected, actual = printed(package), reported(package)
            reconcile(expected, actual)
            for key, value in expected.items():
                assert actual[key] == value, f"{package}: {key}: aapt2 has {value}, sorrel has {actual[key]}"
            seen |= {key for key, value in expected.items() if value}
    missing = set(facts()) - seen - {"features", "optional", "abis"}
    assert not missing, f"no package has {sorted(missing)}"


if __name__ == "__main__":
    main()
