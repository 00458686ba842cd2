// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHTRIM_H
#define SORRELKIT_PATHTRIM_H

#include <QPainterPath>

namespace SorrelKit {

/**
 * The attributes trimPathStart, trimPathEnd and trimPathOffset of a path, in fractions of its length. The part from the
 * start to the end is kept, both moved by the offset. The part beyond the end of the path continues at its start.
 *
 * As on Android, only the first figure with a length is kept, unless nothing is trimmed.
 */
class PathTrim
{
public:
    /// The work of trimmed() for an element of a path. A curve has three elements and takes about 0.8 µs.
    static constexpr int ElementWork = 64;

    PathTrim() = default;
    /// @p start and @p end are clamped to the range from 0 to 1.
    PathTrim(qreal start, qreal end, qreal offset);

    bool isNone() const { return m_start == 0 && m_end == 1; }
    /// The part of @p path that is kept.
    QPainterPath trimmed(const QPainterPath &path) const;

private:
    qreal m_start = 0;
    qreal m_end = 1;
    qreal m_offset = 0;
};

} // namespace SorrelKit

#endif
