// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/BitmapDrawable.h"

#include "drawable/paint/Canvas.h"
#include "drawable/paint/PaintBounds.h"
#include "drawable/paint/VisibleArea.h"
#include "drawable/source/DrawableAttributes.h"

#include <cmath>

namespace SorrelKit {

namespace {

using TileMode = BitmapDrawable::TileMode;

TileMode tileMode(const DrawableAttributes &attributes, quint32 id, TileMode fallback)
{
    switch (const int mode = attributes.integer(id, int(fallback))) {
    case int(TileMode::Clamp):
    case int(TileMode::Repeat):
    case int(TileMode::Mirror):
        return TileMode(mode);
    default:
        return TileMode::Disabled;
    }
}

PictureSamples stretchedSamples(int count, int side, qreal start, qreal step)
{
    PictureSamples samples(count);
    for (int i = 0; i < count; ++i)
        samples[i] = PictureSample::within(start + (i + 0.5) * step, 0, side);
    return samples;
}

// The pixel of a tile for the pixel @p index of the repeated tiles.
int tilePixel(qint64 index, int side, TileMode mode)
{
    switch (mode) {
    case TileMode::Repeat:
        return int((index % side + side) % side);
    case TileMode::Mirror: {
        const qint64 period = 2 * qint64(side);
        const qint64 at = (index % period + period) % period;
        return int(qMin(at, period - 1 - at));
    }
    default:
        return int(qBound(qint64(0), index, qint64(side) - 1));
    }
}

PictureSamples tileSamples(int count, int side, qreal start, qreal step, TileMode mode)
{
    PictureSamples samples(count);
    for (int i = 0; i < count; ++i) {
        const qreal at = start + (i + 0.5) * step - 0.5;
        const qreal whole = std::floor(at);
        const auto index = qint64(whole);
        samples[i] = {tilePixel(index, side, mode), tilePixel(index + 1, side, mode),
                      int(std::lround((at - whole) * PictureSample::MaxWeight))};
    }
    return samples;
}

} // namespace

QSizeF BitmapDrawable::sizeOf(const QImage &picture, qreal scale)
{
    return {qMax(qreal(1), std::round(picture.width() * scale)), qMax(qreal(1), std::round(picture.height() * scale))};
}

DrawablePointer BitmapDrawable::fromFile(const ResolvedValue &value, DrawableLoader &loader)
{
    const QImage picture = loader.picture(value.file());
    if (picture.isNull())
        return nullptr;
    return std::make_unique<BitmapDrawable>(picture, sizeOf(picture, loader.scaleOf(value.density)));
}

DrawablePointer BitmapDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    const ResolvedValue source = attributes.value(Attr::Src);
    if (source.text.isEmpty()) {
        loader.setError(DrawableFault::NoPicture, element.name);
        return nullptr;
    }
    const QImage picture = loader.picture(source.file());
    if (picture.isNull())
        return nullptr;
    auto drawable = std::make_unique<BitmapDrawable>(picture, sizeOf(picture, loader.scaleOf(source.density)));
    const TileMode both = tileMode(attributes, Attr::TileMode, TileMode::Disabled);
    drawable->m_tileX = tileMode(attributes, Attr::TileModeX, both);
    drawable->m_tileY = tileMode(attributes, Attr::TileModeY, both);
    drawable->m_gravity = attributes.gravity(Attr::Gravity, Gravity::Fill);
    drawable->m_layer = TintedLayer(attributes, loader);
    return drawable;
}

void BitmapDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    const QRectF target = PaintBounds::clamped(isTiled() ? bounds : Gravity::apply(m_gravity, m_size, bounds));
    if (target.isEmpty())
        return;
    m_layer.paint(canvas, VisibleArea(canvas.painter(), target).bounds(), [&]() { paint(canvas, target); });
}

void BitmapDrawable::paint(Canvas &canvas, const QRectF &target) const
{
    const VisibleArea area(canvas.painter(), target);
    const QSizeF size = isTiled() ? m_size : area.bounds().size();
    const QSizeF scale = area.scale();
    PicturePainter::paint(canvas, area, m_picture, {size.width() * scale.width(), size.height() * scale.height()},
                          [&](QSize picture) { return isTiled() ? tiled(area, picture) : stretched(area, picture); });
}

PicturePainter::Samples BitmapDrawable::stretched(const VisibleArea &area, QSize picture)
{
    const QRectF &bounds = area.bounds();
    const qreal x = picture.width() / bounds.width();
    const qreal y = picture.height() / bounds.height();
    const QRectF &part = area.part();
    return {stretchedSamples(area.pixels().width(), picture.width(), (part.x() - bounds.x()) * x,
                             part.width() * x / area.pixels().width()),
            stretchedSamples(area.pixels().height(), picture.height(), (part.y() - bounds.y()) * y,
                             part.height() * y / area.pixels().height())};
}

PicturePainter::Samples BitmapDrawable::tiled(const VisibleArea &area, QSize picture) const
{
    const qreal x = picture.width() / m_size.width();
    const qreal y = picture.height() / m_size.height();
    const QRectF &part = area.part();
    return {tileSamples(area.pixels().width(), picture.width(), part.x() * x, part.width() * x / area.pixels().width(),
                        m_tileX),
            tileSamples(area.pixels().height(), picture.height(), part.y() * y,
                        part.height() * y / area.pixels().height(), m_tileY)};
}

} // namespace SorrelKit
