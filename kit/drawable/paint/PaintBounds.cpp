// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/PaintBounds.h"

#include <cmath>

namespace SorrelKit {

qreal PaintBounds::clamped(qreal coordinate)
{
    return std::isnan(coordinate) ? 0 : qBound(-MaxCoordinate, coordinate, MaxCoordinate);
}

QRectF PaintBounds::clamped(const QRectF &rect)
{
    if (!std::isfinite(rect.right()) || !std::isfinite(rect.bottom()) || !std::isfinite(rect.left())
        || !std::isfinite(rect.top()))
        return {};
    const QPointF topLeft(clamped(rect.left()), clamped(rect.top()));
    const QPointF bottomRight(clamped(rect.right()), clamped(rect.bottom()));
    const QRectF cut(topLeft, bottomRight);
    return cut.isEmpty() ? QRectF() : cut;
}

} // namespace SorrelKit
