// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/PictureDecoder.h"

#include "picture/PngPicture.h"

#include <QBuffer>
#include <QImageReader>

#include <cstring>
#include <utility>

namespace {

/// The canvas of an animation with @p frame at its place. Qt's plugin does not initialise the pixels around a frame.
QImage onCanvas(QImage frame, const PictureFile &file)
{
    constexpr size_t PixelSize = 4;
    const QPoint place = file.place();
    if (!QRect(QPoint(), file.canvas()).contains(QRect(place, frame.size())))
        return {};
    const QImage pixels = std::move(frame).convertToFormat(QImage::Format_ARGB32);
    QImage image(file.canvas(), pixels.format());
    image.fill(Qt::transparent);
    for (int y = 0; y < pixels.height(); ++y) {
        auto *const line = reinterpret_cast<QRgb *>(image.scanLine(place.y() + y));
        std::memcpy(line + place.x(), pixels.constScanLine(y), PixelSize * size_t(pixels.width()));
    }
    return image;
}

} // namespace

PictureFile PictureDecoder::open(QByteArray file)
{
    if (m_bytes.left() == 0)
        return {};
    PictureFile opened(std::move(file));
    m_bytes.spend(opened.steps());
    return opened;
}

bool PictureDecoder::isOverfull(const PictureFile &file)
{
    if (qstrcmp(file.format(), "png") != 0)
        return false;
    const qint64 most = PngPicture::maxUnpacked(file.bytes());
    if (most > m_unpacking.left())
        return PngPicture::isOverfull(file.bytes());
    m_unpacking.spend(most);
    return false;
}

QImage PictureDecoder::decoded(const PictureFile &file)
{
    if (!file.isAccepted() || file.decodingBytes() > m_bytes.left())
        return {};
    m_bytes.spend(file.decodingBytes());
    if (isOverfull(file))
        return {};
    // A QBuffer shares the bytes: Qt's WebP plugin refuses sequential devices, and libjpeg reads a buffer in place.
    QBuffer buffer;
    buffer.setData(file.bytes());
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, file.format());
    // Otherwise another decoder, whose cost is unknown, might accept the file.
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.width() > file.size().width() || size.height() > file.size().height())
        return {};
    QImage image = reader.read();
    return image.isNull() || file.canvas().isEmpty() ? image : onCanvas(std::move(image), file);
}
