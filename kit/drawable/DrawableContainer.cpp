// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/DrawableContainer.h"

#include "drawable/source/DrawableAttributes.h"
#include "drawable/source/MirroredDrawable.h"

#include <QPair>
#include <QVector>

#include <algorithm>
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

qint64 frameTime(const XmlElement &item, DrawableLoader &loader)
{
    const int duration = DrawableAttributes(item, loader).integer(Attr::Duration, 0);
    return duration > 0 ? duration : AnimationClock::RefreshTime;
}

// The item of an animation list that is shown at the time of the clock, which notes when the next one follows.
const XmlElement *itemAtTime(const XmlElement &element, DrawableLoader &loader)
{
    qint64 period = 0;
    QVector<QPair<const XmlElement *, qint64>> ends;
    for (const XmlElement &child : element.children) {
        if (child.name != QLatin1String("item"))
            continue;
        period = qMin(AnimationClock::MaxTime, period + frameTime(child, loader));
        ends.append({&child, period});
    }
    if (ends.size() < 2)
        return nullptr;
    AnimationClock &clock = *loader.clock();
    const bool isOneShot = DrawableAttributes(element, loader).boolean(Attr::OneShot, false);
    const qint64 time = isOneShot ? clock.time() : clock.timeWithin(period);
    if (isOneShot && time >= ends.at(ends.size() - 2).second)
        return ends.last().first;
    const auto isShown = [time](const QPair<const XmlElement *, qint64> &item) { return time < item.second; };
    const auto shown = std::find_if(ends.cbegin(), ends.cend(), isShown);
    clock.noteChange(shown->second - time);
    if (!isOneShot)
        clock.notePeriod(period);
    return shown->first;
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
    const XmlElement *const shown = loader.clock() != nullptr ? itemAtTime(element, loader) : nullptr;
    return firstItem(element, loader, [shown](const XmlElement &item) { return shown == nullptr || &item == shown; });
}

} // namespace SorrelKit
