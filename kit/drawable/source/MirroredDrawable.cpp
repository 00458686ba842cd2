// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/source/MirroredDrawable.h"

#include "drawable/paint/Canvas.h"
#include "drawable/paint/PaintBounds.h"

#include <utility>

namespace SorrelKit {

MirroredDrawable::MirroredDrawable(DrawablePointer drawable) : m_drawable(std::move(drawable)) {}

DrawablePointer MirroredDrawable::mirrored(DrawablePointer drawable, bool isMirrored)
{
    auto *const own = dynamic_cast<MirroredDrawable *>(drawable.get());
    if (drawable == nullptr || isMirrored == (own != nullptr))
        return drawable;
    if (isMirrored)
        return std::make_unique<MirroredDrawable>(std::move(drawable));
    return std::move(own->m_drawable);
}

QMarginsF MirroredDrawable::padding() const
{
    const QMarginsF own = m_drawable->padding();
    return {own.right(), own.top(), own.left(), own.bottom()};
}

void MirroredDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    const QRectF place = PaintBounds::clamped(bounds);
    if (place.isEmpty())
        return;
    QPainter &painter = canvas.painter();
    painter.save();
    painter.translate(place.left() + place.right(), 0);
    painter.scale(-1, 1);
    m_drawable->draw(canvas, place);
    painter.restore();
}

} // namespace SorrelKit
