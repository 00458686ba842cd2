// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CHILDPROCESS_H
#define CHILDPROCESS_H

#include <string>
#include <vector>

/// A command that ran from its start to its end, with its output dropped.
struct ChildProcess {
    /// Seconds of the wall clock, from before the start until the end was reported.
    double seconds = 0;
    /// Its exit status; 128 and the signal's number when a signal ended it, -1 when it could not be started.
    int status = -1;
    /// Peak of resident memory in KiB. It includes the memory of the starting process, so the value describes the
    /// command only when it is larger than ownPeakKib().
    long peakKib = 0;

    /// Runs a command; its first argument is looked up in PATH.
    static ChildProcess run(const std::vector<std::string> &arguments);
    /// Peak of resident memory of this process so far, in KiB.
    static long ownPeakKib();
};

#endif
