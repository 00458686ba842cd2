// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCEITEM_H
#define SORRELKIT_RESOURCEITEM_H

#include <SorrelKit/KitCoreExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class ResourceItemData;

/**
 * One item of an array, a style, a plural or an attribute's description. ResourceValue::items() returns these.
 *
 * The values stay valid when the package is gone. Copies share their data and are cheap. Every operation takes constant
 * time and cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT ResourceItem
{
    Q_GADGET
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(Type type READ type CONSTANT)
    Q_PROPERTY(QString typeName READ typeName CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)

public:
    /// Types of values. New ones may be added. @since 0.5.1
    enum class Type {
        Unknown,   ///< a data type without a meaning here
        Null,      ///< no value, or an empty one
        Reference, ///< a resource
        Attribute, ///< an attribute of the theme
        String,    ///< a text, which may be the path of a file in the package
        Float,     ///< a floating-point number
        Dimension, ///< a length with a unit
        Fraction,  ///< a percentage
        Integer,   ///< an integer
        Boolean,   ///< true or false
        Color,     ///< a colour
        Map,       ///< items in place of a single value
    };
    Q_ENUM(Type)

    /// An item without a name, a text and a type. @since 0.5.1
    ResourceItem();
    /// A copy of @p other. @since 0.5.1
    ResourceItem(const ResourceItem &other);
    /// Takes the value of @p other. @since 0.5.1
    ResourceItem(ResourceItem &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    ResourceItem &operator=(const ResourceItem &other);
    /// Takes the value of @p other. @since 0.5.1
    ResourceItem &operator=(ResourceItem &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~ResourceItem();
    /// Exchanges the values of two items. @since 0.5.1
    void swap(ResourceItem &other) noexcept { d.swap(other.d); }

    /**
     * For an array the index ("0"); for a plural the quantity ("other"); for a style the attribute, in the form of
     * Resources::name(), or its id ("0x010100d4") when the package has no such resource; for an attribute "type",
     * "min", "max" or "l10n", or the name of one of its words ("id/left").
     * @since 0.5.1
     */
    QString name() const;
    /// The type of the value. @since 0.5.1
    Type type() const;
    /// The English word for type() ("dimension"); "type 0x09" for an unknown type; empty for an item of nothing.
    /// @since 0.5.1
    QString typeName() const;
    /// The value, in the form of ResourceValue::text(). @since 0.5.1
    QString text() const;

private:
    friend class ResourcesData;
    ResourceItem(const QString &name, Type type, const QString &typeName, const QString &text);

    QSharedDataPointer<ResourceItemData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::ResourceItem)
Q_DECLARE_METATYPE(SorrelKit::ResourceItem)

#endif
