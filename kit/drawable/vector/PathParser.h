// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHPARSER_H
#define SORRELKIT_PATHPARSER_H

#include "drawable/source/DrawableError.h"
#include "drawable/vector/PathLexer.h"
#include "limits/Budget.h"

#include <QPainterPath>
#include <QString>

namespace SorrelKit {

/**
 * Reads path data: letters for commands, each followed by one or more sets of numbers. The numbers of an upper-case
 * letter are coordinates. The numbers of a lower-case letter are relative to the start of the command.
 *
 *     M x y                move; further pairs are lines
 *     L x y, H x, V y      line
 *     C x1 y1 x2 y2 x y    cubic curve; S x2 y2 x y mirrors the second control point of the previous curve
 *     Q x1 y1 x y          quadratic curve; T x y mirrors the control point of the previous curve
 *     A rx ry angle large sweep x y    arc of an ellipse; the two flags, 0 or 1, need no separator
 *     Z                    closes the figure; the next figure begins at the start of this one
 *
 * PathLexer separates them. A path without an M at its start begins at the origin. A figure of one point becomes a tiny line, so that it has line caps.
 *
 * Meets raw input. The part before a fault is kept.
 */
class PathParser
{
public:
    /// The work for a character and for a segment, and the bytes of a segment. A curve of 27 characters takes about 1
    /// µs.
    static constexpr qint64 CharacterWork = 8;
    static constexpr qint64 SegmentWork = 16;
    static constexpr qint64 SegmentBytes = 72;

    /// Reads @p data. A segment that does not fit in @p budget is a fault. Its bytes stay held.
    PathParser(const QString &data, Budget &budget);

    /// The path, of straight lines and cubic curves. The caller sets its fill rule.
    const QPainterPath &path() const { return m_path; }
    /// The fault in the data, with its offset as detail; no error when there is none.
    const DrawableError &error() const { return m_error; }

private:
    void read();
    void apply(char16_t letter, const qreal *numbers);
    bool spendSegment();
    void setFault(DrawableFault fault);

    void moveTo(QPointF point);
    void lineTo(QPointF point);
    void curveTo(QPointF control1, QPointF control2, QPointF point);
    void quadTo(QPointF control, QPointF point);
    void arcTo(qreal radiusX, qreal radiusY, qreal angle, bool isLarge, bool isClockwise, QPointF point);
    void close();
    void makeDot();

    PathLexer m_lexer;
    Budget &m_budget;
    DrawableError m_error;
    QPainterPath m_path;
    QPointF m_point; ///< the current point
    QPointF m_start; ///< the start of the figure
    /// Last control point of the previous command if it was a cubic or a quadratic curve, else the current point.
    QPointF m_cubicControl;
    QPointF m_quadControl;
    bool m_isOpen = false; ///< whether the figure has begun
};

} // namespace SorrelKit

#endif
