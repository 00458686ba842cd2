# SPDX-License-Identifier: LGPL-2.1-or-later
"""Shared code of the tests with thumbnail programs: the files, and the check of the thumbnails."""

import hashlib
import pathlib
import subprocess
import sys
import zipfile

import gi

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf, Gio  # noqa: E402

SIZE = 128


def fail(text):
    sys.exit(text)


def make_files(samples, directory):
    """Makes a package and a set of packages from `samples`, with names that need escapes in a URI."""
    samples, directory = pathlib.Path(samples), pathlib.Path(directory)
    package = directory / "Ä package #1.apk"
    package.write_bytes((samples / "notes.aapt2.apk").read_bytes())
    packages = directory / "a set 100%.apks"
    with zipfile.ZipFile(packages, "w") as archive:
        for member, name in (("base-master", "base"), ("base-de", "de"), ("base-es", "es")):
            archive.write(samples / f"babel.{name}.apk", f"splits/{member}.apk")
    return [package, packages]


def content_type(path):
    """The type that a file manager finds for a file."""
    info = Gio.File.new_for_path(str(path)).query_info("standard::content-type", Gio.FileQueryInfoFlags.NONE)
    return info.get_content_type()


def pixels(pixbuf):
    """Width, height and pixels with alpha."""
    opaque = pixbuf.add_alpha(False, 0, 0, 0)
    return opaque.get_width(), opaque.get_height(), opaque.get_pixels()


def check_thumbnail(path, uri, thumbnail, size=SIZE):
    """Checks that the file `thumbnail` has the picture that the program writes for `path`, and the text `uri`."""
    if thumbnail is None or not pathlib.Path(thumbnail).is_file():
        fail(f"there is no thumbnail of {path}")
    program = ["sorrel-thumbnailer", "-s", str(size), str(path), "-"]
    loader = GdkPixbuf.PixbufLoader()
    loader.write(subprocess.run(program, check=True, stdout=subprocess.PIPE).stdout)
    loader.close()
    expected = pixels(loader.get_pixbuf())
    found = GdkPixbuf.Pixbuf.new_from_file(str(thumbnail))
    if expected[:2] != (size, size) or len(set(expected[2])) < 2:
        fail(f"the program writes no picture of {size} pixels for {path}")
    if pixels(found) != expected:
        fail(f"{thumbnail} is not the picture that the program writes for {path}")
    if found.get_option("tEXt::Thumb::URI") != uri:
        fail(f"{thumbnail} is for {found.get_option('tEXt::Thumb::URI')}, not for {uri}")
    # Some programs write fractions of a second.
    modified = int(pathlib.Path(path).stat().st_mtime)
    if int(float(found.get_option("tEXt::Thumb::MTime"))) != modified:
        fail(f"{thumbnail} is not of the time {modified}")


def cached(cache, uri, flavor="normal"):
    """The path of the thumbnail of `uri` in the conventions."""
    return pathlib.Path(cache) / "thumbnails" / flavor / (hashlib.md5(uri.encode()).hexdigest() + ".png")
