// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_GRADIENTCOLOR_H
#define SORRELKIT_GRADIENTCOLOR_H

#include <QBrush>

#include <optional>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * Colour resources that are gradients: the element `gradient`. `android:type` is 0 for a linear gradient from (startX,
 * startY) to (endX, endY), 1 for a radial gradient of gradientRadius around (centerX, centerY), and 2 for a sweep
 * gradient around this centre, clockwise from three o'clock.
 *
 * The colours are those of the elements `item`, each with an offset from 0 to 1. Without items, they are startColor,
 * centerColor (which may be missing) and endColor. An offset less than the previous one counts as the previous one.
 * `android:tileMode` sets the colours outside: the outermost ones (0), the gradient repeated (1) or mirrored (2).
 */
class GradientColor
{
public:
    /// Items that are read. A painter distinguishes about a thousand colours of a gradient.
    static constexpr int MaxItems = 1024;

    /// A brush in the coordinates of the filled drawable; nothing, with an error, for a radial gradient without a
    /// radius.
    static std::optional<QBrush> fromXml(const XmlElement &element, DrawableLoader &loader);
};

} // namespace SorrelKit

#endif
