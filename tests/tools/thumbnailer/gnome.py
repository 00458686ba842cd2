# SPDX-License-Identifier: LGPL-2.1-or-later
"""gnome.py SAMPLES DIRECTORY: makes thumbnails of a package and of a set of packages with GNOME's thumbnail factory, which runs
programs in a sandbox, and checks the files in the cache."""

import os
import sys

import gi

gi.require_version("GnomeDesktop", "3.0")
from gi.repository import GnomeDesktop  # noqa: E402

from consumer import cached, check_thumbnail, content_type, fail, make_files  # noqa: E402

factory = GnomeDesktop.DesktopThumbnailFactory.new(GnomeDesktop.DesktopThumbnailSize.NORMAL)
for path in make_files(sys.argv[1], sys.argv[2]):
    uri, mime_type, modified = path.as_uri(), content_type(path), int(path.stat().st_mtime)
    if not factory.can_thumbnail(uri, mime_type, modified):
        fail(f"GNOME does not know how to make thumbnails of {mime_type}")
    picture = factory.generate_thumbnail(uri, mime_type)
    if picture is None:
        fail(f"GNOME makes no thumbnail of {path}")
    factory.save_thumbnail(picture, uri, modified)
    if factory.lookup(uri, modified) != str(cached(os.environ["XDG_CACHE_HOME"], uri)):
        fail(f"GNOME does not find the thumbnail of {path}")
    check_thumbnail(path, uri, cached(os.environ["XDG_CACHE_HOME"], uri))
