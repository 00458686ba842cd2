// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/RotateDrawable.h"

#include "drawable/paint/Canvas.h"
#include "drawable/paint/PaintBounds.h"
#include "drawable/source/DrawableAttributes.h"

#include <cmath>
#include <utility>

namespace SorrelKit {

namespace {

RotateDrawable::Pivot pivot(const DrawableAttributes &attributes, quint32 id)
{
    RotateDrawable::Pivot pivot;
    const TypedValue value = attributes.value(id).value;
    if (const auto fraction = value.fraction())
        pivot.value = *fraction;
    else if (const auto number = value.number())
        pivot = {*number, false};
    return pivot;
}

qreal animatedDegrees(const DrawableLoader &loader)
{
    constexpr int Period = RotateDrawable::AnimatedFrames * RotateDrawable::AnimatedFrameTime;
    if (loader.clock() == nullptr)
        return 0;
    const qint64 time = loader.clock()->timeWithin(Period);
    const qint64 frame = time / RotateDrawable::AnimatedFrameTime;
    loader.clock()->noteChange((frame + 1) * RotateDrawable::AnimatedFrameTime - time);
    loader.clock()->notePeriod(Period);
    return 360.0 * int(frame) / RotateDrawable::AnimatedFrames;
}

qreal coordinate(const RotateDrawable::Pivot &pivot, qreal start, qreal side)
{
    return PaintBounds::clamped(start + (pivot.isFraction ? pivot.value * side : pivot.value));
}

} // namespace

RotateDrawable::RotateDrawable(DrawablePointer drawable, qreal degrees, const Pivot &x, const Pivot &y)
    : m_drawable(std::move(drawable)), m_degrees(std::fmod(degrees, 360)), m_x(x), m_y(y)
{
}

DrawablePointer RotateDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    DrawablePointer drawable = loader.fromRequiredItem(element);
    if (drawable == nullptr)
        return nullptr;
    const DrawableAttributes attributes(element, loader);
    const bool isAnimated = element.name == QLatin1String("animated-rotate");
    return std::make_unique<RotateDrawable>(
        std::move(drawable), isAnimated ? animatedDegrees(loader) : attributes.number(Attr::FromDegrees, 0),
        pivot(attributes, Attr::PivotX), pivot(attributes, Attr::PivotY));
}

void RotateDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    const qreal x = coordinate(m_x, bounds.x(), bounds.width());
    const qreal y = coordinate(m_y, bounds.y(), bounds.height());
    QPainter &painter = canvas.painter();
    painter.save();
    painter.translate(x, y);
    painter.rotate(m_degrees);
    painter.translate(-x, -y);
    m_drawable->draw(canvas, bounds);
    painter.restore();
}

} // namespace SorrelKit
