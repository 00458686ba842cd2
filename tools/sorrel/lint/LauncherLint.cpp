// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LauncherLint.h"

#include <algorithm>

using namespace LintChecks;
using SorrelKit::IconFile;
using SorrelKit::Launcher;
using SorrelKit::ResourceValue;

LauncherLint::LauncherLint(const SorrelKit::Package &package, IconCheck *icons, FindingList *findings)
    : m_package(package), m_resources(package), m_iconCheck(icons), m_findings(findings)
{
}

void LauncherLint::run()
{
    const QList<Launcher> launchers = m_package.launchers();
    if (launchers.isEmpty())
        m_findings->add(NoLauncher, QString(),
                        QStringLiteral("The package has no launcher, and home screens show nothing of it."));
    const int count = int(qMin(launchers.size(), decltype(launchers.size())(MaxLaunchers)));
    for (int i = 0; i < count; ++i) {
        checkNames(launchers.at(i));
        checkIcon(launchers.at(i));
    }
    if (m_iconCheck != nullptr)
        m_iconCheck->finish();
    if (count < launchers.size())
        m_findings->add(LaunchersSkipped, QString(),
                        QStringLiteral("Of %1 launchers, the last %2 were not looked at, as that would take too long.")
                            .arg(launchers.size())
                            .arg(launchers.size() - count));
}

void LauncherLint::checkNames(const Launcher &launcher)
{
    const QString className = launcher.className();
    if (className.isEmpty())
        m_findings->add(NoClass, launcher.name(),
                        QStringLiteral("The launcher names no class, and nothing starts with it."));
    else if (!className.startsWith(m_package.packageName() + QLatin1Char('.')))
        m_findings->add(
            ForeignClass, launcher.name(),
            QStringLiteral("The launcher's class %1 is outside of the package's own name; the code of another "
                           "project runs, or the package was renamed.")
                .arg(FindingList::shortened(className)));
    if (launcher.labels().isEmpty())
        m_findings->add(
            NoLabel, launcher.name(),
            QStringLiteral("The launcher has no label, or one that leads nowhere; it is shown by its name."));
}

void LauncherLint::checkIcon(const Launcher &launcher)
{
    constexpr quint32 PlatformPackage = 0x01;
    const IconState icon = iconState(launcher);
    const quint32 resource = launcher.iconResource();
    if (icon == IconState::None && resource == 0)
        m_findings->add(NoIcon, launcher.name(),
                        QStringLiteral("The launcher names no icon; home screens show their own."));
    else if (icon == IconState::None && resource >> 24 == PlatformPackage)
        m_findings->add(
            PlatformIcon, launcher.name(),
            QStringLiteral("The launcher's icon is 0x%1 of Android itself, which the package does not hold; "
                           "devices show it, and other hosts show none.")
                .arg(resource, 8, 16, QLatin1Char('0')));
    else if (icon == IconState::None)
        m_findings->add(UnresolvedIcon, launcher.name(),
                        QStringLiteral("The package has no file for the launcher's icon 0x%1; hosts show none.")
                            .arg(resource, 8, 16, QLatin1Char('0')));
    else if (icon == IconState::XmlOnly)
        m_findings->add(XmlOnlyIcon, launcher.name(),
                        QStringLiteral("The launcher's icon is XML alone, of which ApkFile gives nothing; a host needs "
                                       "SorrelKit to show it."));
    if (icon != IconState::None && m_iconCheck != nullptr)
        m_iconCheck->check(launcher);
}

LauncherLint::IconState LauncherLint::iconState(const Launcher &launcher)
{
    const quint32 resource = launcher.iconResource();
    const auto known = m_icons.constFind(resource);
    if (resource != 0 && known != m_icons.cend())
        return *known;
    const QList<IconFile> files = launcher.iconFiles();
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
