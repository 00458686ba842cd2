// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDVERSION_H
#define ANDROIDVERSION_H

#include <QString>

/// Versions of Android as people know them.
class AndroidVersion
{
public:
    /// The version that has the API level @p apiLevel, and the level ("Android 5.0 (21)"); the level alone when it is
    /// newer than this list ("SDK 99"), and an empty text when it is none.
    static QString text(int apiLevel);
};

#endif
