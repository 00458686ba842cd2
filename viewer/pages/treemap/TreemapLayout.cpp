// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/treemap/TreemapLayout.h"

#include <algorithm>

namespace Viewer {

namespace {

// The worst proportion in a row with the areas from `least` to `most`, along a side.
double worstProportion(double least, double most, double sum, double side)
{
    const double square = side * side;
    return std::max(square * most / (sum * sum), sum * sum / (square * least));
}

} // namespace

TreemapLayout::TreemapLayout(const QVector<qint64> &sizes, const QRectF &place) : m_rects(sizes.size())
{
    const int count = int(std::find(sizes.begin(), sizes.end(), 0) - sizes.begin());
    qint64 restSize = 0;
    for (int i = 0; i < count; ++i)
        restSize += sizes.at(i);
    QRectF rest = place;
    for (int begin = 0; begin < count && rest.width() > 0 && rest.height() > 0;) {
        // From the rest of the place, so that errors of rounding do not add up.
        const double scale = rest.width() * rest.height() / double(restSize);
        const int end = rowEnd(sizes, begin, scale, std::min(rest.width(), rest.height()));
        qint64 rowSize = 0;
        for (int i = begin; i < end; ++i)
            rowSize += sizes.at(i);
        placeRow(sizes, begin, end, double(rowSize), double(rowSize) / double(restSize), &rest);
        restSize -= rowSize;
        begin = end;
    }
}

int TreemapLayout::rowEnd(const QVector<qint64> &sizes, int begin, double scale, double side)
{
    const double most = double(sizes.at(begin)) * scale;
    double sum = most;
    double worst = worstProportion(most, most, sum, side);
    int end = begin + 1;
    ++m_steps;
    for (; end < int(sizes.size()) && sizes.at(end) > 0; ++end) {
        ++m_steps;
        const double least = double(sizes.at(end)) * scale;
        const double next = worstProportion(least, most, sum + least, side);
        if (next > worst)
            break;
        sum += least;
        worst = next;
    }
    return end;
}

void TreemapLayout::placeRow(const QVector<qint64> &sizes, int begin, int end, double rowSize, double share,
                             QRectF *rest)
{
    const bool isColumn = rest->width() >= rest->height();
    const double side = isColumn ? rest->height() : rest->width();
    const double depth = share * (isColumn ? rest->width() : rest->height());
    double passed = 0;
    for (int i = begin; i < end; ++i) {
        const double from = side * passed / rowSize;
        passed += double(sizes.at(i));
        const double to = side * passed / rowSize;
        m_rects[i] = isColumn ? QRectF(rest->left(), rest->top() + from, depth, to - from)
                              : QRectF(rest->left() + from, rest->top(), to - from, depth);
    }
    if (isColumn)
        rest->setLeft(rest->left() + depth);
    else
        rest->setTop(rest->top() + depth);
}

} // namespace Viewer
