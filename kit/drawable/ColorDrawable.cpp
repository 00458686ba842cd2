// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/ColorDrawable.h"

#include "drawable/paint/Canvas.h"
#include "drawable/paint/VisibleArea.h"
#include "drawable/source/DrawableAttributes.h"

namespace SorrelKit {

DrawablePointer ColorDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    return std::make_unique<ColorDrawable>(DrawableAttributes(element, loader).color(Attr::Color, Qt::transparent));
}

void ColorDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    const VisibleArea area(canvas.painter(), bounds);
    if (!area.isEmpty() && canvas.spendPasses())
        canvas.painter().fillRect(area.part(), m_color);
}

} // namespace SorrelKit
