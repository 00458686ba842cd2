// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PROGRAM_H
#define PROGRAM_H

/// The programs that share the command line of `sorrel`. The names are those of the libraries that they load.
enum class Program {
    Core,  ///< `sorrel` itself: QtCore and libsorrelkitcore
    Trust, ///< `sorrel-trust`: libsorreltrust as well, which needs a library of cryptography
    Draw,  ///< `sorrel-draw`: QtGui, and all libraries of this project that need no QtSql
    Shelf, ///< `sorrel-shelf.so`, a module that `sorrel` loads: QtSql, and the code of libsorrelshelf
};

#endif
