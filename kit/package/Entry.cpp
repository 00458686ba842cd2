// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Entry.h>

#include "format/AndroidAttributes.h"
#include "language/LabelLookup.h"
#include "package/EntryData.h"
#include "package/IconFileData.h"

#include <QSet>

namespace SorrelKit {

namespace {

quint32 resourceOf(const XmlAttribute *attribute)
{
    return attribute != nullptr && attribute->value.isReference() ? attribute->value.data : 0;
}

} // namespace

Entry::Entry() : d(new EntryData) {}
Entry::Entry(EntryData *data) : d(data) {}
Entry::Entry(const Entry &other) = default;
Entry::Entry(Entry &&other) noexcept = default;
Entry &Entry::operator=(const Entry &other) = default;
Entry &Entry::operator=(Entry &&other) noexcept = default;
Entry::~Entry() = default;

Entry::Kind Entry::kind() const
{
    return Kind(d->kind);
}

QString Entry::id() const
{
    return d->shortcut.id;
}

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
    return d->isInDocument() ? d->shortcut.className : d->entry.className;
}

bool Entry::isAlias() const
{
    return d->entry.isAlias;
}

bool Entry::isEnabled() const
{
    return d->isValid() && d->package->isEnabled(*d->entry.component)
           && (!d->isInDocument() || d->package->isTrue(d->shortcut.element->attribute(Attr::Enabled), true));
}

bool Entry::isExported() const
{
    return d->isValid() && d->package->isExported(*d->entry.component);
}

bool Entry::isShown() const
{
    if (!isEnabled() || !isExported())
        return false;
    if (d->isInDocument())
        return d->shortcut.isTaken;
    const char *const required = EntryRule::find(d->kind)->permission;
    return required == nullptr || permission() == QLatin1String(required);
}

QString Entry::permission() const
{
    if (!d->isValid())
        return {};
    const XmlAttribute *const own = d->entry.component->attribute(Attr::Permission);
    if (own != nullptr || d->entry.isAlias)
        return d->package->text(own);
    return d->package->text(d->package->manifest().applicationAttribute(Attr::Permission));
}

QMap<QString, QString> Entry::labels() const
{
    return d->isValid() ? LabelLookup(d->package->resolver(), d->count).labels(d->innermost(Attr::Label))
                        : QMap<QString, QString>();
}

QString Entry::label(const QLocale &locale) const
{
    if (!d->isValid())
        return {};
    LabelLookup lookup(d->package->resolver(), d->count);
    const QString label = lookup.label(d->innermost(Attr::Label), LanguageTag(locale));
    return label.isEmpty() ? name() : label;
}

QString Entry::longLabel(const QLocale &locale) const
{
    if (d->kind != EntryRule::Kind::Shortcut)
        return {};
    LabelLookup lookup(d->package->resolver(), d->count);
    return lookup.label(d->shortcut.element->attribute(Attr::ShortcutLongLabel), LanguageTag(locale));
}

QStringList Entry::mimeTypes() const
{
    QStringList types;
    QSet<QString> known;
    const auto collect = [&](const XmlElement &parent) {
        for (const XmlElement &child : parent.children) {
            const QString type =
                child.name == QLatin1String("data") ? Manifest::text(child, Attr::MimeType) : QString();
            if (!type.isEmpty() && !known.contains(type))
                types.append(type);
            known.insert(type);
        }
    };
    if (d->kind == EntryRule::Kind::DirectShare)
        collect(*d->shortcut.element);
    if (d->kind != EntryRule::Kind::ShareTarget)
        return types;
    for (const XmlElement &filter : d->entry.component->children) {
        if (EntryRule::find(d->kind)->matches(filter))
            collect(filter);
    }
    return types;
}

QString Entry::defaultUrl() const
{
    return d->kind == EntryRule::Kind::Instant ? d->package->text(d->entry.filter->attribute(Attr::Value)) : QString();
}

quint32 Entry::detailsResource() const
{
    const XmlElement *const metaData = d->detailsElement();
    return metaData != nullptr ? resourceOf(metaData->attribute(Attr::Resource)) : 0;
}

QString Entry::settingsActivity() const
{
    const XmlElement *const metaData = d->detailsElement();
    const XmlElement *const root = metaData != nullptr ? d->package->details(*metaData) : nullptr;
    return root != nullptr ? d->package->text(root->attribute(Attr::SettingsActivity)) : QString();
}

quint32 Entry::iconResource() const
{
    return resourceOf(d->innermost(Attr::Icon));
}

quint32 Entry::roundIconResource() const
{
    return resourceOf(d->innermost(Attr::Icon, Attr::RoundIcon));
}

quint32 Entry::bannerResource() const
{
    return resourceOf(d->innermost(Attr::Banner));
}

quint32 Entry::logoResource() const
{
    return resourceOf(d->innermost(Attr::Logo));
}

QList<IconFile> Entry::iconFiles() const
{
    return filesOf(Attr::Icon);
}

QList<IconFile> Entry::bannerFiles() const
{
    return filesOf(Attr::Banner);
}

QList<IconFile> Entry::filesOf(quint32 attribute) const
{
    QList<IconFile> files;
    if (!d->isValid())
        return files;
    for (const IconFileLookup::File &found : d->package->iconFiles(d->innermost(attribute))) {
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
