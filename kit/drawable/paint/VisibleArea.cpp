// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/VisibleArea.h"

#include "drawable/paint/Canvas.h"
#include "drawable/paint/PaintBounds.h"

#include <cmath>

namespace SorrelKit {

namespace {

// No canvas shows more, at any rotation.
constexpr int MaxPixels = 2 * Canvas::MaxSide;

QRectF movedToPixels(const QRectF &rect)
{
    const qreal left = std::round(rect.left());
    const qreal top = std::round(rect.top());
    // A side shorter than a pixel does not vanish.
    const qreal right = qMax(std::round(rect.right()), left + 1);
    const qreal bottom = qMax(std::round(rect.bottom()), top + 1);
    return {left, top, right - left, bottom - top};
}

int pixelCount(qreal length)
{
    return int(std::ceil(qBound(qreal(0), length - 1e-6, qreal(MaxPixels))));
}

} // namespace

VisibleArea::VisibleArea(const QPainter &painter, const QRectF &bounds)
{
    const QRectF wanted = PaintBounds::clamped(bounds);
    const QTransform &toDevice = painter.transform();
    bool isInvertible = false;
    const QTransform fromDevice = toDevice.inverted(&isInvertible);
    if (wanted.isEmpty() || !isInvertible)
        return;
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    m_scale = {std::hypot(toDevice.m11(), toDevice.m12()), std::hypot(toDevice.m21(), toDevice.m22())};
    if (toDevice.type() <= QTransform::TxScale) {
        const QRectF moved = movedToPixels(toDevice.mapRect(wanted));
        m_bounds = fromDevice.mapRect(moved);
        m_part = fromDevice.mapRect(moved & device);
    } else {
        m_bounds = wanted;
        m_part = wanted & fromDevice.mapRect(device);
    }
    if (!m_part.isEmpty())
        m_pixels = {pixelCount(m_part.width() * m_scale.width()), pixelCount(m_part.height() * m_scale.height())};
}

} // namespace SorrelKit
