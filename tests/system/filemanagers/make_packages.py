# SPDX-License-Identifier: LGPL-2.1-or-later
"""make_packages.py SAMPLES FOLDER: puts the folder "Packages" of the tests with file managers into FOLDER."""

import shutil
import sys

from filemanager import Packages

samples, folder = sys.argv[1:]
packages = Packages(samples)
shutil.copytree(packages.folder, f"{folder}/Packages")
packages.directory.cleanup()
