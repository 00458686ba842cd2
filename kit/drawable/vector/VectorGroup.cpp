// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/vector/VectorGroup.h"

#include "drawable/paint/PathPainter.h"
#include "drawable/source/DrawableAttributes.h"

#include <cmath>

namespace SorrelKit {

namespace {

QTransform transformOf(const DrawableAttributes &attributes)
{
    constexpr qreal FullTurn = 360;
    const QPointF pivot(attributes.number(Attr::PivotX, 0), attributes.number(Attr::PivotY, 0));
    const QPointF moved =
        pivot + QPointF(attributes.number(Attr::TranslateX, 0), attributes.number(Attr::TranslateY, 0));
    QTransform turn;
    turn.rotate(std::fmod(attributes.number(Attr::Rotation, 0), FullTurn));
    return QTransform::fromTranslate(-pivot.x(), -pivot.y())
           * QTransform::fromScale(attributes.number(Attr::ScaleX, 1), attributes.number(Attr::ScaleY, 1)) * turn
           * QTransform::fromTranslate(moved.x(), moved.y());
}

} // namespace

VectorGroup::VectorGroup(const XmlElement &element, DrawableLoader &loader, int depth)
{
    if (element.name == QLatin1String("group"))
        m_transform = transformOf(DrawableAttributes(element, loader));
    for (const XmlElement &child : element.children) {
        if (!loader.spendElement())
            return;
        add(child, loader, depth);
    }
}

// Other elements are not visible.
void VectorGroup::add(const XmlElement &element, DrawableLoader &loader, int depth)
{
    if (element.name == QLatin1String("path")) {
        if (auto path = VectorPath::fromXml(element, loader))
            m_children.emplace_back(*std::move(path));
    } else if (element.name == QLatin1String("clip-path")) {
        QPainterPath path = VectorPath::pathData(element, loader);
        path.setFillRule(Qt::WindingFill);
        m_children.emplace_back(ClipPath{path});
    } else if (element.name == QLatin1String("group")) {
        if (depth < MaxDepth) {
            auto group = std::make_unique<const VectorGroup>(element, loader, depth + 1);
            if (!group->isEmpty())
                m_children.emplace_back(std::move(group));
        } else {
            loader.setError(DrawableFault::GroupsTooDeep);
        }
    }
}

void VectorGroup::draw(PathPainter *painter, const QTransform &transform) const
{
    drawFrom(0, painter, m_transform * transform);
}

// Recurses once for each run of clip paths. Canvas::MaxLayers ends the recursion.
void VectorGroup::drawFrom(size_t first, PathPainter *painter, const QTransform &transform) const
{
    QVector<PathPainter::Mask> masks;
    for (size_t i = first; i < m_children.size(); ++i) {
        const Child &child = m_children[i];
        if (const auto *const clip = std::get_if<ClipPath>(&child)) {
            masks.append({clip->path, transform});
        } else if (!masks.isEmpty()) {
            painter->paintMasked(masks, [&]() { drawFrom(i, painter, transform); });
            return;
        } else if (const auto *const path = std::get_if<VectorPath>(&child)) {
            path->draw(painter, transform);
        } else {
            std::get<std::unique_ptr<const VectorGroup>>(child)->draw(painter, transform);
        }
    }
}

} // namespace SorrelKit
