// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PngBytes.h"

#include <QBuffer>

QByteArray pngBytes(const QImage &picture)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return buffer.data();
}
