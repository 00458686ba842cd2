// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Loading.h"

#include "Devices.h"

namespace bench {

ApkResources loadedTable(const QByteArray &bytes)
{
    fixture::SequentialDevice device(bytes, QIODevice::ReadOnly);
    ApkResources table;
    table.load(&device);
    return table;
}

QDomDocument loadedDocument(const QByteArray &bytes, const ApkResources &table)
{
    fixture::SequentialDevice device(bytes, QIODevice::ReadOnly);
    bool ok = false;
    const QDomDocument document = table.loadXml(&device, &ok);
    return ok ? document : QDomDocument();
}

qint64 readThrough(const QByteArray &bytes)
{
    constexpr qint64 PieceSize = 64 << 10;
    static char buffer[PieceSize];
    fixture::SequentialDevice device(bytes);
    qint64 size = 0;
    qint64 piece = 0;
    while ((piece = device.read(buffer, PieceSize)) > 0)
        size += piece;
    return size;
}

} // namespace bench
