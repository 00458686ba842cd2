// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LauncherLint.h"

#include <QElapsedTimer>

#include <algorithm>

using namespace LintChecks;
using SorrelKit::IconFile;
using SorrelKit::Launcher;

LauncherLint::LauncherLint(const SorrelKit::Package &package, FindingList *findings)
    : m_package(package), m_renderer(package), m_findings(findings)
{
}

void LauncherLint::run()
{
    const QList<Launcher> launchers = m_package.launchers();
    if (launchers.isEmpty())
        m_findings->add(NoLauncher, QString(),
                        QStringLiteral("The package has no launcher, and home screens show nothing of it."));
    QElapsedTimer timer;
    timer.start();
    int done = 0;
    for (; done < qMin(launchers.size(), MaxLaunchers) && !timer.hasExpired(MaxTime); ++done) {
        checkNames(launchers.at(done));
        checkIcon(launchers.at(done));
    }
    if (done < launchers.size())
        m_findings->add(LaunchersSkipped, QString(),
                        QStringLiteral("Of %1 launchers, the last %2 were not looked at, as that would take too long.")
                            .arg(launchers.size())
                            .arg(launchers.size() - done));
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
    const QString fault = FindingList::shortened(icon.error.text());
    const quint32 resource = launcher.iconResource();
    if (!icon.isDrawn && resource == 0 && icon.error.code() == SorrelKit::IconError::Code::Missing)
        m_findings->add(NoIcon, launcher.name(),
                        QStringLiteral("The launcher names no icon; home screens show their own."));
    else if (!icon.isDrawn && resource >> 24 == PlatformPackage)
        m_findings->add(
            PlatformIcon, launcher.name(),
            QStringLiteral("The launcher's icon is 0x%1 of Android itself, which the package does not hold; "
                           "devices show it, and other hosts show none.")
                .arg(resource, 8, 16, QLatin1Char('0')));
    else if (!icon.isDrawn)
        m_findings->add(UnresolvedIcon, launcher.name(),
                        QStringLiteral("The launcher's icon cannot be had (%1), and hosts show none.").arg(fault));
    else if (!fault.isEmpty())
        m_findings->add(
            PartialIcon, launcher.name(),
            QStringLiteral("The launcher's icon is not wholly drawn as the package describes it (%1).").arg(fault));
    if (icon.isXmlOnly)
        m_findings->add(XmlOnlyIcon, launcher.name(),
                        QStringLiteral("The launcher's icon is XML alone, of which ApkFile gives nothing; a host needs "
                                       "SorrelKit to show it."));
}

LauncherLint::IconState LauncherLint::iconState(const Launcher &launcher)
{
    constexpr int IconSize = 48;
    const quint32 resource = launcher.iconResource();
    const auto known = m_icons.constFind(resource);
    if (resource != 0 && known != m_icons.cend())
        return *known;
    IconState state;
    const QList<IconFile> files = launcher.iconFiles();
    state.isXmlOnly = !files.isEmpty() && std::all_of(files.cbegin(), files.cend(), [](const IconFile &file) {
        return file.size().isEmpty();
    });
    state.isDrawn = !m_renderer.icon(launcher, SorrelKit::IconRequest(IconSize)).isNull();
    state.error = m_renderer.error();
    m_icons.insert(resource, state);
    return state;
}
