// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CANVAS_H
#define SORRELKIT_CANVAS_H

#include "limits/HeldBytes.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <functional>

namespace SorrelKit {

/**
 * A picture that drawables are painted on. Painting costs work, and layers hold bytes, of the budget of the call. A
 * drawable spends the work before it paints. Once there is too little work for something, nothing more is painted.
 */
class Canvas
{
public:
    /// Pixels of a side at most.
    static constexpr int MaxSide = 1024;
    /// Layers in each other at most. Content in more layers is left out.
    static constexpr int MaxLayers = 8;
    /// Pixels that are painted in one colour, or copied from a layer, for a unit of work. Both take about 1 ns a pixel.
    static constexpr int PixelsPerWork = 4;

    /// A transparent canvas of @p size, in the format ARGB32_Premultiplied. @p budget outlives it. Nothing is painted
    /// when the budget has no room for the canvas.
    Canvas(QSize size, Budget &budget);

    /// The painter of the innermost layer. It is antialiased.
    QPainter &painter() { return *m_painter; }
    QSize size() const { return m_image.size(); }
    Budget &budget() { return m_budget; }
    /// The finished picture. Ends the painter, so nothing is painted afterwards.
    QImage image();

    /// Spends the work of @p passes over the whole canvas. Returns whether the drawable may paint.
    bool spendPasses(qint64 passes = 1) { return spendWork(passes * size().width() * size().height() / PixelsPerWork); }
    /// Spends @p work. Returns whether the drawable may paint.
    bool spendWork(qint64 work);
    /// Notes that the budget has no room for the bytes of something, which is left out.
    void setCut() { m_isCut = true; }
    /// Whether something was left out because the budget had no room for it.
    bool isSpent() const { return m_isSpent || m_isCut; }

    /**
     * Calls @p paint to paint on a transparent layer of the canvas's size, passes the layer to @p change, and paints it
     * on the canvas with @p opacity. The layer keeps the painter's transformation. Layers may be nested. A layer costs
     * three passes and holds its bytes.
     */
    void layer(const std::function<void()> &paint, const std::function<void(QImage &)> &change, qreal opacity = 1);
    /// The same, and cuts the layer to @p mask, with smooth edges, after @p change, which may be empty. The mask has
    /// the coordinates of painter(). Costs two passes more. Holds no bytes of a layer when nothing is below it and
    /// nothing changes it: it is then painted without one, and the result is the same.
    void maskedLayer(const QPainterPath &mask, const std::function<void()> &paint,
                     const std::function<void(QImage &)> &change = {}, qreal opacity = 1);

private:
    Q_DISABLE_COPY(Canvas)

    /// Makes the device of @p painter, which has the canvas's size, transparent outside of @p mask; all of it when the
    /// budget has no room for a mask.
    void cut(QPainter *painter, const QPainterPath &mask, const QTransform &transform);

    Budget &m_budget;
    QImage m_image;
    HeldBytes m_bytes;
    QPainter m_bottom;
    QPainter *m_painter; ///< of the innermost layer
    int m_layers = 0;
    bool m_isBlank = true; ///< nothing was painted on the innermost layer
    bool m_isSpent;        ///< no more is painted
    bool m_isCut = false;  ///< something was left out
};

} // namespace SorrelKit

#endif
