// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/DrawableContainer.h"

#include "drawable/source/DrawableAttributes.h"
#include "drawable/source/MirroredDrawable.h"

#include <functional>

namespace SorrelKit {

namespace {

DrawablePointer firstItem(const XmlElement &element, DrawableLoader &loader,
                          const std::function<bool(const XmlElement &)> &isWanted, bool isMirrored = false)
{
    for (const XmlElement &child : element.children) {
        if (child.name == QLatin1String("item") && isWanted(child))
            return MirroredDrawable::mirrored(loader.fromRequiredItem(child), isMirrored);
    }
    loader.setError(DrawableFault::NoFirstItem, element.name);
    return nullptr;
}

} // namespace

DrawablePointer DrawableContainer::fromStateList(const XmlElement &element, DrawableLoader &loader)
{
    const bool isMirrored =
        loader.isRightToLeft() && DrawableAttributes(element, loader).boolean(Attr::AutoMirrored, false);
    return firstItem(
        element, loader, [&](const XmlElement &item) { return DrawableAttributes(item, loader).isForDefaultState(); },
        isMirrored);
}

DrawablePointer DrawableContainer::fromLevelList(const XmlElement &element, DrawableLoader &loader)
{
    return firstItem(element, loader, [&](const XmlElement &item) {
        const DrawableAttributes attributes(item, loader);
        return attributes.integer(Attr::MinLevel, 0) <= 0 && attributes.integer(Attr::MaxLevel, 0) >= 0;
    });
}

DrawablePointer DrawableContainer::fromAnimation(const XmlElement &element, DrawableLoader &loader)
{
    return firstItem(element, loader, [](const XmlElement &) { return true; });
}

} // namespace SorrelKit
