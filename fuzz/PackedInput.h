// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKEDINPUT_H
#define PACKEDINPUT_H

#include "Bytes.h"
#include "ZipBuilder.h"

#include <QByteArray>
#include <QVector>

/// Returns an input that is an archive unchanged. Any other input starts with the table's size, then has a table and a
/// manifest; both are packed together with @p others.
inline QByteArray packageOf(const QByteArray &input, const QVector<fixture::Member> &others)
{
    constexpr int SizeAt = 4;
    if (input.startsWith("PK") || input.size() < SizeAt + 4)
        return input;
    const int tableSize = int(qMin(qint64(fixture::peek32(input, SizeAt)), qint64(input.size())));
    return fixture::package(input.left(tableSize), input.mid(tableSize), others);
}

#endif
