// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_COLORSTATELIST_H
#define SORRELKIT_COLORSTATELIST_H

#include <QColor>

#include <optional>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/// Colour resources with a colour for each state: the element `selector`, with elements `item`.
class ColorStateList
{
public:
    /// The colour of the first item for the default state (DrawableAttributes::isForDefaultState()), or of the first
    /// item when there is none, as on Android. Its opacity is multiplied by the item's `android:alpha`. Nothing, with
    /// an error, when the item has no colour.
    static std::optional<QColor> fromXml(const XmlElement &element, DrawableLoader &loader);
};

} // namespace SorrelKit

#endif
