// SPDX-License-Identifier: LGPL-2.1-or-later
#include "entry/ShortcutFile.h"

#include "format/AndroidAttributes.h"

#include <algorithm>

namespace SorrelKit {

namespace {

QString shortcutText(const XmlElement &element, quint32 id)
{
    const XmlAttribute *const attribute = element.attribute(id);
    return attribute != nullptr ? attribute->text : QString();
}

bool isShortcutResource(const XmlElement &element, quint32 id)
{
    const XmlAttribute *const attribute = element.attribute(id);
    return attribute != nullptr && attribute->value.isReference();
}

bool hasShortcutChild(const XmlElement &element, QLatin1String name, quint32 attribute)
{
    return std::any_of(element.children.cbegin(), element.children.cend(), [&](const XmlElement &child) {
        return child.name == name && child.attribute(attribute) != nullptr;
    });
}

bool isUsableShortcut(const XmlElement &shortcut)
{
    if (!isShortcutResource(shortcut, Attr::ShortcutShortLabel))
        return false;
    const XmlAttribute *const enabled = shortcut.attribute(Attr::Enabled);
    if (enabled != nullptr && !enabled->value.boolean().value_or(true))
        return true;
    const auto isIntent = [](const XmlElement &child) { return child.name == QLatin1String("intent"); };
    const auto hasAction = [&](const XmlElement &child) {
        return !isIntent(child) || child.attribute(Attr::Action) != nullptr;
    };
    return std::any_of(shortcut.children.cbegin(), shortcut.children.cend(), isIntent)
           && std::all_of(shortcut.children.cbegin(), shortcut.children.cend(), hasAction);
}

} // namespace

QVector<ShortcutFile::Item> ShortcutFile::shortcuts(const XmlElement &root, QSet<QString> *known)
{
    QVector<Item> items;
    int taken = 0;
    if (root.name != QLatin1String("shortcuts"))
        return items;
    for (const XmlElement &child : root.children) {
        if (child.name != QLatin1String("shortcut"))
            continue;
        Item item;
        item.element = &child;
        item.id = shortcutText(child, Attr::ShortcutId);
        if (item.id.isEmpty() || known->contains(item.id))
            continue;
        known->insert(item.id);
        for (const XmlElement &intent : child.children) {
            if (intent.name == QLatin1String("intent"))
                item.className = shortcutText(intent, Attr::TargetClass);
        }
        item.isTaken = taken < TakenShortcuts && isUsableShortcut(child);
        taken += item.isTaken ? 1 : 0;
        items.append(item);
    }
    return items;
}

QVector<ShortcutFile::Item> ShortcutFile::shareTargets(const XmlElement &root)
{
    QVector<Item> items;
    if (root.name != QLatin1String("shortcuts"))
        return items;
    for (const XmlElement &child : root.children) {
        if (child.name != QLatin1String("share-target"))
            continue;
        Item item;
        item.element = &child;
        item.className = shortcutText(child, Attr::TargetClass);
        for (const XmlElement &category : child.children) {
            if (item.id.isEmpty() && category.name == QLatin1String("category"))
                item.id = shortcutText(category, Attr::Name);
        }
        item.isTaken = !item.className.isEmpty() && !item.id.isEmpty()
                       && hasShortcutChild(child, QLatin1String("data"), Attr::MimeType);
        items.append(item);
    }
    return items;
}

} // namespace SorrelKit
