// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/ResourceValue.h>

#include <QSharedData>

namespace SorrelKit {

class ResourceValueData : public QSharedData
{
public:
    QString configuration;
    ResourceValue::Type type = ResourceValue::Type::Unknown;
    QString typeName;
    QString text;
    QList<ResourceItem> items;
};

ResourceValue::ResourceValue() : d(new ResourceValueData) {}
ResourceValue::ResourceValue(const QString &configuration, Type type, const QString &typeName, const QString &text,
                             const QList<ResourceItem> &items)
    : d(new ResourceValueData)
{
    d->configuration = configuration;
    d->type = type;
    d->typeName = typeName;
    d->text = text;
    d->items = items;
}

ResourceValue::ResourceValue(const ResourceValue &other) = default;
ResourceValue::ResourceValue(ResourceValue &&other) noexcept = default;
ResourceValue &ResourceValue::operator=(const ResourceValue &other) = default;
ResourceValue &ResourceValue::operator=(ResourceValue &&other) noexcept = default;
ResourceValue::~ResourceValue() = default;

QString ResourceValue::configuration() const
{
    return d->configuration;
}

ResourceValue::Type ResourceValue::type() const
{
    return d->type;
}

QString ResourceValue::typeName() const
{
    return d->typeName;
}

QString ResourceValue::text() const
{
    return d->text;
}

QList<ResourceItem> ResourceValue::items() const
{
    return d->items;
}

} // namespace SorrelKit
