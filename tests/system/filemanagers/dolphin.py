# SPDX-License-Identifier: LGPL-2.1-or-later
"""dolphin.py PREFIX PLUGINS SAMPLES [PICTURE [SCREEN]]: looks at packages in Dolphin as a person does, without any
settings. PREFIX is the prefix of the installed files, PLUGINS its directory for Qt plugins, and SAMPLES the directory
of the sample packages. PICTURE is the file for a picture of the window, and SCREEN for one of the screen with the
viewer, after a double click."""

import shutil
import sys
import time
import unittest

from filemanager import SIGNER, FileManager, Packages, contains, last_column, need_sandbox, shows
from display import Screen

PREFIX, PLUGINS, SAMPLES, PICTURE, SCREEN = (sys.argv[1:] + ["", ""])[:5]
WHITE = (255, 255, 255)


class Dolphin(unittest.TestCase):
    def enter(self, context):
        value = context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return value

    def setUp(self):
        self.end = time.monotonic() + 300
        self.screen = self.enter(Screen())
        self.packages = Packages(SAMPLES)
        self.addCleanup(self.packages.directory.cleanup)

    def test_packages(self):
        # xdotool reads the title up to its dash.
        window = self.enter(FileManager(self.screen, ["dolphin", self.packages.folder], "^Packages", PREFIX, PLUGINS))
        window.resize(1100, 1000)
        window.wait_for(shows(self.packages.colours()), "the icons of the packages")
        window.focus()
        window.click("phrasebook.apk")
        window.press("F11")
        window.wait_for(contains("Phrasebook", "Modified"), "the information panel")
        picture = window.settled()
        # The panel starts narrow. Its edge is beside that of the white view.
        edge = last_column(picture, WHITE)
        while last_column(picture, WHITE) > edge - 150:
            self.assertLess(time.monotonic(), self.end, "the panel does not become wider")
            window.drag(last_column(picture, WHITE) + 4, picture.height // 2, edge - 200)
            picture = window.settled()
        picture = window.wait_for(contains("org.example.babel", "version 3.1", "Dangerous permissions", SIGNER),
                                  "the facts in the information panel")
        if PICTURE:
            picture.quantize(64).save(PICTURE, optimize=True)
        if shutil.which("sorrel-viewer"):
            window.open("notes.apk", SCREEN)


if __name__ == "__main__":
    need_sandbox()
    unittest.main(argv=sys.argv[:1])
