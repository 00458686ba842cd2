// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/animation/Interpolator.h"

#include "drawable/source/DrawableAttributes.h"
#include "drawable/vector/VectorPath.h"

#include <QtMath>

#include <cmath>

namespace SorrelKit {

namespace {

constexpr qreal DefaultTension = 2;

qreal anticipated(qreal x, qreal tension)
{
    return x * x * ((tension + 1) * x - tension);
}

qreal bounced(qreal x)
{
    constexpr qreal Stretch = 1.1226;
    x *= Stretch;
    const auto parabola = [x](qreal middle, qreal lowest) { return 8 * (x - middle) * (x - middle) + lowest; };
    if (x < 0.3535)
        return parabola(0, 0);
    if (x < 0.7408)
        return parabola(0.54719, 0.7);
    return x < 0.9644 ? parabola(0.8526, 0.9) : parabola(1.0435, 0.95);
}

// The coordinate of a cubic curve with the coordinates @p p at @p t.
qreal onCurve(const qreal *p, qreal t)
{
    const qreal rest = 1 - t;
    return rest * rest * rest * p[0] + 3 * rest * rest * t * p[1] + 3 * rest * t * t * p[2] + t * t * t * p[3];
}

// The y where a curve, whose x grows, has @p x.
qreal heightOfCurve(const QPainterPath &path, int first, qreal x)
{
    qreal xs[4];
    qreal ys[4];
    for (int i = 0; i < 4; ++i) {
        const QPainterPath::Element point = path.elementAt(first + i);
        xs[i] = point.x;
        ys[i] = point.y;
    }
    qreal low = 0;
    qreal high = 1;
    for (int i = 0; i < Interpolator::Halvings; ++i) {
        const qreal middle = (low + high) / 2;
        (onCurve(xs, middle) < x ? low : high) = middle;
    }
    return onCurve(ys, (low + high) / 2);
}

} // namespace

Interpolator Interpolator::ofElement(const XmlElement &element, DrawableLoader &loader)
{
    const XmlAttribute *const attribute = element.attribute(Attr::Interpolator);
    if (attribute == nullptr || (attribute->value.isReference() && attribute->value.data == 0))
        return {};
    if (const auto known = attribute->value.isReference() ? ofPlatform(attribute->value.data) : std::nullopt)
        return *known;
    const ResolvedValue value = loader.resolved(attribute);
    if (const auto known = ofPlatform(value.resource))
        return *known;
    if (value.text.isEmpty())
        return {};
    const DrawableLoader::Document document = loader.document(value.file());
    return document.root.isNull() ? Interpolator() : fromXml(document.root, loader);
}

std::optional<Interpolator> Interpolator::ofPlatform(quint32 id)
{
    switch (id) {
    case 0x010c0000: // accelerate_quad
    case 0x010a0005: // accelerate_interpolator
        return Interpolator(Kind::Accelerate);
    case 0x010c0001: // decelerate_quad
    case 0x010a0006: // decelerate_interpolator
        return Interpolator(Kind::Decelerate);
    case 0x010c0002: // accelerate_cubic
        return Interpolator(Kind::Accelerate, 1.5);
    case 0x010c0003: // decelerate_cubic
        return Interpolator(Kind::Decelerate, 1.5);
    case 0x010c0004: // accelerate_quint
        return Interpolator(Kind::Accelerate, 2.5);
    case 0x010c0005: // decelerate_quint
        return Interpolator(Kind::Decelerate, 2.5);
    case 0x010c0006: // accelerate_decelerate
    case 0x010a0004: // accelerate_decelerate_interpolator
        return Interpolator();
    case 0x010c0007: // anticipate
    case 0x010a0007: // anticipate_interpolator
        return Interpolator(Kind::Anticipate, DefaultTension);
    case 0x010c0008: // overshoot
    case 0x010a0008: // overshoot_interpolator
        return Interpolator(Kind::Overshoot, DefaultTension);
    case 0x010c0009: // anticipate_overshoot
    case 0x010a0009: // anticipate_overshoot_interpolator
        return Interpolator(Kind::AnticipateOvershoot, 1.5 * DefaultTension);
    case 0x010c000a: // bounce
    case 0x010a000a: // bounce_interpolator
        return Interpolator(Kind::Bounce);
    case 0x010c000b: // linear
    case 0x010a000b: // linear_interpolator
        return Interpolator(Kind::Linear);
    case 0x010c000c: // cycle
    case 0x010a000c: // cycle_interpolator
        return Interpolator(Kind::Cycle);
    case 0x010c000d: // fast_out_slow_in
        return ofCurve({0.4, 0}, {0.2, 1});
    case 0x010c000e: // linear_out_slow_in
        return ofCurve({0, 0}, {0.2, 1});
    case 0x010c000f: // fast_out_linear_in
        return ofCurve({0.4, 0}, {1, 1});
    default:
        return std::nullopt;
    }
}

Interpolator Interpolator::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    const auto is = [&element](const char *name) { return element.name == QLatin1String(name); };
    const qreal tension = attributes.number(Attr::Tension, DefaultTension);
    if (is("linearInterpolator"))
        return Interpolator(Kind::Linear);
    if (is("accelerateInterpolator"))
        return Interpolator(Kind::Accelerate, attributes.number(Attr::Factor, 1));
    if (is("decelerateInterpolator"))
        return Interpolator(Kind::Decelerate, attributes.number(Attr::Factor, 1));
    if (is("anticipateInterpolator"))
        return Interpolator(Kind::Anticipate, tension);
    if (is("overshootInterpolator"))
        return Interpolator(Kind::Overshoot, tension);
    if (is("anticipateOvershootInterpolator"))
        return Interpolator(Kind::AnticipateOvershoot, tension * attributes.number(Attr::ExtraTension, 1.5));
    if (is("bounceInterpolator"))
        return Interpolator(Kind::Bounce);
    if (is("cycleInterpolator"))
        return Interpolator(Kind::Cycle, attributes.number(Attr::Cycles, 1));
    if (is("pathInterpolator"))
        return fromPath(element, loader);
    if (!is("accelerateDecelerateInterpolator"))
        loader.setError(DrawableFault::UnknownInterpolator, element.name);
    return {};
}

