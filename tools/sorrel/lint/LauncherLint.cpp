// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LauncherLint.h"

#include <algorithm>

using namespace LintChecks;
using SorrelKit::Entry;
using SorrelKit::IconFile;
using SorrelKit::ResourceValue;

LauncherLint::LauncherLint(const SorrelKit::Package &package, IconCheck *icons, FindingList *findings)
    : m_package(package), m_resources(package), m_iconCheck(icons), m_findings(findings)
{
}

void LauncherLint::run()
{
    const QList<Entry> launchers = m_package.launchers();
    if (launchers.isEmpty())
        m_findings->add(NoLauncher, QString(),
                        QStringLiteral("The package has no launcher; home screens do not show it."));
    const int count = int(qMin(launchers.size(), decltype(launchers.size())(MaxLaunchers)));
    for (int i = 0; i < count; ++i) {
        checkNames(launchers.at(i));
        checkIcon(launchers.at(i));
    }
    if (m_iconCheck != nullptr)
        m_iconCheck->finish();
    if (count < launchers.size())
        m_findings->add(
            LaunchersSkipped, QString(),
            QStringLiteral("The package has %1 launchers; lint checks the first %2.").arg(launchers.size()).arg(count));
}

void LauncherLint::checkNames(const Entry &launcher)
{
    const QString className = launcher.className();
    if (className.isEmpty())
        m_findings->add(NoClass, launcher.name(), QStringLiteral("The launcher names no class; nothing can start it."));
    else if (!className.startsWith(m_package.packageName() + QLatin1Char('.')))
        m_findings->add(ForeignClass, launcher.name(),
                        QStringLiteral("The launcher's class %1 does not begin with the package name; it belongs to "
                                       "another project, or the package was renamed.")
                            .arg(FindingList::shortened(className)));
    if (launcher.labels().isEmpty())
        m_findings->add(NoLabel, launcher.name(),
                        QStringLiteral("The launcher's label is missing; hosts show the launcher's name."));
}

void LauncherLint::checkIcon(const Entry &launcher)
{
    constexpr quint32 PlatformPackage = 0x01;
    const IconState icon = iconState(launcher);
    const quint32 resource = launcher.iconResource();
    if (icon == IconState::None && resource == 0)
        m_findings->add(NoIcon, launcher.name(),
                        QStringLiteral("The launcher names no icon in the package; home screens show a default icon."));
    else if (icon == IconState::None && resource >> 24 == PlatformPackage)
        m_findings->add(PlatformIcon, launcher.name(),
                        QStringLiteral("The launcher's icon 0x%1 is one of Android's own; the package does not contain "
                                       "it, and only devices show it.")
                            .arg(resource, 8, 16, QLatin1Char('0')));
    else if (icon == IconState::None)
        m_findings->add(UnresolvedIcon, launcher.name(),
                        QStringLiteral("The package has no file for the launcher's icon 0x%1; hosts show no icon.")
                            .arg(resource, 8, 16, QLatin1Char('0')));
    else if (icon == IconState::XmlOnly)
        m_findings->add(
            XmlOnlyIcon, launcher.name(),
            QStringLiteral("All files of the launcher's icon are XML; SorrelKit draws it, ApkFile returns no icon."));
    if (icon != IconState::None && m_iconCheck != nullptr)
        m_iconCheck->check(launcher);
}

LauncherLint::IconState LauncherLint::iconState(const Entry &launcher)
{
    const quint32 resource = launcher.iconResource();
    const auto known = m_icons.constFind(resource);
    if (resource != 0 && known != m_icons.cend())
        return *known;
    // The platform's files are not the package's: every device has others.
    QList<IconFile> files = launcher.iconFiles();
    files.erase(std::remove_if(files.begin(), files.end(), [](const IconFile &file) { return file.isOfPlatform(); }),
                files.end());
    IconState state = IconState::Usable;
    if (files.isEmpty())
        state = isColor(resource) ? IconState::Usable : IconState::None;
    else if (std::all_of(files.cbegin(), files.cend(), [](const IconFile &file) { return file.size().isEmpty(); }))
        state = IconState::XmlOnly;
    m_icons.insert(resource, state);
    return state;
}

// An icon may be a colour instead of a file.
bool LauncherLint::isColor(quint32 resource) const
{
    constexpr int MaxReferences = 4;
    ResourceValue value = m_resources.defaultValue(resource);
    for (int i = 0; i < MaxReferences && value.type() == ResourceValue::Type::Reference; ++i)
        value = m_resources.defaultValue(m_resources.find(value.text()));
    return value.type() == ResourceValue::Type::Color;
}
