// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bounds.h"

namespace fixture {

QString Bounds::excess(const Cost &taken, qint64 fileSize, qint64 inflatedSize, qint64 fixedMemory)
{
    if (!taken.ended)
        return QStringLiteral("did not come to its end");
    if (isInstrumented())
        return {};
    const QString told = QStringLiteral("%1 s, %2 MiB for %3 bytes that are %4 inflated")
                             .arg(taken.seconds)
                             .arg(taken.memory >> 20)
                             .arg(fileSize)
                             .arg(inflatedSize);
    const bool isQuick = taken.seconds < Seconds * qMax(1.0, double(fileSize) / (1 << 20));
    const bool isSmall = taken.memory < fixedMemory + MemoryPerByte * inflatedSize;
    return isQuick && isSmall ? QString() : told;
}

} // namespace fixture
