// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ANIMATEDVECTOR_H
#define SORRELKIT_ANIMATEDVECTOR_H

#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * The element `animated-vector`: a vector, its attribute `android:drawable` or its element `vector`, and what animates
 * it. It is drawn as it stands before anything moves.
 */
class AnimatedVector
{
public:
    /// The vector; null, with an error, when there is none.
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);
};

} // namespace SorrelKit

#endif
