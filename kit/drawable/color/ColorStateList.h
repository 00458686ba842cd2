// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_COLORSTATELIST_H
#define SORRELKIT_COLORSTATELIST_H

#include <QColor>

#include <optional>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/// Colour resources that have a colour for each state: the element `selector`, with elements `item`.
class ColorStateList
{
public:
    /// The colour of the first item that is for the default state, as DrawableAttributes::isForDefaultState() has it, made as opaque as the
    /// item's `android:alpha` says. When there is none, that of the first item, as Android has it. Nothing, with an
    /// error, when that item has no colour.
    static std::optional<QColor> fromXml(const XmlElement &element, DrawableLoader &loader);
};

} // namespace SorrelKit

#endif
