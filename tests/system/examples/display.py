# SPDX-License-Identifier: LGPL-2.1-or-later
"""A virtual screen, and a program that runs on it.

Needs Debian's xvfb, xdotool, maim and python3-pil, and tesseract-ocr to read the text on a picture.
"""

import io
import os
import re
import subprocess
import sys
import tempfile
import time

from PIL import Image

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "support"))
from skip import skip  # noqa: E402

DARK = """[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=252,252,252
"""


class Screen:
    """An X server that ends with the block."""

    def __enter__(self):
        self.server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-screen", "0", "1600x1200x24"],
                                       stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        number = self.server.stdout.readline().decode().strip()
        if not number:
            skip("screen", "Xvfb does not start")
        self.name = ":" + number
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.communicate()


class Window:
    """The window with the title `title` of a program, which ends with the block. `scale` 2 draws it twice as large, `dark` in
    dark colours, and `locale` is the locale of the user."""

    def __init__(self, screen, command, title, scale=1, dark=False, locale="C.UTF-8"):
        self.home = tempfile.TemporaryDirectory()
        self.environment = dict(os.environ, DISPLAY=screen.name, HOME=self.home.name, XDG_CONFIG_HOME=self.home.name,
                                XDG_RUNTIME_DIR=self.home.name, QT_QPA_PLATFORM="xcb", QT_SCALE_FACTOR=str(scale),
                                QT_STYLE_OVERRIDE="fusion", LC_ALL=locale)
        for name in ("LANGUAGE", "XDG_CURRENT_DESKTOP", "QT_QPA_PLATFORMTHEME", "XAUTHORITY"):
            self.environment.pop(name, None)
        if dark:
            # The colours of KDE, which Qt reads by itself.
            with open(os.path.join(self.home.name, "kdeglobals"), "w", encoding="utf-8") as file:
                file.write(DARK)
            self.environment.update(QT_QPA_PLATFORMTHEME="kde", XDG_CURRENT_DESKTOP="KDE", KDE_FULL_SESSION="true",
                                    KDE_SESSION_VERSION="5")
        self.command, self.pattern = command, f"^{re.escape(title)}$"

    def run(self, *command):
        return subprocess.run(command, env=self.environment, stdout=subprocess.PIPE, timeout=120, check=True).stdout

    def __enter__(self):
        self.program = subprocess.Popen(self.command, env=self.environment)
        found = self.run("xdotool", "search", "--sync", "--onlyvisible", "--name", self.pattern)
        self.id = found.decode().split()[0]
        return self

    def __exit__(self, *_):
        self.program.kill()
        self.program.wait()
        self.home.cleanup()

    def focus(self):
        self.run("xdotool", "windowfocus", "--sync", self.id)

    def press(self, *keys):
        self.run("xdotool", "key", *keys)

    def point(self, x, y):
        self.run("xdotool", "mousemove", "--window", self.id, str(x), str(y))

    def picture(self, whole_screen=False):
        of = [] if whole_screen else ["-i", self.id]
        return Image.open(io.BytesIO(self.run("maim", "--hidecursor", "--quality", "1", *of))).convert("RGB")

    def wait_for(self, condition, what, whole_screen=False):
        """Waits for a picture for which `condition` is true."""
        end = time.monotonic() + 120
        while True:
            picture = self.picture(whole_screen)
            if condition(picture):
                return picture
            if time.monotonic() > end:
                raise AssertionError(f"{what} does not appear; what is written there is: {read(picture)}")
            time.sleep(0.1)


def words(picture):
    """The words on a picture, each with the coordinates of its middle, from top to bottom and from left to right."""
    file = io.BytesIO()
    picture.save(file, "png")
    table = subprocess.run(["tesseract", "-", "-", "--psm", "11", "tsv"], input=file.getvalue(), stdout=subprocess.PIPE,
                           stderr=subprocess.DEVNULL, env=dict(os.environ, OMP_THREAD_LIMIT="1"), check=True).stdout
    found = []
    for line in table.decode().splitlines()[1:]:
        left, top, width, height, _, word = line.split("\t")[6:]
        if word.strip():
            found.append((int(top) + int(height) // 2, int(left) + int(width) // 2, word))
    rows = []
    for y, x, word in sorted(found):
        if not rows or y - rows[-1][-1][1] > 12:
            rows.append([])
        rows[-1].append((x, y, word))
    return [(word, x, y) for row in rows for x, y, word in sorted(row)]


def read(picture):
    """The text on a picture in one line."""
    return " ".join(word for word, _, _ in words(picture))
