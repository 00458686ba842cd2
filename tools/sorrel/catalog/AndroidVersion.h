// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDVERSION_H
#define ANDROIDVERSION_H

#include <QString>

/// The names of Android versions.
class AndroidVersion
{
public:
    /// The version with the API level @p apiLevel, and the level: "Android 5.0 (21)". Only the level when it is newer
    /// than this list ("SDK 99"), and an empty text when it is no level.
    static QString text(int apiLevel);
};

#endif
