// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BUDGET_H
#define BUDGET_H

#include <QtGlobal>

/**
 * The limit of what one public call may cost: work, which bounds its time, and bytes, which bound its memory. The call
 * makes a budget and passes it down; every class that works for the call spends from it before it does something that
 * costs. Things that are harmless one by one may be too much together: thousands of launchers may each refer to
 * thousands of values.
 *
 * One unit of work takes about as long as inflating a byte, some 5 ns. The constants below are the costs of other
 * things in this unit; costs that only one class spends are constants of that class. The caller leaves out what does
 * not fit in the rest of the budget; smaller things after it may still fit.
 */
class Budget
{
public:
    /// A byte that is copied, inflated or decoded; a bit of a prefix code; a character that is copied.
    static constexpr qint64 ByteWork = 1;
    /// A byte of compressed data. The slowest deflated data, empty blocks with codes of their own, takes 73 ns a byte.
    static constexpr qint64 PackedByteWork = 4;
    /// A value, or another small record, that is looked at or stored.
    static constexpr qint64 ValueWork = 16;
    /// A resource that is looked up, besides ValueWork for each type chunk of its type.
    static constexpr qint64 LookupWork = 64;
    /// A byte of a binary XML document whose elements are made, or a character of its names and texts.
    static constexpr qint64 DocumentByteWork = 8;

    Budget(qint64 work, qint64 bytes) : m_work(work), m_bytes(bytes) {}

    /// Takes @p work off. False, and nothing is taken, when less was left.
    bool spendWork(qint64 work) { return take(&m_work, work); }
    /// Takes off @p work that was done before its cost was known: all that is left when it was more. False then.
    bool chargeWork(qint64 work)
    {
        if (spendWork(work))
            return true;
        m_work = 0;
        return false;
    }
    /// Takes @p bytes off until releaseBytes(). False, and nothing is taken, when less was left.
    bool holdBytes(qint64 bytes) { return take(&m_bytes, bytes); }
    /// Gives back @p bytes that were held.
    void releaseBytes(qint64 bytes) { m_bytes += bytes; }

    qint64 workLeft() const { return m_work; }
    qint64 bytesLeft() const { return m_bytes; }
    /// Whether something did not fit.
    bool isSpent() const { return m_isSpent; }

private:
    bool take(qint64 *left, qint64 amount)
    {
        if (amount > *left) {
            m_isSpent = true;
            return false;
        }
        *left -= amount;
        return true;
    }

    qint64 m_work;
    qint64 m_bytes;
    bool m_isSpent = false;
};

#endif
