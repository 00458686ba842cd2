// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/Gravity.h"

namespace SorrelKit {

namespace {

enum AxisFlag {
    PullToStart = 2,
    PullToEnd = 4,
    Clip = 8,
};
constexpr int VerticalShift = 4;

struct Range {
    qreal start;
    qreal end;
};

Range placed(int axis, qreal size, const Range &container)
{
    Range range = container;
    switch (axis & (PullToStart | PullToEnd)) {
    case PullToStart:
        range.end = range.start + size;
        break;
    case PullToEnd:
        range.start = range.end - size;
        break;
    case 0:
        range.start += (container.end - container.start - size) / 2;
        range.end = range.start + size;
        break;
    default:
        break;
    }
    if ((axis & Clip) != 0)
        return {qMax(range.start, container.start), qMin(range.end, container.end)};
    return range;
}

} // namespace

int Gravity::absolute(int gravity, bool isRightToLeft)
{
    const bool isRelative = (gravity & Relative) != 0;
    const int pull = gravity & (PullToStart | PullToEnd);
    if (!isRelative || !isRightToLeft || (pull != PullToStart && pull != PullToEnd))
        return gravity & ~Relative;
    return (gravity & ~Relative) ^ (PullToStart | PullToEnd);
}

QRectF Gravity::apply(int gravity, const QSizeF &size, const QRectF &container)
{
    const Range x = placed(gravity, size.width(), {container.left(), container.right()});
    const Range y = placed(gravity >> VerticalShift, size.height(), {container.top(), container.bottom()});
    return {QPointF(x.start, y.start), QPointF(x.end, y.end)};
}

} // namespace SorrelKit
