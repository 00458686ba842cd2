// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_NINEPATCHDRAWABLE_H
#define SORRELKIT_NINEPATCHDRAWABLE_H

#include "drawable/color/TintedLayer.h"
#include "drawable/source/Drawable.h"
#include "drawable/source/NinePatch.h"

#include <QImage>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;
class VisibleArea;
struct ResolvedValue;

/// A picture that is stretched in some parts and keeps its size in the others: a compiled `.9.png`, or the element
/// `nine-patch` with `android:src`.
class NinePatchDrawable : public Drawable
{
public:
    /// @p scale is the number of pixels on the device for each pixel of the picture.
    NinePatchDrawable(const QImage &picture, NinePatch patch, qreal scale);
    /// The picture in the file that @p value names; null, with an error, when it cannot be decoded or is no nine-patch.
    static DrawablePointer fromFile(const ResolvedValue &value, DrawableLoader &loader);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    QSizeF intrinsicSize() const override;
    QMarginsF padding() const override { return m_patch.padding() * m_scale; }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    static std::unique_ptr<NinePatchDrawable> read(const ResolvedValue &value, DrawableLoader &loader);
    void paint(Canvas &canvas, const VisibleArea &area) const;

    QImage m_picture;
    NinePatch m_patch;
    qreal m_scale;
    TintedLayer m_layer;
};

} // namespace SorrelKit

#endif
