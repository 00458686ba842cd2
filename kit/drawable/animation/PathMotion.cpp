// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/animation/PathMotion.h"

#include "drawable/animation/AnimatedProperty.h"
#include "drawable/source/DrawableAttributes.h"
#include "drawable/vector/PathTrim.h"
#include "drawable/vector/VectorPath.h"

namespace SorrelKit {

namespace {

QPointF pointOnPath(const QPainterPath &path, qreal fraction)
{
    if (fraction <= 0)
        return path.elementAt(0);
    const QPainterPath passed = fraction < 1 ? PathTrim(0, fraction, 0).trimmed(path) : path;
    return passed.isEmpty() ? QPointF(path.elementAt(0)) : passed.currentPosition();
}

} // namespace

bool PathMotion::isIn(const XmlElement &animator)
{
    return animator.attribute(Attr::PathData) != nullptr
           && (animator.attribute(Attr::PropertyXName) != nullptr
               || animator.attribute(Attr::PropertyYName) != nullptr);
}

void PathMotion::apply(const XmlElement &animator, qreal fraction, XmlElement *part, DrawableLoader &loader)
{
    const QPainterPath path = VectorPath::pathData(animator, loader);
    if (path.isEmpty())
        return;
    if (!loader.budget().spendWork(qint64(path.elementCount()) * PathTrim::ElementWork)) {
        loader.setError(DrawableFault::TooMuchDrawing);
        return;
    }
    const QPointF point = pointOnPath(path, fraction);
    const DrawableAttributes attributes(animator, loader);
    const auto set = [&](quint32 nameId, qreal value) {
        const auto property = AnimatedProperty::named(attributes.text(nameId));
        if (property && property->isNumber())
            property->set(part, value);
    };
    set(Attr::PropertyXName, point.x());
    set(Attr::PropertyYName, point.y());
}

} // namespace SorrelKit
