// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ColorDrawable.h"

#include "Canvas.h"
#include "DrawableAttributes.h"

namespace SorrelKit {

DrawablePointer ColorDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    return std::make_unique<ColorDrawable>(DrawableAttributes(element, loader).color(Attr::Color, Qt::transparent));
}

void ColorDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    if (canvas.spend())
        canvas.painter().fillRect(bounds, m_color);
}

} // namespace SorrelKit
