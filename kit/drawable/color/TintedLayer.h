// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TINTEDLAYER_H
#define SORRELKIT_TINTEDLAYER_H

#include "drawable/color/Tint.h"

#include <QRectF>

#include <functional>
#include <optional>

namespace SorrelKit {

class Canvas;

/// A layer that is made as opaque as `android:alpha` says and then tinted.
class TintedLayer
{
public:
    /// A layer that changes nothing.
    TintedLayer() = default;
    /// The alpha and the tint of an element.
    TintedLayer(const DrawableAttributes &attributes, DrawableLoader &loader);

    /// Calls @p paint to paint on @p canvas, changed and cut to @p extent. A layer that changes nothing is not made,
    /// and not cut.
    void paint(Canvas &canvas, const QRectF &extent, const std::function<void()> &paint) const;

private:
    std::optional<Tint> m_tint;
    qreal m_alpha = 1;
};

} // namespace SorrelKit

#endif
