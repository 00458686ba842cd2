// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PNGFILE_H
#define PNGFILE_H

#include <QByteArray>
#include <QImage>

/**
 * Pictures as PNG files, made by libpng. QImageWriter would load every image plugin of Qt first, with the libraries
 * that they need in turn, which takes as long as reading a package.
 *
 * The files are packed quickly rather than well: programs that make thumbnails for desktops write them anew.
 */
class PngFile
{
public:
    /// The bytes of a file that holds @p image with 8 bits a channel; empty when memory does not suffice.
    static QByteArray fromImage(const QImage &image);
};

#endif
