// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ANIMATEDVECTOR_H
#define SORRELKIT_ANIMATEDVECTOR_H

#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * The element `animated-vector`: a vector (the attribute `android:drawable` or a child `vector`) and its animations
 * (VectorAnimation), at the time of the loader's clock. Without a clock, the vector is drawn as it is before they start.
 */
class AnimatedVector
{
public:
    /// The vector; null, with an error, when it is missing.
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);
};

} // namespace SorrelKit

#endif
