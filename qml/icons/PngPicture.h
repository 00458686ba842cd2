// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_PNGPICTURE_H
#define SORRELQML_PNGPICTURE_H

#include <QByteArray>
#include <QImage>

namespace SorrelQml {

/// The largest width and height of a picture that pictureOfPng() decodes.
constexpr int MaxPngSize = 1024;

/**
 * The picture in @p png, a PNG file from an index, in the format that windows use; a null picture when it cannot be
 * decoded, or is larger than MaxPngSize. By libpng, because QImageReader first loads every image plugin of Qt with its
 * libraries, which takes as long as an empty window.
 */
QImage pictureOfPng(const QByteArray &png);

} // namespace SorrelQml

#endif
