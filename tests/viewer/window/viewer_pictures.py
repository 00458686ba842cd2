# SPDX-License-Identifier: LGPL-2.1-or-later
"""viewer_pictures.py VIEWER SAMPLES DISPLAY FOLDER: takes pictures of the viewer's pages, light and dark, for the documents.
apksigner signs the packages with a key that is made for it. DISPLAY is the directory of display.py."""

import os
import shutil
import subprocess
import sys
import tempfile
import time

from PIL import Image

VIEWER, SAMPLES, DISPLAY, FOLDER = sys.argv[1:5]
sys.path.insert(0, DISPLAY)

from display import Screen, Window  # noqa: E402

PAGES = (("permissions", "babel", "alt+1"), ("launchers", "babel", "alt+2"), ("contents", "gallery", "alt+3"),
         ("languages", "babel", "alt+4"), ("manifest", "babel", "alt+5"), ("resources", "gallery", "alt+6"),
         ("drawables", "gallery", "Tab", "Right"),
         ("findings", "gallery", "alt+7"))
SETTLED = 3


def signed(work, sample, name):
    file = os.path.join(work, name + ".apk")
    shutil.copy(os.path.join(SAMPLES, sample + ".apk"), file)
    key, certificate = os.path.join(work, "key.pk8"), os.path.join(work, "certificate.pem")
    if not os.path.exists(key):
        subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "9000", "-subj",
                        "/CN=Jane Doe/O=Example", "-keyout", key + ".pem", "-out", certificate],
                       check=True, stderr=subprocess.DEVNULL)
        subprocess.run(["openssl", "pkcs8", "-topk8", "-nocrypt", "-outform", "DER", "-in", key + ".pem", "-out", key],
                       check=True)
    subprocess.run(["apksigner", "sign", "--key", key, "--cert", certificate, "--min-sdk-version", "24", file], check=True)
    return file


def save(picture, name):
    picture.quantize(256, dither=Image.Dither.NONE).save(os.path.join(FOLDER, f"viewer-{name}.png"), optimize=True)


def pages(screen, files, dark, suffix):
    for sample in ("babel", "gallery"):
        with Window(screen, [VIEWER, files[sample]], sample + ".apk", dark=dark) as window:
            window.focus()
            for name, of, *keys in PAGES:
                if of == sample:
                    window.press(*keys)
                    time.sleep(SETTLED)
                    save(window.picture(), name + suffix)
    with Window(screen, [VIEWER, "--compare", files["new"], files["old"]], "old.apk", dark=dark) as window:
        time.sleep(SETTLED)
        save(window.picture(), "comparison" + suffix)
    with Window(screen, [VIEWER, files["broken"]], "broken.apk", dark=dark) as window:
        time.sleep(SETTLED)
        save(window.picture(), "broken" + suffix)


def question(screen, file):
    with Window(screen, [VIEWER, "--install-command", "adb install %f", file], "babel.apk") as window:
        time.sleep(SETTLED)
        window.focus()
        window.press("ctrl+i")
        time.sleep(1)
        save(window.picture(whole_screen=True).crop((0, 0, 960, 720)), "install")


def main():
    with tempfile.TemporaryDirectory() as work, Screen() as screen:
        files = {"babel": signed(work, "babel.aapt2", "babel"), "gallery": signed(work, "gallery.aapt2", "gallery"),
                 "old": signed(work, "babel.optimized", "old"), "new": signed(work, "babel.aapt2", "new"),
                 "broken": os.path.join(work, "broken.apk")}
        with open(files["babel"], "rb") as good, open(files["broken"], "wb") as broken:
            broken.write(good.read()[:-2000])
        pages(screen, files, False, "")
        pages(screen, files, True, "-dark")
        question(screen, files["babel"])


if __name__ == "__main__":
    main()
