// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LAUNCHERLINT_H
#define LAUNCHERLINT_H

#include "FindingList.h"
#include "IconCheck.h"

#include <SorrelKit/Package.h>
#include <SorrelKit/Resources.h>

#include <QHash>
#include <QString>

/**
 * Checks the launchers of a package: their classes, their labels, and whether the package has files for their icons. No
 * icon is drawn. At most MaxLaunchers are checked; the kit limits the work of all lookups in a package together.
 */
class LauncherLint
{
public:
    static constexpr int MaxLaunchers = 100;

    /// @p icons, when it is not null, checks the icons in which this class finds no fault. It outlives this object.
    LauncherLint(const SorrelKit::Package &package, IconCheck *icons, FindingList *findings);

    void run();

private:
    enum class IconState {
        None,    ///< the package has nothing for it
        XmlOnly, ///< all its files are XML
        Usable,
    };

    void checkNames(const SorrelKit::Entry &launcher);
    void checkIcon(const SorrelKit::Entry &launcher);
    IconState iconState(const SorrelKit::Entry &launcher);
    bool isColor(quint32 resource) const;

    SorrelKit::Package m_package;
    SorrelKit::Resources m_resources;
    QHash<quint32, IconState> m_icons; ///< by resource id
    IconCheck *m_iconCheck;
    FindingList *m_findings;
};

#endif
