// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TWOSCOMPLEMENT_H
#define TWOSCOMPLEMENT_H

#include <QtGlobal>

/// The 64 bits of @p number, to be written in a base other than 10: those of a negative number, Qt 5 writes as they are,
/// and Qt 6 as an absolute value with a sign.
inline quint64 twosComplement(int number)
{
    return quint64(qint64(number));
}

#endif
