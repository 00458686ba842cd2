# SPDX-License-Identifier: LGPL-2.1-or-later
"""launcher_grid.py PROGRAM SORREL SAMPLES: uses the example launcher-grid as a person does, and checks its window."""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest

from PIL import Image, ImageChops

from display import Screen, Window, read, words

PROGRAM, SORREL, SAMPLES = "", "", ""
LABELS = ["Calculator", "Calendar", "Camera", "Chess", "Clock", "Contacts", "Mail", "Maps", "Music", "Phrasebook",
          "Reader", "Recorder", "Weather"]
# The background of the icon of babel, and foreground colours in suite: camera, calculator and reader.
BABEL = (0x20, 0x40, 0x80)
COLOURS = [BABEL, (0x4F, 0xC3, 0xF7), (0xFF, 0x9F, 0x43), (0xD9, 0xD2, 0xFF)]


def contains(*texts):
    """Whether the texts are on the picture; the font decides where a word ends."""
    def condition(picture):
        written = read(picture).replace(" ", "")
        return all(text.replace(" ", "") in written for text in texts)
    return condition


def says(text):
    """Whether the status line shows `text`, read at twice its size."""
    return lambda picture: contains(text)(picture.crop((0, picture.height - 60, picture.width, picture.height)))


class LauncherGrid(unittest.TestCase):
    def setUp(self):
        self.screen = self.enter(Screen())
        self.folder = self.enter(tempfile.TemporaryDirectory(prefix="shelf"))

    def enter(self, context):
        value = context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return value

    def fill(self, *names):
        for name in names:
            shutil.copy(os.path.join(SAMPLES, name + ".aapt2.apk"), os.path.join(self.folder, name + ".apk"))

    def start(self, **options):
        return self.enter(Window(self.screen, [PROGRAM, self.folder], "Launchers in " + self.folder, **options))

    def test_launchers(self):
        self.fill("suite", "babel", "kiosk")
        with open(os.path.join(self.folder, "text.apk"), "w", encoding="utf-8") as file:
            file.write("no package")
        window = self.start(scale=2)
        # Twelve launchers of suite and three of babel; those of kiosk are disabled.
        picture = window.wait_for(says("Launchers: 15, unreadable: 1"), "the number of launchers")
        self.assertEqual([word for word in read(picture).split() if word in LABELS], LABELS)
        self.assertEqual(picture.getpixel((4, 4)), (255, 255, 255))
        colours = {colour: count for count, colour in picture.getcolors(picture.width * picture.height)}
        for colour in COLOURS:
            self.assertGreater(colours.get(colour, 0), 100, f"{colour} is missing")

        # The icon is sharp: the kit drew it at 144 pixels.
        icon = os.path.join(self.folder, "icon.png")
        subprocess.run([SORREL, "icon", "--shape", "squircle", "-s", "144", "-o", icon,
                        os.path.join(self.folder, "babel.apk")], check=True)
        expected = Image.new("RGB", (144, 144), "white")
        drawn = Image.open(icon).convert("RGBA")
        expected.paste(drawn, (0, 0), drawn)
        is_babel = [pixel == BABEL for pixel in picture.getdata()]
        mask = Image.new("1", picture.size)
        mask.putdata(is_babel)
        box = mask.getbbox()
        self.assertEqual((box[2] - box[0], box[3] - box[1]), (144, 144))
        difference = ImageChops.difference(picture.crop(box), expected)
        self.assertLess(max(high for _, high in difference.getextrema()), 4)

        # A letter selects the launcher whose label begins with it, which is the last one. Its tool tip shows the component.
        x, y = next((x, y) for word, x, y in words(picture) if word == "Weather")
        label = (x - 40, y - 20, x + 40, y + 20)
        window.focus()
        window.press("w")
        window.wait_for(lambda now: ImageChops.difference(now.crop(label), picture.crop(label)).getbbox(), "a choice")
        window.point(x, y)
        window.wait_for(contains("org.example.suite/", "org.example.suite.Weather"), "the component", whole_screen=True)

    def test_dark_colours_and_german(self):
        self.fill("suite")
        window = self.start(scale=2, dark=True, locale="de_DE.UTF-8")
        picture = window.wait_for(says("Launchers: 12, unreadable: 0"), "the number of launchers")
        written = read(picture)
        for label in ("Kalender", "Karten", "Rechner", "Schach", "Wetter"):
            self.assertIn(label, written)
        self.assertEqual(picture.getpixel((4, 4)), (27, 30, 32))

    def test_folder_without_packages(self):
        window = self.start(scale=2)
        window.wait_for(contains("No launchers in this folder", "Launchers: 0, unreadable: 0"), "that nothing is there")


if __name__ == "__main__":
    PROGRAM, SORREL, SAMPLES = sys.argv[1:4]
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)
