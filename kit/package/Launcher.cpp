// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Launcher.h>

#include "format/AndroidAttributes.h"
#include "language/LabelLookup.h"
#include "package/IconFileData.h"
#include "package/LauncherData.h"

namespace SorrelKit {

Launcher::Launcher() : d(new LauncherData) {}
Launcher::Launcher(LauncherData *data) : d(data) {}
Launcher::Launcher(const Launcher &other) = default;
Launcher::Launcher(Launcher &&other) noexcept = default;
Launcher &Launcher::operator=(const Launcher &other) = default;
Launcher &Launcher::operator=(Launcher &&other) noexcept = default;
Launcher::~Launcher() = default;

QString Launcher::packageName() const
{
    return d->isValid() ? d->package->manifest().packageName() : QString();
}

QString Launcher::name() const
{
    return d->entry.name;
}

QString Launcher::className() const
{
    return d->entry.className;
}

bool Launcher::isAlias() const
{
    return d->entry.isAlias;
}

bool Launcher::isEnabled() const
{
    return d->isValid() && d->package->isEnabled(*d->entry.activity);
}

bool Launcher::isExported() const
{
    return d->isValid() && d->package->isExported(*d->entry.activity);
}

bool Launcher::isShown() const
{
    return isEnabled() && isExported();
}

QMap<QString, QString> Launcher::labels() const
{
    return d->isValid() ? LabelLookup(d->package->resolver(), d->launcherCount).labels(d->innermost(Attr::Label))
                        : QMap<QString, QString>();
}

QString Launcher::label(const QLocale &locale) const
{
    if (!d->isValid())
        return {};
    LabelLookup lookup(d->package->resolver(), d->launcherCount);
    const QString label = lookup.label(d->innermost(Attr::Label), LanguageTag(locale));
    return label.isEmpty() ? name() : label;
}

quint32 Launcher::iconResource() const
{
    const XmlAttribute *const icon = d->innermost(Attr::Icon);
    return icon != nullptr && icon->value.isReference() ? icon->value.data : 0;
}

QList<IconFile> Launcher::iconFiles() const
{
    QList<IconFile> files;
    if (!d->isValid())
        return files;
    for (const IconFileLookup::File &found : d->package->iconFiles(d->innermost(Attr::Icon))) {
        IconFile file;
        file.d->path = found.path;
        file.d->kind = found.kind;
        file.d->size = found.size;
        file.d->density = found.density;
        files.append(file);
    }
    return files;
}

} // namespace SorrelKit
