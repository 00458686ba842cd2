// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SCANERROR_H
#define SCANERROR_H

#include <QString>

/// The reasons why a worker could not report on a package. The codes continue those of SorrelKit::Error::Code.
namespace ScanError {

enum Code : int {
    TooMuchTime = 101,
    TooMuchMemory = 102,
    WorkerDied = 103,
};

/// The error text in English, in the form of Error::message().
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
