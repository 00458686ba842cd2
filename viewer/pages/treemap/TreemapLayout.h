// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_TREEMAPLAYOUT_H
#define VIEWER_TREEMAPLAYOUT_H

#include <QRectF>
#include <QVector>

namespace Viewer {

/**
 * Rectangles that fill a place, with areas in proportion to sizes, and as square as they can be without a search: a
 * squarified treemap. Sizes are put into a row along the shorter side of the rest of the place, as long as the worst
 * proportion in the row becomes better; then the next row begins.
 *
 * Takes at most two steps for each size, and no step depends on their number.
 */
class TreemapLayout
{
public:
    /// The layout of @p sizes, in descending order, in @p place.
    /// Precondition: each size is 0 or more, and their sum fits into 63 bits.
    TreemapLayout(const QVector<qint64> &sizes, const QRectF &place);

    /// One for each size, in the same order; a null rectangle for a size of 0, and for all when the place is empty.
    const QVector<QRectF> &rects() const { return m_rects; }
    /// How often the proportions of a row were looked at.
    qint64 steps() const { return m_steps; }

private:
    int rowEnd(const QVector<qint64> &sizes, int begin, double scale, double side);
    void placeRow(const QVector<qint64> &sizes, int begin, int end, double rowSize, double share, QRectF *rest);

    QVector<QRectF> m_rects;
    qint64 m_steps = 0;
};

} // namespace Viewer

#endif
