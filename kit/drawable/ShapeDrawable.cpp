// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/ShapeDrawable.h"

#include "drawable/color/Tint.h"
#include "drawable/paint/Canvas.h"
#include "drawable/paint/PaintBounds.h"
#include "drawable/source/DrawableAttributes.h"

namespace SorrelKit {

namespace {

enum Corner {
    TopLeft,
    TopRight,
    BottomRight,
    BottomLeft,
};

qreal positivePixels(const DrawableAttributes &attributes, quint32 id, qreal fallback = 0)
{
    return qMax(qreal(0), attributes.pixels(id, fallback));
}

// The tint of a single colour.
QColor tinted(const QColor &color, const Tint &tint)
{
    QImage pixel(1, 1, QImage::Format_ARGB32_Premultiplied);
    pixel.fill(color);
    tint.apply(&pixel);
    return pixel.pixelColor(0, 0);
}

} // namespace

qreal ShapeDrawable::RingLength::of(qreal width) const
{
    return qBound(qreal(0), pixels >= 0 ? pixels : width / ratio, PaintBounds::MaxCoordinate);
}

DrawablePointer ShapeDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    auto shape = std::make_unique<ShapeDrawable>();
    if (!shape->readShape(attributes, loader))
        return nullptr;
    for (const XmlElement &part : element.children)
        shape->readPart(part, loader);
    if (const auto tint = Tint::fromAttributes(attributes, loader))
        shape->tint(*tint);
    return shape;
}

bool ShapeDrawable::readShape(const DrawableAttributes &attributes, DrawableLoader &loader)
{
    const int kind = attributes.integer(Attr::Shape, int(Kind::Rectangle));
    if (kind < int(Kind::Rectangle) || kind > int(Kind::Ring)) {
        loader.setError(DrawableFault::UnknownShape, QString::number(kind));
        return false;
    }
    m_kind = Kind(kind);
    const auto ratio = [&](quint32 id, qreal fallback) {
        const qreal given = attributes.number(id, fallback);
        return given > 0 ? given : fallback;
    };
    m_innerRadius = {attributes.pixels(Attr::InnerRadius, -1), ratio(Attr::InnerRadiusRatio, m_innerRadius.ratio)};
    m_thickness = {attributes.pixels(Attr::Thickness, -1), ratio(Attr::ThicknessRatio, m_thickness.ratio)};
    m_isAtLevel = m_kind == Kind::Ring && attributes.boolean(Attr::UseLevel, true);
    return true;
}

void ShapeDrawable::readPart(const XmlElement &part, DrawableLoader &loader)
{
    const DrawableAttributes attributes(part, loader);
    if (part.name == QLatin1String("solid")) {
        m_solid = attributes.color(Attr::Color, Qt::transparent);
        m_gradient.reset();
    } else if (part.name == QLatin1String("gradient")) {
        m_gradient = ShapeGradient::fromXml(part, loader);
        m_solid = Qt::transparent;
    } else if (part.name == QLatin1String("stroke")) {
        m_stroke = {qMin(positivePixels(attributes, Attr::Width), PaintBounds::MaxCoordinate),
                    attributes.color(Attr::Color, Qt::transparent), positivePixels(attributes, Attr::DashWidth),
                    positivePixels(attributes, Attr::DashGap)};
    } else if (part.name == QLatin1String("corners")) {
        readCorners(attributes);
    } else if (part.name == QLatin1String("size")) {
        m_size = {attributes.pixels(Attr::Width, -1), attributes.pixels(Attr::Height, -1)};
    } else if (part.name == QLatin1String("padding")) {
        m_padding = {attributes.pixels(Attr::Left, 0), attributes.pixels(Attr::Top, 0),
                     attributes.pixels(Attr::Right, 0), attributes.pixels(Attr::Bottom, 0)};
    } else {
        loader.setError(DrawableFault::UnknownShapePart, part.name);
    }
}

void ShapeDrawable::readCorners(const DrawableAttributes &attributes)
{
    const qreal all = positivePixels(attributes, Attr::Radius);
    m_radii[TopLeft] = positivePixels(attributes, Attr::TopLeftRadius, all);
    m_radii[TopRight] = positivePixels(attributes, Attr::TopRightRadius, all);
    m_radii[BottomRight] = positivePixels(attributes, Attr::BottomRightRadius, all);
    m_radii[BottomLeft] = positivePixels(attributes, Attr::BottomLeftRadius, all);
}

