// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LAUNCHERLINT_H
#define LAUNCHERLINT_H

#include "FindingList.h"

#include <SorrelKit/Package.h>

#include <QHash>
#include <QString>

/**
 * What is odd in the launchers of a package: their classes, labels and icons. Icons are looked up and drawn once for
 * each resource. MaxLaunchers are looked at, and no further one is begun after MaxTime.
 */
class LauncherLint
{
public:
    static constexpr int MaxLaunchers = 100;
    static constexpr int MaxTime = 3000; ///< in milliseconds

    LauncherLint(const SorrelKit::Package &package, FindingList *findings);

    void run();

private:
    /// What is said about an icon.
    struct IconState {
        bool isXmlOnly = false;
        bool isDrawn = false;
        QString fault;
    };

    void checkNames(const SorrelKit::Launcher &launcher);
    void checkIcon(const SorrelKit::Launcher &launcher);
    IconState iconState(const SorrelKit::Launcher &launcher);

    SorrelKit::Package m_package;
    QHash<quint32, IconState> m_icons; ///< by their resources
    FindingList *m_findings;
};

#endif
