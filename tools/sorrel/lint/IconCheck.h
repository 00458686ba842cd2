// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICONCHECK_H
#define ICONCHECK_H

#include <SorrelKit/Package.h>

#include <functional>
#include <memory>

class FindingList;

/// A check of launchers' icons that LauncherLint runs besides its own, for a program that has more libraries.
class IconCheck
{
public:
    virtual ~IconCheck() = default;

    /// Checks the icon of @p launcher, in which LauncherLint has found no fault.
    virtual void check(const SorrelKit::Entry &launcher) = 0;
    /// All launchers were checked.
    virtual void finish() = 0;
};

/// Makes a check of the icons of a package. The list outlives the check, and gets its findings.
using IconCheckFactory = std::function<std::unique_ptr<IconCheck>(const SorrelKit::Package &, FindingList *)>;

#endif
