// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CANVAS_H
#define SORRELKIT_CANVAS_H

#include "format/Allowance.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <functional>

namespace SorrelKit {

/**
 * A picture that drawables are painted on, with a budget for what painting takes, counted in pixels that are gone over.
 * A drawable spends() what it is about to paint, and leaves it out when there is not as much left.
 */
class Canvas
{
public:
    /// Pixels that may be gone over while a picture is drawn, all layers together.
    /// Enough for a thousand layers over all of a picture of 512 pixels.
    static constexpr qint64 MaxPixels = qint64(1) << 28;
    /// Sides of a picture at most.
    static constexpr int MaxSide = 1024;
    /// Layers in each other at most, each of which takes a picture's memory.
    static constexpr int MaxLayers = 8;

    /// A canvas of @p size, transparent, in the format ARGB32_Premultiplied; with up to @p maxLayers in each other.
    explicit Canvas(QSize size, int maxLayers = MaxLayers);

    /// Paints on the innermost layer, antialiased.
    QPainter &painter() { return *m_painter; }
    QSize size() const { return m_image.size(); }
    /// The picture, when everything is painted. The painter is as new then: its state is gone.
    QImage image();

    /// Takes what one pass over all of the canvas costs off the budget, @p passes times; false when there is not as much.
    bool spend(qint64 passes = 1) { return m_pixels.spend(passes * qint64(size().width()) * size().height()); }
    /// Takes off what @p pixels cost, for what is smaller than the canvas, or takes longer than a pass over it.
    bool spendPixels(qint64 pixels) { return m_pixels.spend(pixels); }
    /// The pixels that are left of the budget.
    qint64 pixelsLeft() const { return m_pixels.left(); }
    /// Whether something had to be left out.
    bool isSpent() const { return m_pixels.isSpent(); }

    /**
     * Has @p paint paint on a transparent layer of the canvas's size, hands it to @p change, and puts it on the canvas
     * with @p opacity. The painter's transformation holds on the layer as well, which may lie in a layer itself.
     * Spends three passes. What is in more layers in each other than there may be is left out.
     */
    void layer(const std::function<void()> &paint, const std::function<void(QImage &)> &change, qreal opacity = 1);
    /// The same, and cuts the layer to @p mask, with smooth edges, after @p change, which may be empty. The mask has the
    /// coordinates of painter(). Spends two passes more.
    void maskedLayer(const QPainterPath &mask, const std::function<void()> &paint,
                     const std::function<void(QImage &)> &change = {}, qreal opacity = 1);

private:
    Q_DISABLE_COPY(Canvas)

    QImage m_image;
    QPainter m_bottom;
    QPainter *m_painter; ///< of the innermost layer
    Allowance m_pixels;
    const int m_maxLayers;
    int m_layers = 0;
};

} // namespace SorrelKit

#endif
