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
 * An icon of layers that the device cuts to an outline (DrawableLoader::iconMask()): `adaptive-icon` with the elements
 * `background`, `foreground` and `monochrome`. Each has a drawable, by reference or as a child. A layer that cannot be
 * loaded is left out.
 *
 * A layer has LayerUnits a side, and the VisibleUnits in its middle are visible: layers are drawn into bounds that are
 * larger than the icon's by this ratio. Transparent parts of the background are black, as on a device.
 *
 * DrawableLoader::isMonochrome() makes an icon draw its monochrome layer alone, on a transparent ground and not cut, as
 * a device needs it that tints icons. An icon without this layer is drawn as usual.
 */
class AdaptiveIcon : public Drawable
{
public:
    static constexpr qreal LayerUnits = 108;
    static constexpr qreal VisibleUnits = 72;

    AdaptiveIcon(DrawablePointer background, DrawablePointer foreground, IconMask mask);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    /// The visible part of the larger layer.
    QSizeF intrinsicSize() const override;
    void draw(Canvas &canvas, const QRectF &bounds) const override;

    /// The outline of @p mask in @p bounds.
    static QPainterPath outline(IconMask mask, const QRectF &bounds);

private:
    DrawablePointer m_background;
    DrawablePointer m_foreground;
    IconMask m_mask;
    bool m_isMonochrome = false; ///< the foreground is the monochrome layer
};

} // namespace SorrelKit

#endif
