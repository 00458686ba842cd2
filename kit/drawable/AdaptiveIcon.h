// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ADAPTIVEICON_H
#define SORRELKIT_ADAPTIVEICON_H

#include "drawable/source/Drawable.h"

#include <SorrelKit/IconMask.h>

#include <QPainterPath>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * An icon of layers that the device cuts to a shape (DrawableLoader::iconMask()): `adaptive-icon` with the elements `background`, `foreground` and
 * `monochrome`, each a drawable by reference or within the element. A layer that cannot be loaded is left out.
 *
 * Layers have LayerUnits to a side, of which the VisibleUnits in the middle can be seen: they are drawn into bounds that are
 * as much larger than those asked for. What the background lets through is black, as on a device. The monochrome
 * layer, which devices tint when the user wishes it, is kept and not drawn.
 */
class AdaptiveIcon : public Drawable
{
public:
    static constexpr qreal LayerUnits = 108;
    static constexpr qreal VisibleUnits = 72;

    AdaptiveIcon(DrawablePointer background, DrawablePointer foreground, DrawablePointer monochrome, IconMask mask);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    bool hasMonochrome() const { return m_monochrome != nullptr; }
    /// The larger of the layers' sizes, as far as it can be seen.
    QSizeF intrinsicSize() const override;
    void draw(Canvas &canvas, const QRectF &bounds) const override;

    /// The outline of @p mask in @p bounds.
    static QPainterPath outline(IconMask mask, const QRectF &bounds);

private:
    DrawablePointer m_background;
    DrawablePointer m_foreground;
    DrawablePointer m_monochrome;
    IconMask m_mask;
};

} // namespace SorrelKit

#endif
