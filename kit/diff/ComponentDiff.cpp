// SPDX-License-Identifier: LGPL-2.1-or-later
#include "diff/ComponentDiff.h"

#include <QHash>
#include <QPair>

#include <algorithm>

namespace SorrelKit {

namespace {

using ComponentKey = QPair<int, QString>;

ComponentKey keyOf(const Component &component)
{
    return {int(component.kind()), component.name()};
}

QHash<ComponentKey, Component> byKey(const QList<Component> &components)
{
    QHash<ComponentKey, Component> hash;
    for (const Component &component : components)
        hash.insert(keyOf(component), component);
    return hash;
}

bool isSame(const Component &a, const Component &b)
{
    return a.isExported() == b.isExported() && a.isEnabled() == b.isEnabled() && a.permission() == b.permission()
           && a.writePermission() == b.writePermission();
}

} // namespace

QList<ComponentChange> ComponentDiff::changes(const QList<Component> &before, const QList<Component> &after)
{
    const QHash<ComponentKey, Component> old = byKey(before);
    const QHash<ComponentKey, Component> current = byKey(after);
    QList<ComponentChange> changes;
    for (const Component &component : after) {
        if (!old.contains(keyOf(component)))
            changes.append(ComponentChange(TextChange::Kind::Added, Component(), component));
    }
    for (const Component &component : before) {
        if (!current.contains(keyOf(component)))
            changes.append(ComponentChange(TextChange::Kind::Removed, component, Component()));
    }
    for (const Component &component : after) {
        const auto found = old.constFind(keyOf(component));
        if (found != old.cend() && !isSame(*found, component))
            changes.append(ComponentChange(TextChange::Kind::Changed, *found, component));
    }
    std::stable_partition(changes.begin(), changes.end(),
                          [](const ComponentChange &change) { return change.isOpened(); });
    return changes;
}

} // namespace SorrelKit
