// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ENTRYDATA_H
#define SORRELKIT_ENTRYDATA_H

#include "package/Manifest.h"
#include "package/PackageData.h"

#include <QSharedData>

namespace SorrelKit {

/// The data of an Entry. The entry points into the manifest of the package, which this object keeps alive.
class EntryData : public QSharedData
{
public:
    PackageDataPointer package;
    Manifest::LauncherEntry entry;
    int launcherCount = 1; ///< of the package; they share the budget for labels

    bool isValid() const { return entry.activity != nullptr; }
    /// The attribute @p id, as Manifest::innermostAttribute() finds it; a null pointer for an entry of nothing.
    const XmlAttribute *innermost(quint32 id) const
    {
        return isValid() ? package->manifest().innermostAttribute(entry, id) : nullptr;
    }
};

} // namespace SorrelKit

#endif
