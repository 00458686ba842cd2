// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHPARSER_H
#define SORRELKIT_PATHPARSER_H

#include "drawable/source/DrawableError.h"
#include "format/Budget.h"

#include <QPainterPath>
#include <QString>

namespace SorrelKit {

/**
 * Reads path data: letters for commands, each followed by its numbers, and by as many more sets of numbers as there are.
 * An upper-case letter's numbers are coordinates, a lower-case one's are relative to where the command begins.
 *
 *     M x y                move; what follows a first pair are lines
 *     L x y, H x, V y      line
 *     C x1 y1 x2 y2 x y    cubic curve; S x2 y2 x y has its first control point opposite of the last curve's second
 *     Q x1 y1 x y          quadratic curve; T x y has its control point opposite of the last curve's
 *     A rx ry angle large sweep x y    arc of an ellipse; the two flags, 0 or 1, need nothing to separate them
 *     Z                    closes the figure; what follows begins where that did
 *
 * Numbers are separated by white space and commas, which may be left out where a sign or a second point begins a number.
 * A path that begins with another command than M starts at the origin. A figure of one point is a line too short to be
 * seen, so that it has line caps.
 *
 * Meets raw input. What stands before a fault is kept.
 */
class PathParser
{
public:
    /// The cost of a character, of a segment, and the bytes of a segment. A curve of 27 characters takes about 1 µs.
    static constexpr qint64 CharacterWork = 8;
    static constexpr qint64 SegmentWork = 16;
    static constexpr qint64 SegmentBytes = 72;

    /// Reads @p data. A segment that does not fit in @p budget is a fault. Its bytes stay held.
    PathParser(const QString &data, Budget &budget);

    /// Of straight lines and cubic curves. The fill rule is the caller's to set.
    const QPainterPath &path() const { return m_path; }
    /// The fault in the data, with its offset as detail; no error when there is none.
    const DrawableError &error() const { return m_error; }

private:
    void read();
    bool readCommand(char16_t letter);
    void apply(char16_t letter, const qreal *numbers);
    void skipSeparators();
    bool isAtNumber() const;
    bool readNumber(qreal *number);
    bool readFlag(qreal *flag);
    bool spendSegment();
    void setFault(DrawableFault fault);

    void moveTo(QPointF point);
    void lineTo(QPointF point);
    void curveTo(QPointF control1, QPointF control2, QPointF point);
    void quadTo(QPointF control, QPointF point);
    void arcTo(qreal radiusX, qreal radiusY, qreal angle, bool isLarge, bool isClockwise, QPointF point);
    void close();
    void makeDot();

    const QString m_data;
    Budget &m_budget;
    int m_at = 0; ///< in the data
    DrawableError m_error;
    QPainterPath m_path;
    QPointF m_point; ///< where the path is
    QPointF m_start; ///< of the figure
    /// Last control point of the command before, when that was a cubic or a quadratic curve; else where the path is.
    QPointF m_cubicControl;
    QPointF m_quadControl;
    bool m_isOpen = false; ///< whether the figure has begun
};

} // namespace SorrelKit

#endif
