// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LAUNCHERLINT_H
#define LAUNCHERLINT_H

#include "FindingList.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>

#include <QHash>
#include <QString>

/**
 * Checks the launchers of a package: their classes, labels and icons. Icons are looked up and drawn once for each
 * resource. At most MaxLaunchers are checked, and none begins after MaxTime.
 */
class LauncherLint
{
public:
    static constexpr int MaxLaunchers = 100;
    static constexpr int MaxTime = 3000; ///< in milliseconds

    LauncherLint(const SorrelKit::Package &package, FindingList *findings);

    void run();

private:
    /// The state of an icon.
    struct IconState {
        bool isXmlOnly = false;
        bool isDrawn = false;
        SorrelKit::IconError error;
    };

    void checkNames(const SorrelKit::Launcher &launcher);
    void checkIcon(const SorrelKit::Launcher &launcher);
    IconState iconState(const SorrelKit::Launcher &launcher);

    SorrelKit::Package m_package;
    SorrelKit::DrawableRenderer m_renderer;
    QHash<quint32, IconState> m_icons; ///< by resource id
    FindingList *m_findings;
};

#endif
