// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/PictureDecoder.h"

#include "picture/PngPicture.h"

#include <QBuffer>
#include <QImageReader>

#include <cstring>
#include <utility>

namespace {

/// The frame of an animation at its place on the canvas. Qt's plugin leaves the pixels around it uninitialized.
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

QImage decodedByQt(const PictureFile &file)
{
    // Shares the bytes. Qt's WebP plugin refuses sequential devices, and libjpeg reads a buffer in place.
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

} // namespace

QImage PictureDecoder::decoded(const PictureFile &file)
{
    const qint64 bytes = file.decodingBytes();
    if (!file.isAccepted() || bytes > MaxBytes || !m_budget.holdBytes(bytes))
        return {};
    QImage image;
    if (m_budget.spendWork(Budget::ByteWork * bytes) && !isOverfull(file))
        image = decodedByQt(file);
    m_budget.releaseBytes(bytes - qMin(bytes, qint64(image.sizeInBytes())));
    return image;
}

bool PictureDecoder::isOverfull(const PictureFile &file)
{
    if (qstrcmp(file.format(), "png") != 0)
        return false;
    const qint64 most = PngPicture::maxUnpacked(file.bytes());
    if (most <= MaxUnpacking - m_unpacking) {
        m_unpacking += most;
        return false;
    }
    // Unpacking ends after the rows and a little more. A picture that there is no work left for counts as overfull.
    return !m_budget.spendWork(Budget::ByteWork * (file.decodingBytes() + PngPicture::MaxExcess))
           || PngPicture::isOverfull(file.bytes());
}
