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

/// A picture of which some parts are stretched and others keep their size: the file of one, as build tools have compiled it,
/// or the element `nine-patch` with `android:src`.
class NinePatchDrawable : public Drawable
{
public:
    /// @p scale is by what the picture is enlarged on the device.
    NinePatchDrawable(const QImage &picture, NinePatch patch, qreal scale);
    /// The picture in the file that @p value names; null, with an error, when it cannot be decoded or has nothing that may
    /// be stretched.
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
