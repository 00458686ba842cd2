// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTCONTENT_H
#define REPORTCONTENT_H

#include "Program.h"

#include <SorrelKit/IconMask.h>

#include <QByteArray>

/// The optional parts of a report.
struct ReportContent {
    bool includesDisabled = false; ///< whether to add launchers that are not shown
    int iconSize = 0;              ///< width and height of the icon in pixels; 0 for no icon
    SorrelKit::IconMask iconMask = SorrelKit::IconMask::None;
    bool includesLint = false;       ///< whether to add the findings of lint
    bool lintDrawsIcons = false;     ///< whether lint draws the icons of launchers as well
    bool includesSignatures = false; ///< whether to add the signatures
    QByteArray launcherIcons;        ///< icons of each launcher, see WorkerOrder

    /// The program whose worker has all parts of the report.
    Program program() const
    {
        if (iconSize > 0 || lintDrawsIcons || !launcherIcons.isEmpty())
            return Program::Draw;
        return includesLint || includesSignatures ? Program::Trust : Program::Core;
    }
};

#endif
