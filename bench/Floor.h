// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FLOOR_H
#define FLOOR_H

#include <QString>

namespace bench {

/// Seconds of each part of what the ZIP library takes.
struct FloorTimes {
    double directory = 0; ///< opening the archive and finding both members
    double table = 0;     ///< reading resources.arsc
    double manifest = 0;  ///< reading AndroidManifest.xml
};

/**
 * What no reader that is made on the ZIP library can go below: opens the package, finds the table and the manifest, and
 * reads both to their ends, 64 KiB at a time, into one buffer, from which nothing is taken. Adds what each part takes to
 * @p times. Returns whether everything could be read.
 */
bool readFloor(const QString &fileName, FloorTimes &times);

} // namespace bench

#endif
