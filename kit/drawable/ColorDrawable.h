// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_COLORDRAWABLE_H
#define SORRELKIT_COLORDRAWABLE_H

#include "drawable/source/Drawable.h"

#include <QColor>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/// A colour that fills its bounds: a colour resource, or the element `color` with `android:color`.
class ColorDrawable : public Drawable
{
public:
    explicit ColorDrawable(const QColor &color) : m_color(color) {}
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    QColor m_color;
};

} // namespace SorrelKit

#endif
