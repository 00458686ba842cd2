// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/ResourceItem.h>

#include <QSharedData>

namespace SorrelKit {

class ResourceItemData : public QSharedData
{
public:
    QString name;
    ResourceItem::Type type = ResourceItem::Type::Unknown;
    QString typeName;
    QString text;
};

ResourceItem::ResourceItem() : d(new ResourceItemData) {}
ResourceItem::ResourceItem(const QString &name, Type type, const QString &typeName, const QString &text)
    : d(new ResourceItemData)
{
    d->name = name;
    d->type = type;
    d->typeName = typeName;
    d->text = text;
}

ResourceItem::ResourceItem(const ResourceItem &other) = default;
ResourceItem::ResourceItem(ResourceItem &&other) noexcept = default;
ResourceItem &ResourceItem::operator=(const ResourceItem &other) = default;
ResourceItem &ResourceItem::operator=(ResourceItem &&other) noexcept = default;
ResourceItem::~ResourceItem() = default;

QString ResourceItem::name() const
{
    return d->name;
}

ResourceItem::Type ResourceItem::type() const
{
    return d->type;
}

QString ResourceItem::typeName() const
{
    return d->typeName;
}

QString ResourceItem::text() const
{
    return d->text;
}

} // namespace SorrelKit
