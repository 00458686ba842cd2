// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkResources.h"

#include "document/XmlLoader.h"
#include "format/ResourceTypes.h"
#include "stream/Extractor.h"
#include "stream/TwosComplement.h"
#include "table/ApkResourcesData.h"
#include "table/LocaleLookup.h"
#include "table/ResourceReference.h"
#include "table/ResourcesLoader.h"

#include <QDomDocument>

#include <utility>

ApkResources::ApkResources() : d(new ApkResourcesData) {}

ApkResources::ApkResources(const ApkResources &other) = default;

ApkResources &ApkResources::operator=(const ApkResources &other) = default;

ApkResources::~ApkResources() = default;

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
    const int packageId = ResourceId::package(quint32(ref));
    for (const ResourcePackage &package : std::as_const(d->packages)) {
        if (package.id() == packageId)
            return package.refToString(ref);
    }
    return QStringLiteral("@?%1").arg(twosComplement(ref), 8, 16, QLatin1Char('0'));
}

QString ApkResources::valueToString(int type, int data) const
{
    if (type == int(ValueType::Reference) || type == int(ValueType::Attribute))
        return refToString(data);
    return d->stringPool.valueToString(type, data);
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
    return LocaleLookup(*this).byReference(ref, depth);
}
