// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PICTUREPAINTER_H
#define SORRELKIT_PICTUREPAINTER_H

#include "drawable/paint/PictureSample.h"

#include <functional>

namespace SorrelKit {

class Canvas;
class VisibleArea;

/// Paints pictures that are scaled and stretched.
namespace PicturePainter {

/// The samples of the visible columns and rows.
struct Samples {
    PictureSamples columns;
    PictureSamples rows;
};

/// Scales @p picture down to @p size when it is larger, and paints in @p area what @p samplesOf picks of the result, by
/// the size that the result has. Spends the work and holds the bytes for this first; paints nothing when there is no
/// room.
void paint(Canvas &canvas, const VisibleArea &area, const QImage &picture, const QSizeF &size,
           const std::function<Samples(QSize)> &samplesOf);

} // namespace PicturePainter

} // namespace SorrelKit

#endif
