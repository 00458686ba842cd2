// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DOWNSCALER_H
#define SORRELKIT_DOWNSCALER_H

#include <QImage>
#include <QSizeF>

namespace SorrelKit {

/// Scales pictures down, by averages.
namespace Downscaler {

/// Pixels of a side at most: those of a layer of the largest adaptive icon.
constexpr int MaxSide = 1536;

/// Units of work for each pixel of a picture that is scaled down. It takes 3 to 7 ns.
constexpr int WorkPerPixel = 2;
/// Bytes that scaled() takes for a picture of the size @p picture.
qint64 bytes(QSize picture, const QSizeF &size);

/// @p picture in the format ARGB32_Premultiplied, scaled down to @p size. A side that is shorter already keeps its
/// length. Takes little memory besides the result, whatever the size of the picture.
QImage scaled(const QImage &picture, const QSizeF &size);

} // namespace Downscaler

} // namespace SorrelKit

#endif
