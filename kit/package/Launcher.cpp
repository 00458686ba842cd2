// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Launcher.h>

#include "format/AndroidAttributes.h"
#include "icon/IconRenderer.h"
#include "language/LabelLookup.h"
#include "package/LauncherData.h"

namespace SorrelKit {

const XmlAttribute *LauncherData::innermost(quint32 id) const
{
    if (!isValid())
        return nullptr;
    for (const XmlElement *element : {entry.filter, entry.activity, entry.target, package->manifest().application()}) {
        const XmlAttribute *const attribute = element != nullptr ? element->attribute(id) : nullptr;
        if (attribute != nullptr)
            return attribute;
    }
    return nullptr;
}

bool LauncherData::isTrue(const XmlElement *element, quint32 id) const
{
    const XmlAttribute *const attribute = element != nullptr ? element->attribute(id) : nullptr;
    return package->isTrue(attribute, true);
}

Launcher::Launcher() : d(new LauncherData) {}
Launcher::Launcher(LauncherData *data) : d(data) {}
Launcher::Launcher(const Launcher &other) = default;
Launcher &Launcher::operator=(const Launcher &other) = default;
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
    return d->isValid() && d->isTrue(d->entry.activity, Attr::Enabled)
           && d->isTrue(d->package->manifest().application(), Attr::Enabled);
}

bool Launcher::isExported() const
{
    return d->isValid() && d->isTrue(d->entry.activity, Attr::Exported);
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

QVector<IconFile> Launcher::iconFiles() const
{
    return d->isValid() ? d->package->iconFiles(d->innermost(Attr::Icon)) : QVector<IconFile>();
}

QImage Launcher::icon(int size, IconMask mask, QString *error) const
{
    if (d->isValid())
        return d->package->icon(d->innermost(Attr::Icon), size, mask, error);
    if (error != nullptr)
        *error = QStringLiteral("there is no icon");
    return {};
}

} // namespace SorrelKit
