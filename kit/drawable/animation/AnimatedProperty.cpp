// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/animation/AnimatedProperty.h"

#include "drawable/animation/PathMorph.h"
#include "drawable/source/DrawableAttributes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

namespace SorrelKit {

struct AnimatedProperty::Row {
    const char *name;
    Kind kind;
    quint32 attribute;
    qreal fallback;
};

namespace {

qreal mixed(qreal from, qreal to, qreal fraction)
{
    return from + (to - from) * fraction;
}

// A channel of a colour, 0 to 255, with the light of both in proportion.
int mixedLight(int from, int to, qreal fraction)
{
    constexpr qreal Gamma = 2.2;
    constexpr qreal Most = 255;
    const qreal light = mixed(std::pow(from / Most, Gamma), std::pow(to / Most, Gamma), fraction);
    return qRound(Most * std::pow(qBound(qreal(0), light, qreal(1)), 1 / Gamma));
}

QColor mixedColor(const QColor &from, const QColor &to, qreal fraction)
{
    const qreal alpha = mixed(from.alpha(), to.alpha(), fraction);
    return QColor(mixedLight(from.red(), to.red(), fraction), mixedLight(from.green(), to.green(), fraction),
                  mixedLight(from.blue(), to.blue(), fraction), qRound(qBound(qreal(0), alpha, qreal(255))));
}

quint32 floatBits(qreal value)
{
    constexpr qreal Most = 1e30;
    const auto number = float(qBound(-Most, value, Most));
    quint32 bits = 0;
    static_assert(sizeof(bits) == sizeof(number));
    std::memcpy(&bits, &number, sizeof(bits));
    return bits;
}

} // namespace

std::optional<AnimatedProperty> AnimatedProperty::named(const QString &name)
{
    static constexpr Row rows[] = {
        {"alpha", Kind::Number, Attr::Alpha, 1},
        {"fillAlpha", Kind::Number, Attr::FillAlpha, 1},
        {"fillColor", Kind::Color, Attr::FillColor, 0},
        {"pathData", Kind::Path, Attr::PathData, 0},
        {"pivotX", Kind::Number, Attr::PivotX, 0},
        {"pivotY", Kind::Number, Attr::PivotY, 0},
        {"rotation", Kind::Number, Attr::Rotation, 0},
        {"scaleX", Kind::Number, Attr::ScaleX, 1},
        {"scaleY", Kind::Number, Attr::ScaleY, 1},
        {"strokeAlpha", Kind::Number, Attr::StrokeAlpha, 1},
        {"strokeColor", Kind::Color, Attr::StrokeColor, 0},
        {"strokeWidth", Kind::Number, Attr::StrokeWidth, 0},
        {"translateX", Kind::Number, Attr::TranslateX, 0},
        {"translateY", Kind::Number, Attr::TranslateY, 0},
        {"trimPathEnd", Kind::Number, Attr::TrimPathEnd, 1},
        {"trimPathOffset", Kind::Number, Attr::TrimPathOffset, 0},
        {"trimPathStart", Kind::Number, Attr::TrimPathStart, 0},
    };
    const auto *const row = std::find_if(std::begin(rows), std::end(rows),
                                         [&name](const Row &known) { return name == QLatin1String(known.name); });
    if (row == std::end(rows))
        return std::nullopt;
    return AnimatedProperty(row->kind, row->attribute, row->fallback);
}

AnimatedProperty::Value AnimatedProperty::ofElement(const XmlElement &element, DrawableLoader &loader) const
{
    if (const auto value = of(element.attribute(m_attribute), loader))
        return *value;
    switch (m_kind) {
    case Kind::Color:
        return QColor(Qt::transparent);
    case Kind::Path:
        return QString();
    default:
        return m_default;
    }
}

std::optional<AnimatedProperty::Value> AnimatedProperty::of(const XmlAttribute *attribute, DrawableLoader &loader) const
{
    if (attribute == nullptr)
        return std::nullopt;
    const ResolvedValue value = loader.resolved(attribute);
    if (m_kind == Kind::Path)
        return value.text.isEmpty() ? std::nullopt : std::make_optional<Value>(value.text);
    if (m_kind == Kind::Color) {
        const QColor color = loader.color(value, QColor());
        return color.isValid() ? std::make_optional<Value>(color) : std::nullopt;
    }
    const auto number = value.value.pixels(loader.pixelsPerDp());
    return number ? std::make_optional<Value>(*number) : std::nullopt;
}

std::optional<AnimatedProperty::Value> AnimatedProperty::between(const Value &from, const Value &to, qreal fraction,
                                                                 DrawableLoader &loader) const
{
    if (m_kind == Kind::Color)
        return mixedColor(std::get<QColor>(from), std::get<QColor>(to), fraction);
    if (m_kind == Kind::Number)
        return mixed(std::get<qreal>(from), std::get<qreal>(to), fraction);
    const auto path = PathMorph::between(std::get<QString>(from), std::get<QString>(to), fraction, loader);
    return path ? std::make_optional<Value>(*path) : std::nullopt;
}

void AnimatedProperty::set(XmlElement *element, const Value &value) const
{
    XmlAttribute changed;
    changed.id = m_attribute;
    if (m_kind == Kind::Number) {
        changed.value = {ValueType::Float, floatBits(std::get<qreal>(value))};
    } else if (m_kind == Kind::Color) {
        changed.value = {ValueType::ColorArgb8, std::get<QColor>(value).rgba()};
    } else {
        changed.value = {ValueType::String, 0};
        changed.text = std::get<QString>(value);
    }
    const auto isSame = [this](const XmlAttribute &attribute) { return attribute.id == m_attribute; };
    const auto old = std::find_if(element->attributes.begin(), element->attributes.end(), isSame);
    if (old != element->attributes.end())
        *old = changed;
    else
        element->attributes.append(changed);
}

} // namespace SorrelKit
