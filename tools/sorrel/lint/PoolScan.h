// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef POOLSCAN_H
#define POOLSCAN_H

#include "RawBytes.h"

#include <QString>

/// The strings of a string pool, read where they are. Meets raw input: what lies outside of the pool is empty.
class PoolScan
{
public:
    /// Characters of a string that are read at most.
    static constexpr int MaxLength = 0x7fff;

    PoolScan() = default;
    /// The pool whose chunk is at @p at in @p bytes, and has @p size bytes.
    PoolScan(const RawBytes &bytes, qint64 at, qint64 size) : m_bytes(bytes.part(at, size)) {}

    QString string(quint32 index) const;

private:
    QString utf8(qint64 at) const;
    QString utf16(qint64 at) const;

    RawBytes m_bytes;
};

#endif
