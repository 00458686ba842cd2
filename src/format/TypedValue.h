// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TYPEDVALUE_H
#define TYPEDVALUE_H

#include "format/ByteView.h"

#include <QString>

#include <optional>

/// Data types of compiled values (`Res_value`).
enum class ValueType : quint8 {
    Null = 0x00,
    Reference = 0x01,
    Attribute = 0x02, ///< of the theme
    String = 0x03,
    Float = 0x04,
    Dimension = 0x05,
    Fraction = 0x06,
    DynamicReference = 0x07, ///< whose package may be renumbered when the table is loaded; here it is not
    DynamicAttribute = 0x08,
    FirstInteger = 0x10,
    Boolean = 0x12,
    FirstColor = 0x1c,
    LastColor = 0x1f,
    LastInteger = 0x1f,
};

/**
 * A compiled value as it stands in a table or a document, where it takes 8 bytes: size u16, 0, data type u8, data u32.
 * What a value does not hold is answered by nothing, so that callers fall back to a default.
 */
struct TypedValue {
    static constexpr int Size = 8;

    /// The value at @p at in @p bytes; of type Null when it is not there.
    static TypedValue read(const ByteView &bytes, qint64 at)
    {
        return {ValueType(bytes.u8(at + 3)), bytes.u32(at + 4)};
    }

    bool isNull() const { return type == ValueType::Null; }
    /// Whether this refers to the resource with the id `data`.
    bool isReference() const { return type == ValueType::Reference || type == ValueType::DynamicReference; }
    bool isThemeAttribute() const { return type == ValueType::Attribute || type == ValueType::DynamicAttribute; }
    bool isColor() const { return type >= ValueType::FirstColor && type <= ValueType::LastColor; }

    /// A decimal or hexadecimal integer, a boolean (0 or 1), or a colour's data word.
    std::optional<qint32> integer() const;
    std::optional<bool> boolean() const;
    /// A finite number: a float, or an integer.
    std::optional<qreal> number() const;
    /// Pixels at @p pixelsPerDp: dimensions in px, dp, sp (as dp), pt, in and mm; a number is one of pixels.
    std::optional<qreal> pixels(qreal pixelsPerDp) const;
    /// A fraction of @p base: "50%" is 0.5 of it. `%p`, of the parent, is taken for the same.
    std::optional<qreal> fraction(qreal base = 1) const;
    /// A colour as 0xAARRGGBB.
    std::optional<quint32> argb() const;
    /// The text of an integer, a boolean or a float, for a place that takes a text; empty for other types.
    QString plainText() const;

    ValueType type = ValueType::Null;
    quint32 data = 0;
};

#endif
