// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/PngPicture.h"

#include <QBuffer>
#include <QImageReader>

namespace Viewer {

QImage pngPicture(const QJsonValue &base64, int maxSide)
{
    const QString text = base64.toString();
    // Uncompressed pixels of 8 bytes take no more, in characters of 6 bits and with room for headers.
    const qint64 maxCharacters = qint64(maxSide) * maxSide * 11 + 4096;
    if (text.isEmpty() || text.size() > maxCharacters)
        return {};
    QByteArray bytes = QByteArray::fromBase64(text.toLatin1());
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > maxSide || size.height() > maxSide)
        return {};
    return reader.read();
}

} // namespace Viewer