Interpolator Interpolator::fromPath(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    if (attributes.has(Attr::PathData)) {
        Interpolator interpolator(Kind::Path);
        interpolator.m_path = VectorPath::pathData(element, loader);
        return interpolator;
    }
    // A quadratic curve has one control point. The cubic one that is the same has two, at two thirds of the way to it.
    const QPointF control1(attributes.number(Attr::ControlX1, 0), attributes.number(Attr::ControlY1, 0));
    if (attributes.has(Attr::ControlX2) && attributes.has(Attr::ControlY2))
        return ofCurve(control1, {attributes.number(Attr::ControlX2, 1), attributes.number(Attr::ControlY2, 1)});
    const QPointF end(1, 1);
    return ofCurve(control1 * 2 / 3, end + (control1 - end) * 2 / 3);
}

Interpolator Interpolator::ofCurve(QPointF control1, QPointF control2)
{
    Interpolator interpolator(Kind::Path);
    interpolator.m_path.cubicTo(control1, control2, {1, 1});
    return interpolator;
}

qreal Interpolator::at(qreal fraction) const
{
    const qreal result = unbounded(fraction);
    return std::isfinite(result) ? qBound(-MaxResult, result, MaxResult) : fraction;
}

qreal Interpolator::unbounded(qreal x) const
{
    switch (m_kind) {
    case Kind::AccelerateDecelerate:
        return (1 - std::cos(x * M_PI)) / 2;
    case Kind::Linear:
        return x;
    case Kind::Accelerate:
        return std::pow(x, 2 * m_factor);
    case Kind::Decelerate:
        return 1 - std::pow(1 - x, 2 * m_factor);
    case Kind::Anticipate:
        return anticipated(x, m_factor);
    case Kind::Overshoot:
        return 1 - anticipated(1 - x, m_factor);
    case Kind::AnticipateOvershoot:
        return x < 0.5 ? anticipated(2 * x, m_factor) / 2 : 1 - anticipated(2 - 2 * x, m_factor) / 2;
    case Kind::Bounce:
        return bounced(x);
    case Kind::Cycle:
        return std::sin(2 * M_PI * m_factor * x);
    case Kind::Path:
        return onPath(x);
    }
    return x;
}

qreal Interpolator::onPath(qreal x) const
{
    if (x <= 0 || x >= 1)
        return x;
    const QPainterPath &path = m_path;
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPainterPath::Element from = path.elementAt(i - 1);
        const bool isCurve = path.elementAt(i).isCurveTo();
        const int last = isCurve ? i + 2 : i;
        const QPainterPath::Element to = path.elementAt(last);
        if (to.x >= x && !to.isMoveTo()) {
            if (isCurve)
                return heightOfCurve(path, i - 1, x);
            return to.x > from.x ? from.y + (to.y - from.y) * (x - from.x) / (to.x - from.x) : to.y;
        }
        i = last;
    }
    return x;
}

} // namespace SorrelKit
