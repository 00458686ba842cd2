// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FLOOR_H
#define FLOOR_H

#include <QString>

namespace bench {

/// Seconds that the ZIP library takes, by step.
struct FloorTimes {
    double directory = 0; ///< opening the archive and finding both members
    double table = 0;     ///< reading resources.arsc
    double manifest = 0;  ///< reading AndroidManifest.xml
};

/**
 * Measures the floor: the time that every reader on top of the ZIP library needs. Opens the package, finds the table
 * and the manifest, and reads both to their ends, 64 KiB at a time, into one buffer whose content nobody uses. Adds
 * the time of each step to @p times. Returns whether everything could be read.
 */
bool readFloor(const QString &fileName, FloorTimes &times);

} // namespace bench

#endif
