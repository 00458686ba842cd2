// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/vector/AnimatedVector.h"

#include "drawable/source/DrawableLoader.h"
#include "format/AndroidAttributes.h"

namespace SorrelKit {

DrawablePointer AnimatedVector::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    if (const XmlAttribute *const drawable = element.attribute(Attr::Drawable))
        return loader.fromValue(loader.resolved(drawable));
    for (const XmlElement &child : element.children) {
        if (child.name == QLatin1String("vector"))
            return loader.fromElement(child);
    }
    loader.setError(DrawableFault::AnimationWithoutVector);
    return nullptr;
}

} // namespace SorrelKit
