// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/Manifest.h"

#include "format/AndroidAttributes.h"

#include <QSet>

#include <algorithm>
#include <optional>

namespace SorrelKit {

namespace {

QString plainAttribute(const XmlElement &element, const QString &name)
{
    const XmlAttribute *const attribute = element.attribute(name);
    return attribute != nullptr ? attribute->text : QString();
}

} // namespace

Manifest::Manifest(const XmlElement &root)
    : m_root(root), m_packageName(plainAttribute(root, QStringLiteral("package")))
{
}

QString Manifest::splitName() const
{
    return plainAttribute(m_root, QStringLiteral("split"));
}

const XmlElement *Manifest::application() const
{
    const auto found = std::find_if(m_root.children.cbegin(), m_root.children.cend(),
                                    [](const XmlElement &child) { return child.name == QLatin1String("application"); });
    return found == m_root.children.cend() ? nullptr : &*found;
}

const XmlAttribute *Manifest::applicationAttribute(quint32 id) const
{
    const XmlElement *const element = application();
    return element != nullptr ? element->attribute(id) : nullptr;
}

const XmlAttribute *Manifest::innermostAttribute(const EntryElements &entry, quint32 id, quint32 preferred) const
{
    for (const XmlElement *element : {entry.filter, entry.component, entry.target, application()}) {
        for (const quint32 wanted : {preferred, id}) {
            const XmlAttribute *const attribute =
                element != nullptr && wanted != 0 ? element->attribute(wanted) : nullptr;
            if (attribute != nullptr)
                return attribute;
        }
    }
    return nullptr;
}

const XmlAttribute *Manifest::childAttribute(const QString &element, quint32 id) const
{
    for (const XmlElement &child : m_root.children) {
        if (child.name == element && child.attribute(id) != nullptr)
            return child.attribute(id);
    }
    return nullptr;
}

QVector<Manifest::EntryElements> Manifest::entries(const EntryRule &rule) const
{
    QVector<EntryElements> entries;
    const XmlElement *const parent = application();
    if (parent == nullptr)
        return entries;
    std::optional<QHash<QString, const XmlElement *>> activities;
    QSet<QString> known;
    int charactersLeft = MaxNameCharacters;
    for (const XmlElement &child : parent->children) {
        if (!rule.isFor(child))
            continue;
        EntryElements entry;
        entry.isAlias = child.name == QLatin1String("activity-alias");
        const auto filter = std::find_if(child.children.cbegin(), child.children.cend(),
                                         [&rule](const XmlElement &element) { return rule.matches(element); });
        if (filter == child.children.cend())
            continue;
        const QString name = text(child, Attr::Name);
        const QString target = entry.isAlias ? text(child, Attr::TargetActivity) : QString();
        if (completedSize(name) > charactersLeft || completedSize(target) > charactersLeft - completedSize(name))
            continue;
        entry.name = completed(name);
        if (known.contains(entry.name))
            continue;
        known.insert(entry.name);
        entry.component = &child;
        entry.filter = &*filter;
        entry.className = entry.name;
        if (entry.isAlias) {
            // Most manifests have no such alias.
            if (!activities)
                activities = activitiesByName(*parent);
            entry.className = completed(target);
            entry.target = activities->value(entry.className);
        }
        charactersLeft -= completedSize(name) + completedSize(target);
        entries.append(entry);
        if (entries.size() == MaxEntries)
            break;
    }
    return entries;
}

QVector<Manifest::ComponentEntry> Manifest::components() const
{
    QVector<ComponentEntry> entries;
    const XmlElement *const parent = application();
    if (parent == nullptr)
        return entries;
    QHash<QString, QSet<QString>> known{
        {QStringLiteral("activity"), {}}, {QStringLiteral("activity-alias"), {}}, {QStringLiteral("service"), {}},
        {QStringLiteral("receiver"), {}}, {QStringLiteral("provider"), {}},
    };
    int charactersLeft = MaxNameCharacters;
    for (const XmlElement &child : parent->children) {
        const auto names = known.find(child.name);
        if (names == known.end())
            continue;
        const QString name = text(child, Attr::Name);
        if (name.isEmpty() || completedSize(name) > charactersLeft)
            continue;
        const ComponentEntry entry{&child, completed(name)};
        if (names->contains(entry.name))
            continue;
        names->insert(entry.name);
        charactersLeft -= int(entry.name.size());
        entries.append(entry);
        if (entries.size() == MaxComponents)
            break;
    }
    return entries;
}

QHash<QString, const XmlElement *> Manifest::activitiesByName(const XmlElement &application) const
{
    QHash<QString, const XmlElement *> activities;
    int charactersLeft = MaxNameCharacters;
    for (const XmlElement &child : application.children) {
        const QString name = text(child, Attr::Name);
        if (child.name != QLatin1String("activity") || completedSize(name) > charactersLeft)
            continue;
        charactersLeft -= completedSize(name);
        activities.insert(completed(name), &child);
    }
    return activities;
}

int Manifest::completedSize(const QString &name) const
{
    return name.isEmpty() ? 0 : int(name.size()) + int(m_packageName.size()) + 1;
}

QString Manifest::completed(const QString &name) const
{
    if (name.isEmpty())
        return {};
    if (name.startsWith(QLatin1Char('.')))
        return m_packageName + name;
    return name.contains(QLatin1Char('.')) ? name : m_packageName + QLatin1Char('.') + name;
}

QString Manifest::text(const XmlElement &element, quint32 id)
{
    const XmlAttribute *const attribute = element.attribute(id);
    return attribute != nullptr ? attribute->plainText() : QString();
}

} // namespace SorrelKit
