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
 * The element `group` of a vector, or the vector itself: elements `path`, `clip-path` and `group`, painted one after
 * another. A clip path holds for what follows it in its group, and several hold together.
 *
 * A group is scaled, then turned clockwise, both around its pivot, and then moved.
 */
class VectorGroup
{
public:
    /// Groups within each other at most; what is deeper is left out, with an error.
    static constexpr int MaxDepth = 64;

    /// The group that @p element is, within @p depth others.
    VectorGroup(const XmlElement &element, DrawableLoader &loader, int depth = 0);

    bool isEmpty() const { return m_children.empty(); }
    /// Paints with @p transform, which leads to the coordinates of the vector.
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
