// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_COMPONENTDIFF_H
#define SORRELKIT_COMPONENTDIFF_H

#include <SorrelKit/ComponentChange.h>

#include <QList>

namespace SorrelKit {

/// Compares components by their kind and name.
class ComponentDiff
{
public:
    /// The components that differ, in the order of PackageDiff::components().
    static QList<ComponentChange> changes(const QList<Component> &before, const QList<Component> &after);
};

} // namespace SorrelKit

#endif
