// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TWOSCOMPLEMENT_H
#define TWOSCOMPLEMENT_H

#include <QtGlobal>

/// The 64 bits of @p number, for printing in a base other than 10. Qt 5 prints the bits of a negative number, but Qt 6
/// prints its absolute value with a sign.
inline quint64 twosComplement(int number)
{
    return quint64(qint64(number));
}

#endif
