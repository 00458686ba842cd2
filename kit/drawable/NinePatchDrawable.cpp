// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/NinePatchDrawable.h"

#include "drawable/BitmapDrawable.h"
#include "drawable/paint/Canvas.h"
#include "drawable/paint/PicturePainter.h"
#include "drawable/paint/VisibleArea.h"
#include "drawable/source/DrawableAttributes.h"

#include <utility>

namespace SorrelKit {

NinePatchDrawable::NinePatchDrawable(const QImage &picture, NinePatch patch, qreal scale)
    : m_picture(picture), m_patch(std::move(patch)), m_scale(scale)
{
}

std::unique_ptr<NinePatchDrawable> NinePatchDrawable::read(const ResolvedValue &value, DrawableLoader &loader)
{
    const QImage picture = loader.picture(value.file());
    if (picture.isNull())
        return nullptr;
    auto patch = loader.ninePatch(value.file());
    if (!patch) {
        loader.setError(DrawableFault::NotNinePatch, value.text);
        return nullptr;
    }
    return std::make_unique<NinePatchDrawable>(picture, std::move(*patch), loader.scaleOf(value.density));
}

DrawablePointer NinePatchDrawable::fromFile(const ResolvedValue &value, DrawableLoader &loader)
{
    return read(value, loader);
}

DrawablePointer NinePatchDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    const ResolvedValue source = attributes.value(Attr::Src);
    if (source.text.isEmpty()) {
        loader.setError(DrawableFault::NoPicture, element.name);
        return nullptr;
    }
    auto drawable = read(source, loader);
    if (drawable == nullptr)
        return nullptr;
    drawable->m_layer = TintedLayer(attributes, loader);
    return drawable;
}

QSizeF NinePatchDrawable::intrinsicSize() const
{
    return BitmapDrawable::sizeOf(m_picture, m_scale);
}

void NinePatchDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    const VisibleArea area(canvas.painter(), bounds);
    if (area.isEmpty())
        return;
    m_layer.paint(canvas, area.bounds(), [&]() { paint(canvas, area); });
}

void NinePatchDrawable::paint(Canvas &canvas, const VisibleArea &area) const
{
    const QSizeF scale = area.scale();
    const QRectF &bounds = area.bounds();
    const QPointF offset = area.part().topLeft() - bounds.topLeft();
    const QSizeF fixedScale = scale * m_scale;
    const auto samplesOf = [&](QSize picture) {
        const StretchedSide width{picture.width(), qreal(picture.width()) / m_picture.width(),
                                  bounds.width() * scale.width(), fixedScale.width()};
        const StretchedSide height{picture.height(), qreal(picture.height()) / m_picture.height(),
                                   bounds.height() * scale.height(), fixedScale.height()};
        return PicturePainter::Samples{
            width.samples(m_patch.columns(), offset.x() * scale.width(), area.pixels().width()),
            height.samples(m_patch.rows(), offset.y() * scale.height(), area.pixels().height())};
    };
    PicturePainter::paint(canvas, area, m_picture,
                          {m_picture.width() * fixedScale.width(), m_picture.height() * fixedScale.height()},
                          samplesOf);
}

} // namespace SorrelKit
