// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_VISIBLEAREA_H
#define SORRELKIT_VISIBLEAREA_H

#include <QPainter>
#include <QRectF>
#include <QSize>

namespace SorrelKit {

/// Coordinates that anything is painted at, at most, either way. It is far beyond every canvas, and little enough for a
/// painter's fixed-point numbers.
constexpr qreal MaxCoordinate = 1 << 16;

/// @p bounds as they may be painted: cut at MaxCoordinate, and an empty rectangle when they are empty or not finite.
QRectF paintBounds(const QRectF &bounds);

/// The number, cut at MaxCoordinate; 0 for what is no number.
qreal paintCoordinate(qreal value);

/**
 * The part of some bounds that can be seen on the device of a painter, and how many pixels of it that takes: what is
 * worth to be computed of a picture that is drawn into the bounds, however large they are.
 *
 * Under a transformation that does not turn, the bounds are moved to whole pixels first, as Android's always are, so that
 * a picture that needs no scaling stays sharp.
 */
class VisibleArea
{
public:
    VisibleArea(const QPainter &painter, const QRectF &bounds);

    bool isEmpty() const { return m_pixels.isEmpty(); }
    /// The bounds, moved to whole pixels.
    const QRectF &bounds() const { return m_bounds; }
    /// What can be seen of them, and a little more.
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
