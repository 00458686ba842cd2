# SPDX-License-Identifier: LGPL-2.1-or-later
"""A file manager with the installed files on a virtual screen, as the user of an empty home directory sees it.

Needs Debian's bubblewrap, dbus-daemon, shared-mime-info, desktop-file-utils, apksigner and openssl besides the programs of
display.py.
"""

import glob
import io
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile

from PIL import Image

TESTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
sys.path[1:1] = [os.path.join(TESTS, "examples"), os.path.join(TESTS, "trust")]
import apksigner  # noqa: E402
from display import Window, read, words  # noqa: E402
from skip import skip  # noqa: E402

SIGNER = "Jane Example"
# KDE's programs warn root, so the user is another one. All processes end with the file manager.
ALONE = ["bwrap", "--dev-bind", "/", "/", "--proc", "/proc", "--unshare-user", "--uid", "1000", "--gid", "1000",
         "--unshare-pid", "--die-with-parent"]


def need_sandbox():
    """Skips the test when bubblewrap cannot make a sandbox."""
    run = subprocess.run([*ALONE, "true"], stderr=subprocess.PIPE, check=False)
    if run.returncode != 0:
        skip("sandbox", run.stderr.decode())


class Packages:
    """A folder with the packages "phrasebook.apk" and "notes.apk", which are signed by SIGNER, a set and a broken package, made of
    the packages in `samples`, or copied from there when it has a folder "Packages"."""

    def __init__(self, samples):
        self.directory = tempfile.TemporaryDirectory()
        self.folder = os.path.join(self.directory.name, "Packages")
        made = os.path.join(samples, "Packages")
        if os.path.isdir(made):
            shutil.copytree(made, self.folder)
        else:
            self.make(samples)
        # The user of the file manager is another one when root runs the test.
        os.chmod(self.directory.name, 0o755)

    def make(self, samples):
        os.mkdir(self.folder)
        key = apksigner.Key(self.directory.name, "rsa2048", f"/CN={SIGNER}")
        for name, sample in (("phrasebook.apk", "babel"), ("notes.apk", "notes")):
            apksigner.sign(os.path.join(samples, sample + ".aapt2.apk"), os.path.join(self.folder, name), [key], ["v1", "v2"])
        for idsig in glob.glob(os.path.join(self.folder, "*.idsig")):
            os.remove(idsig)
        with zipfile.ZipFile(os.path.join(self.folder, "a set.apks"), "w") as archive:
            archive.write(os.path.join(samples, "toolbox.aapt2.apk"), "base.apk")
        with open(os.path.join(self.folder, "broken.apk"), "wb") as file:
            file.write(b"no package")

    def colours(self):
        """The two most frequent colours of each icon, as the program draws it."""
        found = set()
        for name in ("phrasebook.apk", "notes.apk", "a set.apks"):
            png = subprocess.run(["sorrel-thumbnailer", os.path.join(self.folder, name), "-"], stdout=subprocess.PIPE,
                                 check=True).stdout
            counts = Image.open(io.BytesIO(png)).convert("RGB").getcolors(1 << 24)
            found.update(colour for _, colour in sorted(counts, reverse=True)[:2])
        return found


