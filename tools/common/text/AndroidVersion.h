// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDVERSION_H
#define ANDROIDVERSION_H

#include <QString>

/// The names of Android versions. A level that is newer than the list has its number instead ("SDK 99").
class AndroidVersion
{
public:
    /// The version with the API level @p apiLevel, and the level: "Android 5.0 (21)". An empty text when it is no level.
    static QString text(int apiLevel);
    /// The same in more words: "Android 5.0 (API 21)". A level that is newer than the list is "API 99", and that of a
    /// preview "a preview of Android".
    static QString withLevel(int apiLevel);
    /// The versions from the API level @p first to @p last: "Android 7.0 to 12", "Android 7.0" when there is one, or
    /// "Android 7.0 and later" when @p last is the highest number. Levels below 1 are level 1.
    static QString range(int first, int last);
};

#endif
