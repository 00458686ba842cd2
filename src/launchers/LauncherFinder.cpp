// SPDX-License-Identifier: LGPL-2.1-or-later
#include "launchers/LauncherFinder.h"

#include "document/DomAttributes.h"
#include "launchers/ApkLauncherInfoData.h"
#include "launchers/IconLookup.h"
#include "launchers/VisibilityRules.h"
#include "limits/Budget.h"
#include "table/ApkResourcesData.h"
#include "table/LocaleLookup.h"

#include <QDomElement>

namespace {

constexpr int LabelReferenceDepth = 5;

bool hasChildWithAndroidAttribute(const QDomElement &parent, const QString &tag, const QString &attribute,
                                  const QString &value)
{
    for (QDomElement child = parent.firstChildElement(tag); !child.isNull(); child = child.nextSiblingElement(tag)) {
        if (androidAttribute(child, attribute) == value)
            return true;
    }
    return false;
}

bool isLauncherFilter(const QDomElement &filter)
{
    const QString name = QStringLiteral("name");
    return hasChildWithAndroidAttribute(filter, QStringLiteral("category"), name,
                                        QStringLiteral("android.intent.category.LAUNCHER"))
           && hasChildWithAndroidAttribute(filter, QStringLiteral("action"), name,
                                           QStringLiteral("android.intent.action.MAIN"));
}

// The attribute of the innermost element that has it: filter, activity, application.
QString innermostAttribute(const QDomElement &filter, const QString &name)
{
    QDomElement element = filter;
    QString value = androidAttribute(element, name);
    for (int level = 0; level < 2 && value.isEmpty(); ++level) {
        element = element.parentNode().toElement();
        value = androidAttribute(element, name);
    }
    return value;
}

QString className(const QDomElement &activity, const QString &package)
{
    const QLatin1Char dot('.');
    const bool isAlias = activity.tagName() == QLatin1String("activity-alias");
    QString name = androidAttribute(activity, isAlias ? QStringLiteral("targetActivity") : QStringLiteral("name"));
    if (!name.contains(dot))
        name.prepend(dot);
    return name.startsWith(dot) ? package + name : name;
}

// The number of elements and attributes.
int nodeCount(const QDomDocument &document)
{
    int count = 0;
    QDomElement element = document.documentElement();
    while (!element.isNull()) {
        count += 1 + element.attributes().length();
        QDomElement next = element.firstChildElement();
        for (; next.isNull() && !element.isNull(); element = element.parentNode().toElement())
            next = element.nextSiblingElement();
        element = next;
    }
    return count;
}

qint64 bytesOf(const QDomDocument &manifest)
{
    return qint64(LauncherFinder::NodeBytes) * qMax(0, nodeCount(manifest) - LauncherFinder::FreeNodes);
}

bool hasRoomFor(const QString &className, Budget &budget)
{
    return budget.spendWork(Budget::ByteWork * className.size())
           && budget.holdBytes(LauncherFinder::ClassCharacterBytes * className.size());
}

} // namespace

LauncherFinder::LauncherFinder(const QDomDocument &manifest, const ApkResources &resources, QuaZip *archive)
    : m_manifest(manifest), m_resources(resources), m_archive(archive)
{
}

QList<ApkLauncherInfo> LauncherFinder::launchers(bool includeDisabled) const
{
    QList<ApkLauncherInfo> launchers;
    const QString package = m_manifest.documentElement().attribute(QStringLiteral("package"), QLatin1String(""));
    const QDomNodeList filters = m_manifest.elementsByTagName(QStringLiteral("intent-filter"));
    Budget budget(MaxWork, MaxBytes);
    VisibilityRules rules(m_resources, budget);
    IconLookup icons(m_resources, m_archive, budget);
    LocaleLookup labels(ApkResourcesData::of(m_resources), budget);
    bool isManifestHeld = false; // counting its nodes takes time, and only pictures need the room
    for (int i = 0; i < filters.length(); ++i) {
        const QDomElement filter = filters.item(i).toElement();
        if (!isLauncherFilter(filter))
            continue;
        const QDomElement activity = filter.parentNode().toElement();
        const QDomElement application = activity.parentNode().toElement();
        if (!activity.tagName().startsWith(QLatin1String("activity"))
            || application.tagName() != QLatin1String("application"))
            continue;
        if (!includeDisabled && !rules.isShown(activity, application))
            continue;

        ApkLauncherInfo info;
        const QString icon = innermostAttribute(filter, QStringLiteral("icon"));
        if (!icon.isEmpty()) {
            if (m_archive != nullptr && !isManifestHeld)
                isManifestHeld = budget.holdBytes(qMin(bytesOf(m_manifest), budget.bytesLeft()));
            info.d->icons = icons.images(icon);
        }
        info.d->package = package;
        info.d->className = className(activity, package);
        if (!hasRoomFor(info.d->className, budget))
            break;
        const QString label = innermostAttribute(filter, QStringLiteral("label"));
        if (!label.isEmpty())
            info.d->labels = labels.byReference(label, LabelReferenceDepth);
        launchers.append(info);
    }
    return launchers;
}
