// SPDX-License-Identifier: LGPL-2.1-or-later
#include "theme/Theme.h"

#include <utility>

namespace SorrelKit {

bool Theme::Item::isRemoved() const
{
    constexpr quint32 Empty = 1;
    return value.isNull() && value.data != Empty;
}

quint32 Theme::fullId(quint32 id, quint8 packageId) const
{
    // Within a library that is loaded dynamically, its own package has the id 0.
    constexpr int PackageShift = 24;
    return m_resolver.finalId(ResourceId::package(id) == 0 ? quint32(packageId) << PackageShift | id : id);
}

void Theme::applyStyle(quint32 id, Apply apply)
{
    m_unread.append({id, apply});
}

quint32 Theme::missingStyle() const
{
    readStyles();
    return m_missingStyle;
}

void Theme::readStyles() const
{
    for (const Style &style : std::as_const(m_unread)) {
        const Items items = itemsOf(style.id);
        merge(items, style.apply);
        m_resolver.budget().releaseBytes(ItemBytes * items.size());
    }
    m_unread.clear();
}

Theme::Items Theme::itemsOf(quint32 style) const
{
    Items items;
    QVector<quint32> chain;
    quint32 id = m_resolver.finalId(style);
    while (id != 0 && chain.size() < MaxParents && !chain.contains(id)) {
        chain.append(id);
        const ResolvedMap map = m_resolver.map(id);
        if (map.isNull()) {
            if (m_missingStyle == 0 && !m_resolver.budget().isSpent())
                m_missingStyle = id;
            break;
        }
        addItems(map, &items);
        id = map.entry.parent() == 0 ? 0 : fullId(map.entry.parent(), map.table->packageId());
    }
    return items;
}

void Theme::addItems(const ResolvedMap &style, Items *items) const
{
    Budget &budget = m_resolver.budget();
    for (qint64 number = 0; number < style.entry.itemCount() && budget.spendWork(ItemWork); ++number) {
        const EntryView::Item item = style.entry.item(number);
        const quint32 attribute = fullId(item.name, style.table->packageId());
        if (!items->contains(attribute) && budget.holdBytes(ItemBytes))
            items->insert(attribute, {item.value, style.table, style.owner});
    }
}

void Theme::merge(const Items &items, Apply apply) const
{
    Budget &budget = m_resolver.budget();
    for (auto item = items.cbegin(); item != items.cend(); ++item) {
        const bool isKnown = m_items.contains(item.key());
        if (isKnown && apply == Apply::Missing)
            continue;
        if (item->isRemoved()) {
            if (m_items.remove(item.key()) > 0)
                budget.releaseBytes(ItemBytes);
        } else if (isKnown || budget.holdBytes(ItemBytes)) {
            m_items.insert(item.key(), *item);
        }
    }
}

std::optional<ResolvedValue> Theme::value(quint32 attribute) const
{
    readStyles();
    quint32 id = fullId(attribute, m_resolver.packageId());
    for (int followed = 0; followed <= MaxAttributes; ++followed) {
        if (!m_resolver.budget().spendWork(Budget::LookupWork))
            return std::nullopt;
        const auto item = m_items.constFind(id);
        if (item == m_items.cend())
            return std::nullopt;
        if (!item->value.isThemeAttribute())
            return resolved(*item);
        id = fullId(item->value.data, item->table->packageId());
    }
    return std::nullopt;
}

ResolvedValue Theme::resolved(const Item &item) const
{
    if (item.value.isReference() && item.value.data != 0)
        return m_resolver.resolved({ValueType::Reference, fullId(item.value.data, item.table->packageId())});
    ResolvedValue result;
    result.value = item.value;
    result.table = item.table;
    result.owner = item.owner;
    return m_resolver.withTextInBudget(result);
}

} // namespace SorrelKit
