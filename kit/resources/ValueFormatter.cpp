// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/ValueFormatter.h"

#include <cmath>
#include <cstring>

namespace SorrelKit {

namespace {

QString hexadecimal(quint32 data, int digits)
{
    return QStringLiteral("0x%1").arg(data, digits, 16, QLatin1Char('0'));
}

QString nullText(quint32 data)
{
    return data == 1 ? QStringLiteral("@empty") : QStringLiteral("@null");
}

// The fewest digits that read back as the same number.
QString floatText(quint32 data)
{
    constexpr int MaxDigits = 9;
    float value = 0;
    static_assert(sizeof value == sizeof data, "a float has 32 bits");
    std::memcpy(&value, &data, sizeof value);
    QString text;
    for (int digits = 6; digits <= MaxDigits; ++digits) {
        text = QString::number(double(value), 'g', digits);
        if (!std::isfinite(value) || text.toFloat() == value)
            break;
    }
    return text;
}

// The number of a dimension or fraction, with the fewest decimals that distinguish it from its neighbours.
QString complexText(quint32 data, int factor)
{
    constexpr int MantissaBits[] = {0, 7, 15, 23};
    constexpr int MaxDecimals = 8;
    const int bits = MantissaBits[data >> 4 & 3];
    const qint32 mantissa = qint32(data & 0xffffff00) / 256;
    const double value = factor * std::ldexp(double(mantissa), -bits);
    const double tolerance = factor * std::ldexp(0.5, -bits);
    QString text;
    for (int decimals = 0; decimals <= MaxDecimals; ++decimals) {
        text = QString::number(value, 'f', decimals);
        if (std::abs(text.toDouble() - value) < tolerance)
            break;
    }
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

QString unitText(quint32 data, std::initializer_list<const char *> units)
{
    const quint32 unit = data & 0xf;
    return unit < units.size() ? QLatin1String(units.begin()[unit]) : QStringLiteral("(unit %1)").arg(unit);
}

QString integerText(const TypedValue &value)
{
    constexpr auto Decimal = ValueType::FirstInteger;
    if (value.type == Decimal)
        return QString::number(qint32(value.data));
    if (value.type == ValueType::Boolean)
        return value.data != 0 ? QStringLiteral("true") : QStringLiteral("false");
    if (value.isColor())
        return QStringLiteral("#%1").arg(value.data, 8, 16, QLatin1Char('0'));
    return hexadecimal(value.data, 0);
}

} // namespace

QString ValueFormatter::text(const TypedValue &value, const ResourceTable &table, int maxLength) const
{
    return value.type == ValueType::String ? table.string(value.data, maxLength) : text(value);
}

QString ValueFormatter::text(const TypedValue &value) const
{
    switch (value.type) {
    case ValueType::Null:
        return nullText(value.data);
    case ValueType::Reference:
    case ValueType::DynamicReference:
        return value.data == 0 ? nullText(0) : m_names.reference(value.data, QLatin1Char('@'));
    case ValueType::Attribute:
    case ValueType::DynamicAttribute:
        return m_names.reference(value.data, QLatin1Char('?'));
    case ValueType::Float:
        return floatText(value.data);
    case ValueType::Dimension:
        return complexText(value.data, 1) + unitText(value.data, {"px", "dp", "sp", "pt", "in", "mm"});
    case ValueType::Fraction:
        return complexText(value.data, 100) + unitText(value.data, {"%", "%p"});
    default:
        return value.integer() ? integerText(value) : hexadecimal(value.data, 8);
    }
}

ResourceItem::Type ValueFormatter::type(const TypedValue &value)
{
    using Type = ResourceItem::Type;
    switch (value.type) {
    case ValueType::Null:
        return Type::Null;
    case ValueType::Reference:
    case ValueType::DynamicReference:
        return Type::Reference;
    case ValueType::Attribute:
    case ValueType::DynamicAttribute:
        return Type::Attribute;
    case ValueType::String:
        return Type::String;
    case ValueType::Float:
        return Type::Float;
    case ValueType::Dimension:
        return Type::Dimension;
    case ValueType::Fraction:
        return Type::Fraction;
    case ValueType::Boolean:
        return Type::Boolean;
    default:
        break;
    }
    if (value.isColor())
        return Type::Color;
    return value.integer() ? Type::Integer : Type::Unknown;
}

QString ValueFormatter::typeName(const TypedValue &value)
{
    switch (type(value)) {
    case ResourceItem::Type::Null:
        return QStringLiteral("null");
    case ResourceItem::Type::Reference:
        return QStringLiteral("reference");
    case ResourceItem::Type::Attribute:
        return QStringLiteral("attribute");
    case ResourceItem::Type::String:
        return QStringLiteral("string");
    case ResourceItem::Type::Float:
        return QStringLiteral("float");
    case ResourceItem::Type::Dimension:
        return QStringLiteral("dimension");
    case ResourceItem::Type::Fraction:
        return QStringLiteral("fraction");
    case ResourceItem::Type::Boolean:
        return QStringLiteral("boolean");
    case ResourceItem::Type::Color:
        return QStringLiteral("color");
    case ResourceItem::Type::Integer:
        return QStringLiteral("integer");
    default:
        return QStringLiteral("type %1").arg(hexadecimal(quint32(value.type), 2));
    }
}

QString ValueFormatter::itemName(const EntryView &map, quint32 name) const
{
    constexpr quint32 FirstWord = 0x01000000;
    constexpr quint32 FirstIndex = 0x02000000;
    constexpr quint32 OtherFirstIndex = 0x01000001;
    constexpr quint32 MaxIndex = 0xffff;
    constexpr const char *Words[] = {"type", "min", "max", "l10n", "other", "zero", "one", "two", "few", "many"};
    const quint32 firstIndex = map.item(0).name == OtherFirstIndex ? OtherFirstIndex : FirstIndex;
    if (name >= firstIndex && name - firstIndex <= MaxIndex)
        return QString::number(name - firstIndex);
    if (name >= FirstWord && name - FirstWord < sizeof Words / sizeof *Words)
        return QLatin1String(Words[name - FirstWord]);
    const QString attribute = m_names.name(name);
    return attribute.isEmpty() ? hexadecimal(name, 8) : attribute;
}

} // namespace SorrelKit
