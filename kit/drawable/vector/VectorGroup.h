// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_VECTORGROUP_H
#define SORRELKIT_VECTORGROUP_H

#include "drawable/vector/VectorPath.h"

#include <QTransform>

#include <memory>
#include <variant>
#include <vector>

namespace SorrelKit {

/**
 * The element `group` of a vector, or the vector itself: elements `path`, `clip-path` and `group`, painted in order. A
 * clip path cuts the elements after it in its group. Several clip paths cut to their intersection.
 *
 * A group is scaled, then rotated clockwise, both around its pivot, and then translated.
 */
class VectorGroup
{
public:
    /// Groups within each other at most. Deeper groups are left out, with an error.
    static constexpr int MaxDepth = 64;

    /// Reads @p element, a group within @p depth other groups.
    VectorGroup(const XmlElement &element, DrawableLoader &loader, int depth = 0);

    bool isEmpty() const { return m_children.empty(); }
    /// Paints the group. @p transform maps it to the coordinates of the vector.
    void draw(PathPainter *painter, const QTransform &transform = QTransform()) const;

private:
    struct ClipPath {
        QPainterPath path;
    };
    using Child = std::variant<VectorPath, ClipPath, std::unique_ptr<const VectorGroup>>;

    void add(const XmlElement &element, DrawableLoader &loader, int depth);
    void drawFrom(size_t first, PathPainter *painter, const QTransform &transform) const;

    QTransform m_transform;
    std::vector<Child> m_children;
};

} // namespace SorrelKit

#endif
