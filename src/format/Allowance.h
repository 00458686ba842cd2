// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ALLOWANCE_H
#define ALLOWANCE_H

#include <QtGlobal>

/**
 * What one operation may take in all, in a unit of its own: values looked at, characters, bytes. What is sound one by
 * one may be too much together, as when thousands of launchers each refer to thousands of values.
 */
class Allowance
{
public:
    explicit Allowance(qint64 amount) : m_left(amount) {}

    /// Takes @p amount off; false when there was less left, and from then on, whatever is asked for.
    bool spend(qint64 amount)
    {
        m_left = amount <= m_left ? m_left - amount : -1;
        return !isSpent();
    }
    /// What may still be taken.
    qint64 left() const { return qMax(qint64(0), m_left); }
    /// Whether more was asked for than there was.
    bool isSpent() const { return m_left < 0; }

private:
    qint64 m_left;
};

#endif
