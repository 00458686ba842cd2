// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TYPEDVALUE_H
#define TYPEDVALUE_H

#include "format/ByteView.h"
#include "format/ResourceTypes.h"

#include <QString>

#include <optional>

/**
 * A compiled value in a table or a document:
 *
 * | offset | width | field                                   |
 * |--------|-------|-----------------------------------------|
 * | 0      | u16   | size of the record, 8                   |
 * | 2      | u8    | reserved, 0                             |
 * | 3      | u8    | type, one of ValueType                  |
 * | 4      | u32   | data, whose meaning depends on the type |
 *
 * A conversion that the type does not have returns std::nullopt, so that callers fall back to a default.
 */
struct TypedValue {
    static constexpr int TypeAt = 3;
    static constexpr int DataAt = 4;
    static constexpr int Size = 8;

    /// The value at @p at in @p bytes; of type Null when it is beyond the end.
    static TypedValue read(const ByteView &bytes, qint64 at)
    {
        return {ValueType(bytes.u8(at + TypeAt)), bytes.u32(at + DataAt)};
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
    /// Pixels at @p pixelsPerDp: dimensions in px, dp, sp (as dp), pt, in and mm; a plain number counts pixels.
    std::optional<qreal> pixels(qreal pixelsPerDp) const;
    /// A fraction of @p base: "50%" is 0.5 x base. Fractions of the parent (`%p`) are handled alike.
    std::optional<qreal> fraction(qreal base = 1) const;
    /// A colour as 0xAARRGGBB.
    std::optional<quint32> argb() const;
    /// The text of an integer, a boolean or a float; empty for other types.
    QString plainText() const;

    ValueType type = ValueType::Null;
    quint32 data = 0;
};

#endif
