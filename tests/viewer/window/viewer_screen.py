# SPDX-License-Identifier: LGPL-2.1-or-later
"""viewer_screen.py VIEWER SAMPLES SIGNED DISPLAY: uses the viewer on a virtual screen as a person does, by keys and clicks.
DISPLAY is the directory of display.py. With SORREL_PICTURES, each test leaves a picture there."""

import os
import shutil
import sys
import tempfile
import unittest

VIEWER, SAMPLES, SIGNED, DISPLAY = sys.argv[1:5]
sys.path.insert(0, DISPLAY)

from display import Screen, Window, read, words  # noqa: E402

PICTURES = os.environ.get("SORREL_PICTURES", "")


def contains(*texts):
    """Whether the texts are on the picture; the font decides where a word ends."""
    def condition(picture):
        written = read(picture).replace(" ", "").lower()
        return all(text.replace(" ", "").lower() in written for text in texts)
    return condition


class Viewer(unittest.TestCase):
    def setUp(self):
        self.screen = self.enter(Screen())
        self.folder = self.enter(tempfile.TemporaryDirectory(prefix="viewer"))

    def enter(self, context):
        value = context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return value

    def sample(self, name, source=""):
        file = os.path.join(self.folder, name + ".apk")
        shutil.copy(source or os.path.join(SAMPLES, name + ".aapt2.apk"), file)
        return file

    def start(self, name, *options, source="", **window):
        file = self.sample(name, source)
        command = [VIEWER, *options, file]
        return self.enter(Window(self.screen, command, name + ".apk", **window))

    def keep(self, picture, name):
        if PICTURES:
            picture.save(os.path.join(PICTURES, name + ".png"))

    def test_pages_by_keys(self):
        window = self.start("babel", scale=2)
        picture = window.wait_for(contains("Phrasebook", "org.example.babel", "Not verified", "record audio"), "the head")
        self.keep(picture, "head")
        window.focus()
        for number, text in ((2, "org.example.babel."), (3, "resources.arsc"), (4, "Deutsch"), (5, "<manifest")):
            window.press(f"alt+{number}")
            self.keep(window.wait_for(contains(text), f"page {number}"), f"page-{number}")
        self.assertIsNone(window.program.poll())

    def test_install_question_and_cancel(self):
        proof = os.path.join(self.folder, "proof")
        window = self.start("notes", "--install-command", f"/bin/cp %f {proof}", source=os.path.join(SIGNED, "v2.apk"),
                            scale=2)
        window.wait_for(contains("Verified, signed by"), "the signer")
        window.focus()
        window.press("ctrl+i")
        picture = window.wait_for(contains("This command runs"), "the question", whole_screen=True)
        self.keep(picture, "question")
        window.press("Return")
        window.wait_for(lambda now: not contains("This command runs")(now), "no question", whole_screen=True)
        self.assertFalse(os.path.exists(proof))
        window.focus()
        window.press("ctrl+i")
        window.wait_for(contains("This command runs"), "the question", whole_screen=True)
        window.press("alt+i")
        picture = window.wait_for(contains("exit code 0"), "the end of the command", whole_screen=True)
        self.keep(picture, "installed")
        self.assertTrue(os.path.exists(proof))

    def test_broken_package(self):
        file = os.path.join(self.folder, "broken.apk")
        with open(file, "wb") as broken:
            broken.write(b"no package")
        window = self.enter(Window(self.screen, [VIEWER, file], "broken.apk", scale=2))
        self.keep(window.wait_for(contains("This package is broken", "Read again"), "the page for broken packages"), "broken")

    def test_german_and_dark(self):
        window = self.start("babel", scale=2, dark=True, locale="de_DE.UTF-8")
        picture = window.wait_for(contains("Nicht verifiziert", "Berechtigungen"), "German words")
        self.keep(picture, "german")
        self.assertEqual(picture.getpixel((4, picture.height // 2)), (42, 46, 50))

    def test_arabic_from_the_right(self):
        window = self.start("notes", locale="ar_EG.UTF-8")
        picture = window.wait_for(contains("org.example.notes"), "the name")
        self.keep(picture, "arabic")
        x = next(x for word, x, _ in words(picture) if "example" in word)
        self.assertGreater(x, picture.width // 2)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[5:], verbosity=2)
