// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PAINTBOUNDS_H
#define SORRELKIT_PAINTBOUNDS_H

#include <QRectF>

namespace SorrelKit {

/// The range of coordinates that a painter is given.
namespace PaintBounds {

/// The largest coordinate, either way. It is far outside of every canvas and small enough for a painter's fixed-point
/// numbers.
constexpr qreal MaxCoordinate = 1 << 16;

/// @p coordinate within the range; 0 for a NaN.
qreal clamped(qreal coordinate);
/// The part of @p rect within the range; an empty rectangle when @p rect is empty or not finite.
QRectF clamped(const QRectF &rect);

} // namespace PaintBounds

} // namespace SorrelKit

#endif