class FileManager(Window):
    """The window of the file manager `command`, whose title matches `pattern`. It has the files that are installed in `prefix`,
    which is /usr/local there, and the Qt plugins in `plugins`; with the prefix /usr, what the system has."""

    def __init__(self, screen, command, pattern, prefix, plugins):
        of_system = prefix == "/usr"
        files = [] if of_system else ["--bind", prefix, "/usr/local"]
        super().__init__(screen, [*ALONE, *files, "dbus-run-session", "--", *command], "")
        self.pattern = pattern
        home = self.home.name
        self.environment.update(
            XDG_CACHE_HOME=os.path.join(home, "cache"), XDG_DATA_HOME=os.path.join(home, "data"),
            XDG_DATA_DIRS="/usr/local/share:/usr/share", GSK_RENDERER="cairo", GDK_BACKEND="x11", LIBGL_ALWAYS_SOFTWARE="1",
            GSETTINGS_BACKEND="memory", GTK_A11Y="none", NO_AT_BRIDGE="1")
        for name in ("DBUS_SESSION_BUS_ADDRESS", "WAYLAND_DISPLAY"):
            self.environment.pop(name, None)
        if not of_system:
            self.use(prefix, plugins)

    def use(self, prefix, plugins):
        data = self.environment["XDG_DATA_HOME"]
        for folder, kind in (("mime/packages", "xml"), ("applications", "desktop")):
            os.makedirs(os.path.join(data, folder))
            for file in glob.glob(os.path.join(prefix, "share", folder, "*." + kind)):
                shutil.copy(file, os.path.join(data, folder))
        self.environment["QT_PLUGIN_PATH"] = plugins.replace(prefix, "/usr/local")
        for name in ("PATH", "LD_LIBRARY_PATH"):
            self.environment[name] = self.environment[name].replace(prefix, "/usr/local")
        for program in (["update-mime-database", os.path.join(data, "mime")],
                        ["update-desktop-database", os.path.join(data, "applications")]):
            subprocess.run(program, env=self.environment, check=True)

    def resize(self, width, height):
        self.run("xdotool", "windowmove", self.id, "0", "0")
        self.run("xdotool", "windowsize", self.id, str(width), str(height))
        self.wait_for(lambda picture: picture.size == (width, height), "the size of the window")

    def settled(self):
        """A picture after which nothing changed for half a second."""
        last = []

        def is_same(picture):
            last.append(picture)
            time.sleep(0.5)
            return len(last) > 1 and last[-1].tobytes() == last[-2].tobytes()
        return self.wait_for(is_same, "a window at rest")

    def drag(self, x, y, to):
        """Drags from a point horizontally to another one."""
        self.point(x, y)
        self.run("xdotool", "mousedown", "1")
        # The first movement starts dragging.
        for step in (x + (to - x) // 2, to):
            self.point(step, y)
        self.run("xdotool", "mouseup", "1")

    def point_at(self, name):
        """Moves the pointer to the icon above the file name `name`."""
        picture = self.picture()
        large = words(picture.resize((picture.width * 2, picture.height * 2)))
        x, y = next((x // 2, y // 2) for word, x, y in large if word.startswith(name.partition(".")[0]))
        self.point(x, y - 40)

    def click(self, name):
        self.point_at(name)
        self.run("xdotool", "click", "1")

    def open(self, name, picture=""):
        """Double-clicks the file `name`, waits for the viewer's window, prints the time until then, and waits for the signer there.
        `picture` is the file for a picture of the screen."""
        self.point_at(name)
        self.run("xdotool", "click", "--repeat", "2", "--delay", "50", "1")
        start = time.monotonic()
        self.run("xdotool", "search", "--sync", "--onlyvisible", "--name", "^" + re.escape(name))
        print(f"the viewer has a window {time.monotonic() - start:.2f} s after the double click")
        screen = self.wait_for(contains("Verified, signed by " + SIGNER), "the signer in the viewer", whole_screen=True)
        if picture:
            screen.quantize(64).save(picture, optimize=True)


def shows(colours):
    """Whether a picture has hundreds of pixels of each of the colours."""
    def condition(picture):
        counts = {colour: count for count, colour in picture.getcolors(1 << 24)}
        return all(500 <= counts.get(colour, 0) for colour in colours)
    return condition


def contains(*texts):
    """Whether the texts are on the picture; the font decides where a word ends."""
    def condition(picture):
        # Twice as large, small fonts can be read.
        written = read(picture.resize((picture.width * 2, picture.height * 2))).replace(" ", "").lower()
        return all(text.replace(" ", "").lower() in written for text in texts)
    return condition


def last_column(picture, colour):
    """The last column that has the colour at half the height."""
    return max(x for x in range(picture.width) if picture.getpixel((x, picture.height // 2)) == colour)
