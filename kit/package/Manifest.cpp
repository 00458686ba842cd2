// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/Manifest.h"

#include "format/AndroidAttributes.h"

#include <QSet>

#include <algorithm>
#include <optional>

namespace SorrelKit {

namespace {

bool hasChildNamed(const XmlElement &filter, const QString &element, const QString &name)
{
    return std::any_of(filter.children.cbegin(), filter.children.cend(), [&](const XmlElement &child) {
        return child.name == element && Manifest::text(child, Attr::Name) == name;
    });
}

bool isLauncherFilter(const XmlElement &element)
{
    return element.name == QLatin1String("intent-filter")
           && hasChildNamed(element, QStringLiteral("category"), QStringLiteral("android.intent.category.LAUNCHER"))
           && hasChildNamed(element, QStringLiteral("action"), QStringLiteral("android.intent.action.MAIN"));
}

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

const XmlAttribute *Manifest::innermostAttribute(const LauncherEntry &entry, quint32 id) const
{
    for (const XmlElement *element : {entry.filter, entry.activity, entry.target, application()}) {
        const XmlAttribute *const attribute = element != nullptr ? element->attribute(id) : nullptr;
        if (attribute != nullptr)
            return attribute;
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

QVector<Manifest::LauncherEntry> Manifest::launchers() const
{
    QVector<LauncherEntry> entries;
    const XmlElement *const parent = application();
    if (parent == nullptr)
        return entries;
    std::optional<QHash<QString, const XmlElement *>> activities;
    QSet<QString> known;
    int charactersLeft = MaxNameCharacters;
    for (const XmlElement &child : parent->children) {
        LauncherEntry entry;
        entry.isAlias = child.name == QLatin1String("activity-alias");
        if (!entry.isAlias && child.name != QLatin1String("activity"))
            continue;
        const auto filter = std::find_if(child.children.cbegin(), child.children.cend(), isLauncherFilter);
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
        entry.activity = &child;
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
        if (entries.size() == MaxLaunchers)
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
