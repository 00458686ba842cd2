// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTCONTENT_H
#define REPORTCONTENT_H

#include <SorrelKit/IconMask.h>

/// What a report of a package has beside what is always there.
struct ReportContent {
    bool includesDisabled = false; ///< launchers that are not shown
    int iconSize = 0;              ///< pixels a side of the icon; 0 for none
    SorrelKit::IconMask iconMask = SorrelKit::IconMask::None;
    bool includesLint = false; ///< what is odd in it
};

#endif
