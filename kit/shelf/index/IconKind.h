// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONKIND_H
#define SORRELKIT_ICONKIND_H

#include <SorrelKit/ShelfIcon.h>

#include <QByteArray>
#include <QList>

namespace SorrelKit {

/// Kinds of icons as numbers of the index, and as words of WorkerOrder::launcherIcons.
namespace IconKind {

/// The number of @p icon: the size, and bits from 16 on for the shape, from 24 on for the modes.
inline qint64 number(const ShelfIcon &icon)
{
    constexpr int shapeShift = 16;
    constexpr qint64 nightBit = 1 << 24;
    constexpr qint64 monochromeBit = 1 << 25;
    return qint64(icon.size()) | (qint64(icon.shape()) << shapeShift) | (icon.isNight() ? nightBit : 0)
           | (icon.isMonochrome() ? monochromeBit : 0);
}

/// "SIZE:MASK:NIGHT:MONOCHROME".
inline QByteArray word(const ShelfIcon &icon)
{
    return QByteArray::number(icon.size()) + ':' + QByteArray::number(int(icon.shape()))
           + (icon.isNight() ? ":1" : ":0") + (icon.isMonochrome() ? ":1" : ":0");
}

/// The number of the kind with the word @p word.
inline qint64 numberOfWord(const QByteArray &word)
{
    const QList<QByteArray> parts = word.split(':');
    constexpr int count = 4;
    if (parts.size() != count)
        return 0;
    ShelfIcon icon(parts.at(0).toInt());
    icon.setShape(ShelfIcon::Shape(parts.at(1).toInt()));
    icon.setNight(parts.at(2) == "1");
    icon.setMonochrome(parts.at(3) == "1");
    return number(icon);
}

/// Whether an icon of this kind can be drawn.
inline bool isValid(const ShelfIcon &icon)
{
    return icon.size() >= 1 && icon.size() <= ShelfIcon::MaxSize && icon.shape() >= ShelfIcon::Shape::None
           && icon.shape() <= ShelfIcon::Shape::Squircle;
}

} // namespace IconKind

} // namespace SorrelKit

#endif
