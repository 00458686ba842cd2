// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PictureReader.h"

#include "PictureCheck.h"

#include <QBuffer>
#include <QImageReader>

namespace SorrelKit {

QImage PictureReader::read(QByteArray bytes)
{
    const PictureCheck check(bytes, m_decodingBytes.left());
    // What does not fit takes nothing off: a smaller one after it may.
    if (!check.isAccepted() || check.decodingBytes() > m_decodingBytes.left())
        return {};
    m_decodingBytes.spend(check.decodingBytes());
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, check.format());
    // No other decoder may take the file for its own.
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.width() > check.size().width() || size.height() > check.size().height())
        return {};
    return reader.read();
}

QSize PictureReader::size(const QByteArray &bytes)
{
    const PictureCheck check(bytes);
    return check.isAccepted() ? check.size() : QSize();
}

} // namespace SorrelKit
