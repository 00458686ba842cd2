// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bounds.h"

namespace fixture {

namespace {

QString excessOf(const char *what, qint64 taken, double most)
{
    return double(taken) <= most
               ? QString()
               : QStringLiteral("%1 %2, and %3 at most. ").arg(taken).arg(QLatin1String(what)).arg(qint64(most));
}

} // namespace

QString Bounds::excess(const Cost &taken, qint64 fileSize, qint64 inflatedSize, qint64 fixedMemory)
{
    if (!taken.ended)
        return QStringLiteral("did not come to its end");
    const double sizes = qMax(1.0, double(fileSize) / (1 << 20));
    return excessOf("bytes of memory", taken.memory, double(fixedMemory + MemoryPerByte * inflatedSize))
           + excessOf("bytes allocated", taken.allocated, sizes * double(Allocated))
           + excessOf("blocks allocated", taken.allocations, sizes * double(Allocations));
}

} // namespace fixture
