// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_VECTORPATH_H
#define SORRELKIT_VECTORPATH_H

#include <QBrush>
#include <QPainterPath>
#include <QPen>

#include <optional>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;
class PathPainter;

/**
 * The element `path` of a vector: path data that is filled, then stroked. The transformations of groups apply to the
 * stroke, too. Its width grows and shrinks with them, and varies along the path when the two factors differ, as on
 * Android since version 8. A stroke of width 0 is one pixel wide.
 */
class VectorPath
{
public:
    /// The path; nothing when it is not visible. Damaged data is used up to the fault, with an error.
    static std::optional<VectorPath> fromXml(const XmlElement &element, DrawableLoader &loader);
    /// The path data of @p element, a path or a clip path.
    static QPainterPath pathData(const XmlElement &element, DrawableLoader &loader);

    /// Paints the path. @p transform maps it to the coordinates of the vector.
    void draw(PathPainter *painter, const QTransform &transform) const;

private:
    VectorPath() = default;

    QPainterPath m_path;
    QBrush m_fill;
    qreal m_fillAlpha = 1;
    QPen m_stroke;
    qreal m_strokeAlpha = 1;
};

} // namespace SorrelKit

#endif
