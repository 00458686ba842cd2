// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Resources.h>

#include "package/PackageData.h"
#include "resources/ResourcesData.h"

namespace SorrelKit {

Resources::Resources(const Package &package) : m_package(package), d(new ResourcesData) {}

Resources::Resources(const Resources &other) = default;
Resources &Resources::operator=(const Resources &other) = default;
Resources::~Resources() = default;

ResourcesData &Resources::loaded() const
{
    if (!d->isLoaded())
        d->load(m_package.loaded().tables());
    return *d;
}

QVector<quint32> Resources::ids() const
{
    return loaded().index().ids();
}

QString Resources::name(quint32 id) const
{
    return loaded().names().name(id);
}

quint32 Resources::find(const QString &reference) const
{
    return loaded().names().find(reference);
}

QVector<Resources::Value> Resources::values(quint32 id) const
{
    return loaded().values(id);
}

Resources::Value Resources::defaultValue(quint32 id) const
{
    return loaded().defaultValue(id);
}

bool Resources::isComplete() const
{
    return loaded().isComplete();
}

} // namespace SorrelKit
