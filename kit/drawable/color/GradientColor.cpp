// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/color/GradientColor.h"

#include "drawable/paint/PathPainter.h"
#include "drawable/source/DrawableAttributes.h"

namespace SorrelKit {

namespace {

enum Type : int {
    Linear = 0,
    Radial = 1,
    Sweep = 2,
};

QGradient::Spread spread(int tileMode)
{
    switch (tileMode) {
    case 1:
        return QGradient::RepeatSpread;
    case 2:
        return QGradient::ReflectSpread;
    default:
        return QGradient::PadSpread;
    }
}

// Qt allows one colour at an offset. Android allows several and shows the first and the last one. These two get offsets
// that are closer than a gradient is computed.
void append(QGradientStops *stops, qreal offset, const QColor &color)
{
    constexpr qreal Step = 1e-6;
    const int count = int(stops->size());
    if (count > 1 && stops->at(count - 2).first > offset - 2 * Step) {
        stops->last().second = color;
        return;
    }
    if (count > 0 && stops->last().first > offset - Step) {
        stops->last().first = qMin(offset, 1 - Step);
        offset = stops->last().first + Step;
    }
    stops->append({offset, color});
}

QGradientStops itemStops(const XmlElement &element, DrawableLoader &loader)
{
    QGradientStops stops;
    qreal offset = 0;
    int items = 0;
    for (const XmlElement &child : element.children) {
        if (child.name != QLatin1String("item") || ++items > GradientColor::MaxItems)
            continue;
        const DrawableAttributes item(child, loader);
        offset = qBound(offset, item.ratio(Attr::Offset, 0), qreal(1));
        append(&stops, offset, item.color(Attr::Color, Qt::transparent));
    }
    return stops;
}

QGradientStops stopsOf(const XmlElement &element, DrawableLoader &loader)
{
    QGradientStops stops = itemStops(element, loader);
    if (!stops.isEmpty())
        return stops;
    const DrawableAttributes attributes(element, loader);
    stops.append({0, attributes.color(Attr::StartColor, Qt::transparent)});
    if (attributes.has(Attr::CenterColor))
        stops.append({0.5, attributes.color(Attr::CenterColor, Qt::transparent)});
    stops.append({1, attributes.color(Attr::EndColor, Qt::transparent)});
    return stops;
}

// Qt's conical gradient is counter-clockwise.
QGradientStops reversed(const QGradientStops &stops)
{
    QGradientStops result;
    result.reserve(stops.size());
    for (auto stop = stops.crbegin(); stop != stops.crend(); ++stop)
        result.append({1 - stop->first, stop->second});
    return result;
}

} // namespace

std::optional<QBrush> GradientColor::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    const auto coordinate = [&](quint32 id) {
        return qBound(-PathPainter::MaxCoordinate, attributes.pixels(id, 0), PathPainter::MaxCoordinate);
    };
    const QPointF center(coordinate(Attr::CenterX), coordinate(Attr::CenterY));
    const QGradientStops stops = stopsOf(element, loader);
    const auto brush = [&](QGradient gradient) {
        gradient.setSpread(spread(attributes.integer(Attr::TileMode, 0)));
        gradient.setStops(stops);
        return gradient;
    };
    switch (attributes.integer(Attr::Type, Linear)) {
    case Radial: {
        const qreal radius = coordinate(Attr::GradientRadius);
        if (radius > 0)
            return brush(QRadialGradient(center, radius));
        loader.setError(DrawableFault::GradientWithoutRadius);
        return std::nullopt;
    }
    case Sweep: {
        QConicalGradient gradient(center, 0);
        gradient.setStops(reversed(stops));
        return gradient;
    }
    default:
        return brush(QLinearGradient(coordinate(Attr::StartX), coordinate(Attr::StartY), coordinate(Attr::EndX),
                                     coordinate(Attr::EndY)));
    }
}

} // namespace SorrelKit
