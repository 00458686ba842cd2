// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_VISIBLEAREA_H
#define SORRELKIT_VISIBLEAREA_H

#include <QPainter>
#include <QRectF>
#include <QSize>

namespace SorrelKit {

/**
 * The part of some bounds that is visible on the device of a painter, and its size in pixels. A drawable computes only
 * this part of a picture, however large the bounds are.
 *
 * Unless the painter's transformation rotates, the bounds are first moved to whole pixels, where Android's always are.
 * A picture that needs no scaling stays sharp.
 */
class VisibleArea
{
public:
    VisibleArea(const QPainter &painter, const QRectF &bounds);

    bool isEmpty() const { return m_pixels.isEmpty(); }
    /// The bounds, moved to whole pixels.
    const QRectF &bounds() const { return m_bounds; }
    /// The visible part of bounds(), and up to a pixel more.
    const QRectF &part() const { return m_part; }
    /// The size of the part on the device.
    QSize pixels() const { return m_pixels; }
    /// Pixels of the device for one unit of the painter.
    QSizeF scale() const { return m_scale; }

private:
    QRectF m_bounds;
    QRectF m_part;
    QSize m_pixels;
    QSizeF m_scale;
};

} // namespace SorrelKit

#endif
