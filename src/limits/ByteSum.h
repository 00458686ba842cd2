// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BYTESUM_H
#define BYTESUM_H

#include <QtGlobal>

#include <algorithm>
#include <limits>

/// The sum of two sizes that a file claims: at most the largest number. A size that is unknown (-1) counts as 0.
inline qint64 byteSum(qint64 first, qint64 second)
{
    const qint64 sum = std::max<qint64>(first, 0);
    const qint64 more = std::max<qint64>(second, 0);
    return more > std::numeric_limits<qint64>::max() - sum ? std::numeric_limits<qint64>::max() : sum + more;
}

#endif
