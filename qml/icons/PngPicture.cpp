// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icons/PngPicture.h"

#include <SorrelKit/ShelfIcon.h>

#include <QtEndian>

#include <png.h>

namespace SorrelQml {

static_assert(MaxPngSize == SorrelKit::ShelfIcon::MaxSize, "every stored icon can be shown");

QImage pictureOfPng(const QByteArray &png)
{
    png_image header = {};
    header.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&header, png.constData(), std::size_t(png.size())) == 0)
        return QImage();
    // The bytes of QRgb.
    header.format = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
    QImage image;
    if (header.width <= png_uint_32(MaxPngSize) && header.height <= png_uint_32(MaxPngSize))
        image = QImage(int(header.width), int(header.height), QImage::Format_ARGB32);
    const bool isRead =
        !image.isNull()
        && png_image_finish_read(&header, nullptr, image.bits(), png_int_32(image.bytesPerLine()), nullptr) != 0;
    png_image_free(&header);
    return isRead ? image.convertToFormat(QImage::Format_ARGB32_Premultiplied) : QImage();
}

} // namespace SorrelQml
