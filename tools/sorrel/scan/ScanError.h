// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SCANERROR_H
#define SCANERROR_H

#include <QString>

/// Why a worker could not tell about a package. The codes follow on those of SorrelKit::Package::Error.
namespace ScanError {

enum Code : int {
    TooMuchTime = 101,
    TooMuchMemory = 102,
    WorkerDied = 103,
};

/// In English, as Package::errorString().
inline QString text(Code code)
{
    switch (code) {
    case TooMuchTime:
        return QStringLiteral("reading took too long");
    case TooMuchMemory:
        return QStringLiteral("reading took too much memory");
    case WorkerDied:
        break;
    }
    return QStringLiteral("the process that read it died");
}

} // namespace ScanError

#endif
