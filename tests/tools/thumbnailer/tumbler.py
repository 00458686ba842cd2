# SPDX-License-Identifier: LGPL-2.1-or-later
"""tumbler.py SAMPLES DIRECTORY: requests thumbnails of a package and of a set of packages from tumbler on the session bus, as a
file manager does, and checks the files in the cache."""

import os
import sys

from gi.repository import Gio, GLib

from consumer import cached, check_thumbnail, content_type, fail, make_files

NAME = "org.freedesktop.thumbnails.Thumbnailer1"
PATH = "/org/freedesktop/thumbnails/Thumbnailer1"
SECONDS = 300

files = make_files(sys.argv[1], sys.argv[2])
uris = [path.as_uri() for path in files]
types = [content_type(path) for path in files]

tumbler = Gio.DBusProxy.new_for_bus_sync(Gio.BusType.SESSION, Gio.DBusProxyFlags.NONE, None, NAME, PATH, NAME, None)
supported = tumbler.call_sync("GetSupported", None, Gio.DBusCallFlags.NONE, -1, None).unpack()
for mime_type in types:
    if ("file", mime_type) not in zip(*supported):
        fail(f"tumbler does not know how to make thumbnails of {mime_type}")

loop = GLib.MainLoop()
errors = []


def on_signal(_proxy, _sender, signal, parameters):
    if signal == "Error":
        errors.append(parameters.unpack())
    elif signal == "Finished":
        loop.quit()


def on_timeout():
    errors.append(f"not finished after {SECONDS} s")
    loop.quit()


tumbler.connect("g-signal", on_signal)
GLib.timeout_add_seconds(SECONDS, on_timeout)
arguments = GLib.Variant("(asasssu)", (uris, types, "normal", "foreground", 0))
tumbler.call_sync("Queue", arguments, Gio.DBusCallFlags.NONE, -1, None)
loop.run()
if errors:
    fail(f"tumbler says: {errors}")
for path, uri in zip(files, uris):
    check_thumbnail(path, uri, cached(os.environ["XDG_CACHE_HOME"], uri))
