// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCEVALUE_H
#define SORRELKIT_RESOURCEVALUE_H

#include <SorrelKit/KitCoreExport.h>
#include <SorrelKit/ResourceItem.h>

#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class ResourceValueData;

/**
 * One value of a resource, for one configuration. Resources::values() returns these.
 *
 * The values stay valid when the package is gone. Copies share their data and are cheap. Every operation takes constant
 * time and cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT ResourceValue
{
    Q_GADGET
    Q_PROPERTY(QString configuration READ configuration CONSTANT)
    Q_PROPERTY(SorrelKit::ResourceItem::Type type READ type CONSTANT)
    Q_PROPERTY(QString typeName READ typeName CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)
    Q_PROPERTY(QList<SorrelKit::ResourceItem> items READ items CONSTANT)

public:
    /// Types of values. Type::Map is for a value that has items. @since 0.5.1
    using Type = ResourceItem::Type;

    /// A value of empty texts and of no type. @since 0.5.1
    ResourceValue();
    /// A copy of @p other. @since 0.5.1
    ResourceValue(const ResourceValue &other);
    /// Takes the value of @p other. @since 0.5.1
    ResourceValue(ResourceValue &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    ResourceValue &operator=(const ResourceValue &other);
    /// Takes the value of @p other. @since 0.5.1
    ResourceValue &operator=(ResourceValue &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~ResourceValue();
    /// Exchanges two values. @since 0.5.1
    void swap(ResourceValue &other) noexcept { d.swap(other.d); }

    /// The qualifiers in the form of a resource directory ("de-rAT-land-hdpi-v21", "b+sr+Latn"); empty for the default.
    /// @since 0.5.1
    QString configuration() const;
    /// The type of the value. @since 0.5.1
    Type type() const;
    /// The English word for type() ("dimension", "map"); "type 0x09" for an unknown type; empty for a value of nothing.
    /// @since 0.5.1
    QString typeName() const;
    /**
     * The value in the form of a resource file:
     * - a string unchanged, which may be the path of a file in the package;
     * - a reference as "@string/name", or "@0x01040000" when the package does not have the resource;
     * - an attribute of the theme as "?attr/name";
     * - a colour as "#aarrggbb", a dimension as "48dp", a fraction as "50%", or "50%p" for one of the parent;
     * - integers decimal or hexadecimal, as they are stored, and "true" or "false";
     * - no value as "@null", an empty one as "@empty";
     * - for a map a reference to its parent, as styles have it, or an empty text.
     * @since 0.5.1
     */
    QString text() const;
    /// The items of a map, in the order of the table; empty for every other type. @since 0.5.1
    QList<ResourceItem> items() const;

private:
    friend class ResourcesData;
    ResourceValue(const QString &configuration, Type type, const QString &typeName, const QString &text,
                  const QList<ResourceItem> &items);

    QSharedDataPointer<ResourceValueData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::ResourceValue)
Q_DECLARE_METATYPE(SorrelKit::ResourceValue)

#endif
