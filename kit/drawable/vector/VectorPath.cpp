// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/vector/VectorPath.h"

#include "drawable/paint/PathPainter.h"
#include "drawable/source/DrawableAttributes.h"
#include "drawable/vector/PathParser.h"
#include "drawable/vector/PathTrim.h"

namespace SorrelKit {

namespace {

Qt::PenCapStyle cap(int lineCap)
{
    switch (lineCap) {
    case 1:
        return Qt::RoundCap;
    case 2:
        return Qt::SquareCap;
    default:
        return Qt::FlatCap;
    }
}

Qt::PenJoinStyle join(int lineJoin)
{
    switch (lineJoin) {
    case 1:
        return Qt::RoundJoin;
    case 2:
        return Qt::BevelJoin;
    default:
        return Qt::SvgMiterJoin;
    }
}

QBrush colorOf(quint32 id, const DrawableAttributes &attributes, DrawableLoader &loader)
{
    const QBrush brush = attributes.brush(id, QBrush());
    if (attributes.has(id) && brush.style() == Qt::NoBrush)
        loader.setError(DrawableFault::PathWithoutColor);
    return brush;
}

QPen strokeOf(const DrawableAttributes &attributes, DrawableLoader &loader)
{
    constexpr qreal DefaultMiterLimit = 4;
    const qreal width = attributes.pixels(Attr::StrokeWidth, 0);
    const QBrush brush = colorOf(Attr::StrokeColor, attributes, loader);
    if (brush.style() == Qt::NoBrush || width < 0)
        return Qt::NoPen;
    QPen pen(brush, qMin(width, PathPainter::MaxCoordinate));
    pen.setCapStyle(cap(attributes.integer(Attr::StrokeLineCap, 0)));
    pen.setJoinStyle(join(attributes.integer(Attr::StrokeLineJoin, 0)));
    pen.setMiterLimit(
        qBound(qreal(1), attributes.number(Attr::StrokeMiterLimit, DefaultMiterLimit), PathPainter::MaxCoordinate));
    return pen;
}

} // namespace

std::optional<VectorPath> VectorPath::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    constexpr int EvenOdd = 1;
    const DrawableAttributes attributes(element, loader);
    VectorPath path;
    path.m_fill = colorOf(Attr::FillColor, attributes, loader);
    path.m_stroke = strokeOf(attributes, loader);
    if (path.m_fill.style() == Qt::NoBrush && path.m_stroke.style() == Qt::NoPen)
        return std::nullopt;
    path.m_fillAlpha = attributes.alpha(Attr::FillAlpha);
    path.m_strokeAlpha = attributes.alpha(Attr::StrokeAlpha);
    const PathTrim trim(attributes.number(Attr::TrimPathStart, 0), attributes.number(Attr::TrimPathEnd, 1),
                        attributes.number(Attr::TrimPathOffset, 0));
    path.m_path = pathData(element, loader);
    if (!trim.isNone()) {
        if (loader.budget().spendWork(qint64(path.m_path.elementCount()) * PathTrim::ElementWork))
            path.m_path = trim.trimmed(path.m_path);
        else
            loader.setError(DrawableFault::TooMuchDrawing);
    }
    if (path.m_path.isEmpty())
        return std::nullopt;
    path.m_path.setFillRule(attributes.integer(Attr::FillType, 0) == EvenOdd ? Qt::OddEvenFill : Qt::WindingFill);
    if (path.m_stroke.style() != Qt::NoPen && path.m_path.elementCount() > PathPainter::MaxStrokedElements)
        loader.setError(DrawableFault::StrokeTooLong);
    return path;
}

QPainterPath VectorPath::pathData(const XmlElement &element, DrawableLoader &loader)
{
    const QString data = DrawableAttributes(element, loader).text(Attr::PathData);
    const PathParser parser(data, loader.budget());
    if (parser.error())
        loader.setError(parser.error().fault, parser.error().detail);
    return parser.path();
}

void VectorPath::draw(PathPainter *painter, const QTransform &transform) const
{
    painter->fill(m_path, transform, m_fill, m_fillAlpha);
    if (m_stroke.style() != Qt::NoPen)
        painter->stroke(m_path, transform, m_stroke, m_strokeAlpha);
}

} // namespace SorrelKit
