// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HELDBYTES_H
#define HELDBYTES_H

#include "limits/Budget.h"

#include <utility>

/// Bytes of a budget that are held until the object goes.
class HeldBytes
{
public:
    /// Holds @p bytes of @p budget, which outlives the object. Holds nothing when less is left.
    HeldBytes(Budget &budget, qint64 bytes)
        : m_budget(budget), m_isHeld(budget.holdBytes(bytes)), m_bytes(m_isHeld ? bytes : 0)
    {
    }
    HeldBytes(HeldBytes &&other) noexcept
        : m_budget(other.m_budget), m_isHeld(other.m_isHeld), m_bytes(std::exchange(other.m_bytes, 0))
    {
    }
    ~HeldBytes() { m_budget.releaseBytes(m_bytes); }

    /// Whether there was room for the bytes.
    explicit operator bool() const { return m_isHeld; }

private:
    Q_DISABLE_COPY(HeldBytes)

    Budget &m_budget;
    bool m_isHeld;
    qint64 m_bytes;
};

#endif
