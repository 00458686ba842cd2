// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_GRADIENTCOLOR_H
#define SORRELKIT_GRADIENTCOLOR_H

#include <QBrush>

#include <optional>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * Colour resources that change from place to place: the element `gradient`. `android:type` is 0 for a linear one from
 * (startX, startY) to (endX, endY), 1 for a radial one of gradientRadius around (centerX, centerY), 2 for one that
 * sweeps around there, clockwise from three o'clock.
 *
 * Its colours are those of its elements `item`, each with an offset from 0 to 1, or else startColor, centerColor if there
 * is one, and endColor. An offset less than the one before it is taken for that. `android:tileMode` tells what is outside:
 * the outermost colours (0), or the gradient again (1), or to and fro (2).
 */
class GradientColor
{
public:
    /// Items that count. Painting tells no more than about a thousand colours of a gradient apart.
    static constexpr int MaxItems = 1024;

    /// A brush in the coordinates of the drawable that is filled; nothing, with an error, when a radial one has no
    /// radius.
    static std::optional<QBrush> fromXml(const XmlElement &element, DrawableLoader &loader);
};

} // namespace SorrelKit

#endif
