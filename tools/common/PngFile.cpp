// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PngFile.h"

#include <png.h>

QByteArray PngFile::fromImage(const QImage &image)
{
    const QImage pixels = image.convertToFormat(QImage::Format_RGBA8888);
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    png.width = png_uint_32(pixels.width());
    png.height = png_uint_32(pixels.height());
    png.format = PNG_FORMAT_RGBA;
    png.flags = PNG_IMAGE_FLAG_FAST;
    QByteArray bytes(int(PNG_IMAGE_PNG_SIZE_MAX(png)), Qt::Uninitialized);
    png_alloc_size_t size = png_alloc_size_t(bytes.size());
    const bool isWritten = png_image_write_to_memory(&png, bytes.data(), &size, 0, pixels.constBits(),
                                                     png_int_32(pixels.bytesPerLine()), nullptr)
                           != 0;
    bytes.truncate(isWritten ? int(size) : 0);
    return bytes;
}
