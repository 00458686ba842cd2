# SPDX-License-Identifier: LGPL-2.1-or-later
"""nautilus.py PREFIX PLUGINS SAMPLES [PICTURE [SCREEN]]: looks at packages in Nautilus as a person does, without any
settings. PREFIX is the prefix of the installed files, PLUGINS its directory for Qt plugins, and SAMPLES the directory
of the sample packages. PICTURE is the file for a picture of the window, and SCREEN for one of the screen with the
viewer, after a double click."""

import shutil
import sys
import unittest

from filemanager import FileManager, Packages, contains, need_sandbox, shows
from display import Screen

PREFIX, PLUGINS, SAMPLES, PICTURE, SCREEN = (sys.argv[1:] + ["", ""])[:5]


class Nautilus(unittest.TestCase):
    def enter(self, context):
        value = context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return value

    def test_packages(self):
        screen = self.enter(Screen())
        packages = Packages(SAMPLES)
        self.addCleanup(packages.directory.cleanup)
        window = self.enter(FileManager(screen, ["nautilus", packages.folder], "^Packages$", PREFIX, PLUGINS))
        window.resize(900, 620)
        window.wait_for(shows(packages.colours()), "the icons of the packages")
        window.wait_for(contains("phrasebook.apk"), "the name of the package")
        picture = window.settled()
        if PICTURE:
            picture.quantize(64).save(PICTURE, optimize=True)
        if shutil.which("sorrel-viewer"):
            window.open("notes.apk", SCREEN)


if __name__ == "__main__":
    need_sandbox()
    unittest.main(argv=sys.argv[:1])
