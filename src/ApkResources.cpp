// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkResources.h"

#include "document/XmlLoader.h"
#include "stream/Extractor.h"
#include "table/ApkResourcesData.h"
#include "table/LocaleLookup.h"
#include "table/ResourceReference.h"
#include "table/ResourcesLoader.h"

#include <QDomDocument>

ApkResources::ApkResources() : d(new ApkResourcesData) {}

ApkResources::ApkResources(const ApkResources &other) = default;

ApkResources &ApkResources::operator=(const ApkResources &other) = default;

ApkResources::~ApkResources() = default;

const ApkResourcesData &ApkResourcesData::of(const ApkResources &resources)
{
    return *resources.d;
}

bool ApkResources::load(QIODevice *device)
{
    Extractor reader(device);
    ResourcesLoader().load(d.data(), &reader);
    return isValid();
}

bool ApkResources::isValid() const
{
    return d->valid;
}

QDomDocument ApkResources::loadXml(QIODevice *device, bool *ok) const
{
    Extractor reader(device);
    XmlLoader loader;
    loader.load(&reader, *this);
    if (ok != nullptr)
        *ok = !reader.failed();
    return loader.document();
}

QString ApkResources::refToString(int ref) const
{
    return d->refToString(ref);
}

QString ApkResources::valueToString(int type, int data) const
{
    return d->valueToString(type, data);
}

QStringList ApkResources::lookupAll(const QString &ref) const
{
    if (!ResourceReference::isMarked(ref))
        return {ref};
    const ResourceReference reference(ref, *d);
    if (reference.package() == nullptr)
        return {};
    return reference.package()->lookupAll(reference.type(), reference.entry(), *this);
}

QMap<QString, QString> ApkResources::lookupAllByConfig(const QString &ref) const
{
    if (!ResourceReference::isMarked(ref))
        return {{QString(), ref}};
    const ResourceReference reference(ref, *d);
    if (reference.package() == nullptr)
        return {};
    return reference.package()->lookupAllByConfig(reference.type(), reference.entry(), *this);
}

QMap<QString, QString> ApkResources::lookupByLocale(const QString &ref, int depth) const
{
    return LocaleLookup(*d).byReference(ref, depth);
}
