// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Resources.h>

#include "package/PackageAccess.h"
#include "resources/ResourcesData.h"

#include <utility>

namespace SorrelKit {

class ResourcesPrivate : public QSharedData
{
public:
    explicit ResourcesPrivate(PackageDataPointer owner) : package(std::move(owner)), platform(package->platform()) {}

    ResourcesData &loaded()
    {
        if (!resources.isLoaded())
            resources.load(package->tables(), platform.data());
        return resources;
    }

private:
    PackageDataPointer package;
    PlatformDataPointer platform; ///< stays when the package gets another one
    ResourcesData resources;
};

Resources::Resources(const Package &package) : d(new ResourcesPrivate(PackageAccess::data(package))) {}
Resources::Resources(const Resources &other) = default;
Resources::Resources(Resources &&other) noexcept = default;
Resources &Resources::operator=(const Resources &other) = default;
Resources &Resources::operator=(Resources &&other) noexcept = default;
Resources::~Resources() = default;

QList<quint32> Resources::ids() const
{
    return d->loaded().index().ids();
}

QString Resources::name(quint32 id) const
{
    return d->loaded().names().name(id);
}

quint32 Resources::find(const QString &reference) const
{
    return d->loaded().names().find(reference);
}

QList<ResourceValue> Resources::values(quint32 id) const
{
    return d->loaded().values(id);
}

ResourceValue Resources::defaultValue(quint32 id) const
{
    return d->loaded().defaultValue(id);
}

bool Resources::isComplete() const
{
    return d->loaded().isComplete();
}

} // namespace SorrelKit
