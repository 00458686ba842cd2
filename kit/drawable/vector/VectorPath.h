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
 * The element `path` of a vector: path data that is filled, then stroked. A stroke goes through the transformations of
 * the groups that it is in as the path does, so that it is wider or narrower with them, and not the same all around when
 * they scale by different factors; Android has it so since version 8. A stroke whose width is 0 is one pixel wide.
 */
class VectorPath
{
public:
    /// The path; nothing when there is none to be seen. Data that is damaged counts up to the fault, with an error.
    static std::optional<VectorPath> fromXml(const XmlElement &element, DrawableLoader &loader);
    /// The path data of @p element, an element of a vector.
    static QPainterPath pathData(const XmlElement &element, DrawableLoader &loader);

    /// Paints with @p transform, which leads to the coordinates of the vector.
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
