// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Entry.h>

#include "format/AndroidAttributes.h"
#include "language/LabelLookup.h"
#include "package/EntryData.h"
#include "package/IconFileData.h"

namespace SorrelKit {

Entry::Entry() : d(new EntryData) {}
Entry::Entry(EntryData *data) : d(data) {}
Entry::Entry(const Entry &other) = default;
Entry::Entry(Entry &&other) noexcept = default;
Entry &Entry::operator=(const Entry &other) = default;
Entry &Entry::operator=(Entry &&other) noexcept = default;
Entry::~Entry() = default;

QString Entry::packageName() const
{
    return d->isValid() ? d->package->manifest().packageName() : QString();
}

QString Entry::name() const
{
    return d->entry.name;
}

QString Entry::className() const
{
    return d->entry.className;
}

bool Entry::isAlias() const
{
    return d->entry.isAlias;
}

bool Entry::isEnabled() const
{
    return d->isValid() && d->package->isEnabled(*d->entry.activity);
}

bool Entry::isExported() const
{
    return d->isValid() && d->package->isExported(*d->entry.activity);
}

bool Entry::isShown() const
{
    return isEnabled() && isExported();
}

QMap<QString, QString> Entry::labels() const
{
    return d->isValid() ? LabelLookup(d->package->resolver(), d->launcherCount).labels(d->innermost(Attr::Label))
                        : QMap<QString, QString>();
}

QString Entry::label(const QLocale &locale) const
{
    if (!d->isValid())
        return {};
    LabelLookup lookup(d->package->resolver(), d->launcherCount);
    const QString label = lookup.label(d->innermost(Attr::Label), LanguageTag(locale));
    return label.isEmpty() ? name() : label;
}

quint32 Entry::iconResource() const
{
    const XmlAttribute *const icon = d->innermost(Attr::Icon);
    return icon != nullptr && icon->value.isReference() ? icon->value.data : 0;
}

QList<IconFile> Entry::iconFiles() const
{
    QList<IconFile> files;
    if (!d->isValid())
        return files;
    for (const IconFileLookup::File &found : d->package->iconFiles(d->innermost(Attr::Icon))) {
        IconFile file;
        file.d->path = found.path.path;
        file.d->isOfPlatform = found.path.owner == ResourceOwner::Platform;
        file.d->kind = found.kind;
        file.d->size = found.size;
        file.d->density = found.density;
        files.append(file);
    }
    return files;
}

} // namespace SorrelKit
