// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PNGFILE_H
#define PNGFILE_H

#include <QByteArray>
#include <QImage>

/**
 * Writes pictures as PNG with libpng. QImageWriter would first load every image plugin of Qt with its libraries, which
 * takes as long as reading a package.
 *
 * The compression is fast rather than small, because thumbnail programs of desktops compress the files again.
 */
class PngFile
{
public:
    /// The bytes of a file with @p image in 8 bits per channel; empty when there is not enough memory.
    static QByteArray fromImage(const QImage &image);
};

#endif
