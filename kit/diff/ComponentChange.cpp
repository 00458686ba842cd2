// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/ComponentChange.h>

#include <QSharedData>

namespace SorrelKit {

class ComponentChangeData : public QSharedData
{
public:
    TextChange::Kind kind = TextChange::Kind::Changed;
    Component before;
    Component after;
};

ComponentChange::ComponentChange() : d(new ComponentChangeData) {}
ComponentChange::ComponentChange(TextChange::Kind kind, const Component &before, const Component &after)
    : ComponentChange()
{
    d->kind = kind;
    d->before = before;
    d->after = after;
}

ComponentChange::ComponentChange(const ComponentChange &other) = default;
ComponentChange::ComponentChange(ComponentChange &&other) noexcept = default;
ComponentChange &ComponentChange::operator=(const ComponentChange &other) = default;
ComponentChange &ComponentChange::operator=(ComponentChange &&other) noexcept = default;
ComponentChange::~ComponentChange() = default;

TextChange::Kind ComponentChange::kind() const
{
    return d->kind;
}

Component ComponentChange::before() const
{
    return d->before;
}

Component ComponentChange::after() const
{
    return d->after;
}

bool ComponentChange::isOpened() const
{
    const auto isOpen = [](const Component &component) { return component.isExported() && component.isEnabled(); };
    const auto isFreed = [](const QString &before, const QString &after) {
        return !before.isEmpty() && after.isEmpty();
    };
    if (d->kind == TextChange::Kind::Removed || !isOpen(d->after))
        return false;
    return d->kind == TextChange::Kind::Added || !isOpen(d->before)
           || isFreed(d->before.permission(), d->after.permission())
           || isFreed(d->before.writePermission(), d->after.writePermission());
}

} // namespace SorrelKit
