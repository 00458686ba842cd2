// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ENTRYDATA_H
#define SORRELKIT_ENTRYDATA_H

#include "entry/ShortcutFile.h"
#include "format/AndroidAttributes.h"
#include "package/Manifest.h"
#include "package/PackageData.h"

#include <QSharedData>

namespace SorrelKit {

/// The data of an Entry. The entry points into the manifest of the package, or into another document of it. This object
/// keeps both alive with the package.
class EntryData : public QSharedData
{
public:
    PackageDataPointer package;
    EntryRule::Kind kind = EntryRule::Kind::Launcher;
    Manifest::EntryElements entry;
    ShortcutFile::Item shortcut; ///< of a shortcut, or a target for sharing; empty for other kinds
    int count = 1;               ///< entries of the kind; they share the budget for labels

    bool isValid() const { return entry.component != nullptr; }
    /// Whether the entry is an element of a document beside the manifest.
    bool isInDocument() const { return shortcut.element != nullptr; }
    /// The attribute @p id, as Manifest::innermostAttribute() finds it; a null pointer for an entry of nothing. An
    /// element of a document beside the manifest inherits nothing.
    const XmlAttribute *innermost(quint32 id, quint32 preferred = 0) const
    {
        if (isInDocument())
            return shortcut.element->attribute(id == Attr::Label ? Attr::ShortcutShortLabel : id);
        return isValid() ? package->manifest().innermostAttribute(entry, id, preferred) : nullptr;
    }
    /// The `meta-data` that names the file with details of the entry; null when there is none.
    const XmlElement *detailsElement() const
    {
        const EntryRule *const rule = EntryRule::find(kind);
        const bool hasDetails = isValid() && rule != nullptr && rule->action != nullptr && rule->metaData != nullptr;
        return hasDetails
                   ? EntryRule::childNamed(*entry.component, QLatin1String("meta-data"), QLatin1String(rule->metaData))
                   : nullptr;
    }
};

} // namespace SorrelKit

#endif