void ShapeDrawable::tint(const Tint &tint)
{
    const auto change = [&](const QColor &color) { return tinted(color, tint); };
    m_solid = change(m_solid);
    if (m_gradient)
        m_gradient->changeColors(change);
    if (m_stroke.width > 0)
        m_stroke.color = change(m_stroke.color);
}

void ShapeDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    const QRectF whole = PaintBounds::clamped(bounds);
    if (whole.isEmpty() || m_isAtLevel)
        return;
    const qreal half = m_stroke.width / 2;
    const QRectF rect = whole.adjusted(half, half, -half, -half).normalized();
    const QPainterPath path = outline(rect);
    const QBrush fill = m_gradient ? m_gradient->brush(rect, m_size) : QBrush(m_solid);
    const bool isFilled = m_kind != Kind::Line && (m_gradient || m_solid.alpha() > 0);
    if (isFilled && canvas.spendPasses())
        canvas.painter().fillPath(path, fill);
    paintStroke(canvas, path, 2 * (rect.width() + rect.height()));
}

QPainterPath ShapeDrawable::outline(const QRectF &rect) const
{
    QPainterPath path;
    switch (m_kind) {
    case Kind::Rectangle:
        return roundedRectangle(rect);
    case Kind::Ring:
        return ring(rect);
    case Kind::Oval:
        path.addEllipse(rect);
        break;
    case Kind::Line:
        path.moveTo(rect.left(), rect.center().y());
        path.lineTo(rect.right(), rect.center().y());
        break;
    }
    return path;
}

QPainterPath ShapeDrawable::roundedRectangle(const QRectF &rect) const
{
    // When corners would overlap, all shrink by the same factor.
    qreal factor = 1;
    const auto fit = [&](Corner first, Corner second, qreal side) {
        const qreal sum = m_radii[first] + m_radii[second];
        if (sum > side)
            factor = qMin(factor, side / sum);
    };
    fit(TopLeft, TopRight, rect.width());
    fit(BottomLeft, BottomRight, rect.width());
    fit(TopLeft, BottomLeft, rect.height());
    fit(TopRight, BottomRight, rect.height());

    QPainterPath path;
    const auto corner = [&](Corner which, qreal x, qreal y, qreal startAngle) {
        constexpr qreal Quarter = 90;
        const qreal radius = m_radii[which] * factor;
        const qreal left = x - (which == TopRight || which == BottomRight ? 2 * radius : 0);
        const qreal top = y - (which == BottomLeft || which == BottomRight ? 2 * radius : 0);
        const QRectF circle(left, top, 2 * radius, 2 * radius);
        if (which == TopLeft)
            path.arcMoveTo(circle, startAngle);
        if (radius > 0)
            path.arcTo(circle, startAngle, -Quarter);
        else if (which != TopLeft)
            path.lineTo(x, y);
        else
            path.moveTo(x, y);
    };
    corner(TopLeft, rect.left(), rect.top(), 180);
    corner(TopRight, rect.right(), rect.top(), 90);
    corner(BottomRight, rect.right(), rect.bottom(), 0);
    corner(BottomLeft, rect.left(), rect.bottom(), 270);
    path.closeSubpath();
    return path;
}

QPainterPath ShapeDrawable::ring(const QRectF &rect) const
{
    const qreal inner = m_innerRadius.of(rect.width());
    const qreal outer = inner + m_thickness.of(rect.width());
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    path.addEllipse(rect.center(), outer, outer);
    path.addEllipse(rect.center(), inner, inner);
    return path;
}

qreal ShapeDrawable::Stroke::dashCount(qreal length) const
{
    const qreal shortest = qMax(MinDashPixels, width * MinDashWidths);
    const bool hasGaps = dash > 0 && gap > 0 && dash < length && period() >= shortest && width <= MaxDashedWidth;
    const qreal count = hasGaps ? length / period() : 0;
    return count <= MaxDashes ? count : 0;
}

void ShapeDrawable::paintStroke(Canvas &canvas, const QPainterPath &path, qreal length) const
{
    if (m_stroke.width <= 0 || m_stroke.color.alpha() == 0)
        return;
    QPen pen(m_stroke.color, m_stroke.width, Qt::SolidLine, Qt::FlatCap, Qt::SvgMiterJoin);
    const qreal dashes = m_stroke.dashCount(length);
    if (dashes > 0)
        pen.setDashPattern({m_stroke.dash / m_stroke.width, m_stroke.gap / m_stroke.width});
    const qreal work = dashes * DashWork * (1 + m_stroke.width / DashWorkWidth);
    if (canvas.spendPasses() && canvas.spendWork(qint64(work)))
        canvas.painter().strokePath(path, pen);
}

} // namespace SorrelKit
