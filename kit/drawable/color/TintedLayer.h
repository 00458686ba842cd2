// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MASKEDLAYER_H
#define SORRELKIT_MASKEDLAYER_H

#include "drawable/color/Tint.h"

#include <QPainterPath>

#include <functional>
#include <optional>

namespace SorrelKit {

class Canvas;

/**
 * Has @p paint paint on a layer of @p canvas, hands that to @p change when there is one, keeps what is within @p mask of it,
 * with soft edges, and puts that on the canvas with @p opacity. The mask is in the coordinates of the painter as it is now.
 */
void paintMasked(Canvas &canvas, const QPainterPath &mask, const std::function<void()> &paint,
                 const std::function<void(QImage &)> &change = {}, qreal opacity = 1);

/// Has @p paint paint on @p canvas what is within @p extent, as opaque as @p opacity says and then tinted. When there is
/// nothing to change, it paints on the canvas itself, beyond the extent as well.
void paintTinted(Canvas &canvas, const QRectF &extent, const std::optional<Tint> &tint, qreal opacity,
                 const std::function<void()> &paint);

} // namespace SorrelKit

#endif
