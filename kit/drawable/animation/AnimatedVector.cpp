// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/animation/AnimatedVector.h"

#include "drawable/animation/VectorAnimation.h"
#include "format/AndroidAttributes.h"

namespace SorrelKit {

DrawablePointer AnimatedVector::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    AnimationClock *const clock = loader.clock();
    const auto animate = [&](XmlElement *vector) {
        if (clock == nullptr)
            return;
        VectorAnimation animation(element, loader);
        animation.apply(vector, clock->time());
        animation.noteOn(clock);
    };
    if (const XmlAttribute *const drawable = element.attribute(Attr::Drawable))
        return loader.fromValue(loader.resolved(drawable), animate);
    for (const XmlElement &child : element.children) {
        if (child.name == QLatin1String("vector")) {
            XmlElement vector = child;
            animate(&vector);
            return loader.fromElement(vector);
        }
    }
    loader.setError(DrawableFault::AnimationWithoutVector);
    return nullptr;
}

} // namespace SorrelKit
