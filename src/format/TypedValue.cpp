// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/TypedValue.h"

#include <cmath>
#include <cstring>

namespace {

// A dimension or fraction: a signed mantissa of 24 bits from bit 8 on, the position of its point in bits 4 and 5, and
// the unit in bits 0 to 3.
qreal complexNumber(quint32 data)
{
    constexpr int MantissaBits[] = {0, 7, 15, 23};
    const qint32 mantissa = qint32(data & 0xffffff00) / 256;
    return std::ldexp(qreal(mantissa), -MantissaBits[data >> 4 & 3]);
}

std::optional<qreal> pixelsPerUnit(quint32 data, qreal pixelsPerDp)
{
    enum Unit : quint32 {
        Px,
        Dp,
        Sp,
        Pt,
        In,
        Mm,
    };
    constexpr qreal DpPerInch = 160;
    constexpr qreal PtPerInch = 72;
    constexpr qreal MmPerInch = 25.4;
    switch (data & 0xf) {
    case Px:
        return 1;
    case Dp:
    case Sp:
        return pixelsPerDp;
    case Pt:
        return pixelsPerDp * DpPerInch / PtPerInch;
    case In:
        return pixelsPerDp * DpPerInch;
    case Mm:
        return pixelsPerDp * DpPerInch / MmPerInch;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<qint32> TypedValue::integer() const
{
    if (type < ValueType::FirstInteger || type > ValueType::LastInteger)
        return std::nullopt;
    return type == ValueType::Boolean ? qint32(data != 0) : qint32(data);
}

std::optional<bool> TypedValue::boolean() const
{
    const auto value = integer();
    return value ? std::optional<bool>(*value != 0) : std::nullopt;
}

std::optional<qreal> TypedValue::number() const
{
    if (type == ValueType::Float) {
        float value = 0;
        static_assert(sizeof value == sizeof data, "a float has 32 bits");
        std::memcpy(&value, &data, sizeof value);
        return std::isfinite(value) ? std::optional<qreal>(value) : std::nullopt;
    }
    const auto value = integer();
    return value && !isColor() ? std::optional<qreal>(*value) : std::nullopt;
}

std::optional<qreal> TypedValue::pixels(qreal pixelsPerDp) const
{
    if (type != ValueType::Dimension)
        return number();
    const auto unit = pixelsPerUnit(data, pixelsPerDp);
    return unit ? std::optional<qreal>(complexNumber(data) * *unit) : std::nullopt;
}

std::optional<qreal> TypedValue::fraction(qreal base) const
{
    return type == ValueType::Fraction ? std::optional<qreal>(complexNumber(data) * base) : std::nullopt;
}

std::optional<quint32> TypedValue::argb() const
{
    return isColor() ? std::optional<quint32>(data) : std::nullopt;
}

QString TypedValue::plainText() const
{
    if (type == ValueType::Boolean)
        return data != 0 ? QStringLiteral("true") : QStringLiteral("false");
    const auto whole = integer();
    if (whole && !isColor())
        return QString::number(*whole);
    const auto value = number();
    return value ? QString::number(*value) : QString();
}
