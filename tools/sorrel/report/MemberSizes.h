// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MEMBERSIZES_H
#define MEMBERSIZES_H

#include "FileName.h"

/// The size of the file of a package, and the unpacked sizes of its members by their kind, in bytes. A set of packages has
/// the size of its file alone.
struct MemberSizes {
    qint64 file = 0;
    qint64 code = 0;      ///< `classes*.dex` in the root
    qint64 libraries = 0; ///< `.so` below `lib/`
    qint64 resources = 0; ///< `resources.arsc`, and files below `res/`
    qint64 others = 0;

    /// The sizes of @p file, by the archive's directory; 0 when it cannot be read.
    static MemberSizes of(const FileName &file);
};

#endif
