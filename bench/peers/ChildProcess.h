// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CHILDPROCESS_H
#define CHILDPROCESS_H

#include <string>
#include <vector>

/// A command that ran from its start to its end, with its output dropped.
struct ChildProcess {
    /// From before it was started until its end was told, in seconds of the wall clock.
    double seconds = 0;
    /// Its exit status; 128 and the signal's number when a signal ended it, -1 when it could not be started.
    int status = -1;
    /// The most memory that was resident, in KiB; that of the process which started it counts, too, so that the value
    /// tells something of a command only when it is larger.
    long peakKib = 0;

    /// Runs @p arguments, the first of which is looked for on the path.
    static ChildProcess run(const std::vector<std::string> &arguments);
    /// The most memory that was resident of this process so far, in KiB.
    static long ownPeakKib();
};

#endif
