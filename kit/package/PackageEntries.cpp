// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Package.h>

#include "entry/EntryRule.h"
#include "entry/ShortcutFile.h"
#include "package/EntryData.h"

#include <QSet>

namespace SorrelKit {

namespace {

using EntryDataPointer = QExplicitlySharedDataPointer<EntryData>;

EntryDataPointer entryOf(const PackageDataPointer &package, EntryRule::Kind kind,
                         const Manifest::EntryElements &elements)
{
    EntryDataPointer data(new EntryData);
    data->package = package;
    data->kind = kind;
    data->entry = elements;
    return data;
}

// The items of the documents that launchers name. A document counts once, for the first of its launchers.
QVector<EntryDataPointer> itemsOfDocuments(const PackageDataPointer &package, EntryRule::Kind kind)
{
    QVector<EntryDataPointer> entries;
    QSet<const XmlElement *> visited;
    QSet<QString> known;
    for (const Manifest::EntryElements &launcher : package->manifest().launchers()) {
        const XmlElement *const metaData = EntryRule::childNamed(*launcher.component, QLatin1String("meta-data"),
                                                                 QLatin1String(ShortcutFile::MetaData));
        const XmlElement *const root = metaData != nullptr ? package->details(*metaData) : nullptr;
        if (root == nullptr || visited.contains(root))
            continue;
        visited.insert(root);
        const QVector<ShortcutFile::Item> items = kind == EntryRule::Kind::Shortcut
                                                      ? ShortcutFile::shortcuts(*root, &known)
                                                      : ShortcutFile::shareTargets(*root);
        for (const ShortcutFile::Item &item : items) {
            if (entries.size() == Manifest::MaxEntries)
                return entries;
            entries.append(entryOf(package, kind, launcher));
            entries.last()->shortcut = item;
        }
    }
    return entries;
}

QVector<EntryDataPointer> entriesOf(const PackageDataPointer &package, EntryRule::Kind kind)
{
    const EntryRule *const rule = EntryRule::find(kind);
    if (kind == EntryRule::Kind::Shortcut || kind == EntryRule::Kind::DirectShare)
        return itemsOfDocuments(package, kind);
    QVector<EntryDataPointer> entries;
    if (rule == nullptr)
        return entries;
    for (const Manifest::EntryElements &elements : package->manifest().entries(*rule))
        entries.append(entryOf(package, kind, elements));
    return entries;
}

} // namespace

QList<Entry> Package::entries(Entry::Kind kind) const
{
    QList<Entry> entries;
    const QVector<EntryDataPointer> found = entriesOf(d, EntryRule::Kind(kind));
    for (const EntryDataPointer &data : found) {
        data->count = int(found.size());
        entries.append(Entry(data.data()));
    }
    return entries;
}

} // namespace SorrelKit
