// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ANIMATEDPROPERTY_H
#define SORRELKIT_ANIMATEDPROPERTY_H

#include <QColor>
#include <QString>

#include <optional>
#include <variant>

struct XmlAttribute;
struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/// A property of a part of a vector that animations change: an attribute of the same name. Numbers are
/// `alpha`, `fillAlpha`, `strokeAlpha`, `strokeWidth`, `trimPathStart`, `trimPathEnd`, `trimPathOffset`, `rotation`,
/// `pivotX`, `pivotY`, `scaleX`, `scaleY`, `translateX` and `translateY`; colours are `fillColor` and `strokeColor`; and
/// there is `pathData`.
class AnimatedProperty
{
public:
    /// A number, a colour or path data.
    using Value = std::variant<qreal, QColor, QString>;

    /// The property @p name; nothing for an unknown one.
    static std::optional<AnimatedProperty> named(const QString &name);

    /// Whether its values are numbers.
    bool isNumber() const { return m_kind == Kind::Number; }
    /// The value that @p element has.
    Value ofElement(const XmlElement &element, DrawableLoader &loader) const;
    /// The value of @p attribute of a keyframe or an animator; nothing when it has another type.
    std::optional<Value> of(const XmlAttribute *attribute, DrawableLoader &loader) const;
    /// The value @p fraction of the way from @p from to @p to, two values of this property. Colours are mixed as light.
    /// Nothing, with an error, for paths that differ.
    std::optional<Value> between(const Value &from, const Value &to, qreal fraction, DrawableLoader &loader) const;
    /// Changes the attribute of @p element.
    void set(XmlElement *element, const Value &value) const;

private:
    enum class Kind {
        Number,
        Color,
        Path,
    };
    struct Row;

    AnimatedProperty(Kind kind, quint32 attribute, qreal fallback)
        : m_kind(kind), m_attribute(attribute), m_default(fallback)
    {
    }

    Kind m_kind;
    quint32 m_attribute; ///< the id
    qreal m_default;     ///< of a number
};

} // namespace SorrelKit

#endif
