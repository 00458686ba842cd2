// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCES_H
#define SORRELKIT_RESOURCES_H

#include <SorrelKit/Export.h>
#include <SorrelKit/Package.h>

#include <QSharedPointer>
#include <QString>
#include <QVector>

namespace SorrelKit {

class ResourcesData;

/**
 * The resources of a package and its splits: what there is, under which names, and every value of it. Tables are read
 * in every encoding that build tools write (`ResTable_header` and what follows in Android's ResourceTypes.h).
 *
 *     const Resources resources{Package(fileName)};
 *     for (quint32 id : resources.ids())
 *         print(resources.name(id), resources.defaultValue(id).text);
 *
 * Constructing an object reads nothing. The first query reads the package as Package does, and goes over its tables
 * once, to know where each value stands; that takes 12 bytes a value, which the object keeps. Values and names are
 * decoded when they are asked for.
 *
 * **Errors.** No query throws. A package that cannot be read, or has no table, has no resources: empty lists, empty
 * texts, 0. Package::error() tells what is wrong. Of a damaged table, what stands before the fault is answered.
 *
 * **Limits.** Names, texts and values that are beyond the ceilings of docs/limits.md are left out, or cut, and then
 * isComplete() is false; names that are too long count as missing.
 *
 * **Threads and copies.** Copies share what was found, and keep the package open, which is cheap. An object, its
 * copies and its package are used from one thread at a time. Answers are the caller's.
 *
 * @since 0.5.1
 */
class SORRELKIT_EXPORT Resources
{
public:
    /// One item of an array, a style, a plural or an attribute's description. @since 0.5.1
    struct Item {
        /// Of an array the index ("0"); of a plural the quantity ("other"); of a style the attribute, as name() has
        /// it, or its id ("0x010100d4") when the package has no such resource; of an attribute "type", "min", "max" or
        /// "l10n", or the id of one of its words ("id/left").
        QString name;
        QString type; ///< as Value::type
        QString text; ///< as Value::text
    };

    /// One value of a resource. @since 0.5.1
    struct Value {
        /// The qualifiers as a resource directory has them ("de-rAT-land-hdpi-v21", "b+sr+Latn"); empty for the
        /// default.
        QString configuration;
        /// "string", "reference", "attribute" (of the theme), "color", "dimension", "fraction", "float", "integer",
        /// "boolean", "null", or "map" for what has items; "type 0x09" for a type that has no word.
        QString type;
        /// As a resource file has it: a string as it is, which may be the path of a file in the package;
        /// "@string/name", or "@0x01040000" for what the package does not have; "?attr/name"; "#aarrggbb"; "48dp";
        /// "50%", and "50%p" of the parent; integers decimal or hexadecimal, as they are stored; "true"; "@null" and
        /// "@empty". Of a map a reference to its parent, as styles have it; empty without one.
        QString text;
        QVector<Item> items; ///< of a map, in the order of the table
    };

    /// The resources of @p package, a copy of which this object keeps. @since 0.5.1
    explicit Resources(const Package &package);
    /// A copy of @p other, with which it shares what was found, and the limits. @since 0.5.1
    Resources(const Resources &other);
    /// Becomes a copy of @p other, with which it shares what was found, and the limits. @since 0.5.1
    Resources &operator=(const Resources &other);
    /// Takes nothing from copies, nor from what was answered. @since 0.5.1
    ~Resources();

    /**
     * The ids (0xPPTTEEEE: package, type, entry) of all resources that have a value, each once, ascending; empty when
     * there are none. Goes over the values, up to two million of them, but decodes none.
     * @since 0.5.1
     */
    QVector<quint32> ids() const;

    /**
     * The name of the resource @p id: "string/app_name". One of a package in the tables that is not the application's
     * own, which is the first of the first table, has that package's name ahead: "com.example.library:string/ok".
     * Where the table keeps no name for the entry, its decimal number takes the place: "string/12"; so it does for
     * names of digits alone, and for the names that optimizers give to every resource. Where it keeps no name for the
     * type, this is the id: "0x7f010003".
     *
     * Empty when the resource has no value. Several resources may have one name. Costs a binary search. The characters
     * may be any that are in the file.
     * @since 0.5.1
     */
    QString name(quint32 id) const;

    /**
     * The id of the resource that @p reference means: "@string/app_name", "string/app_name", with a package as name()
     * has it or the application's own, "@string/12" with the entry as a decimal number, as ApkFile::getManifest() has
     * it, or an id, "0x7f010003" or "@0x7f010003". An entry of digits alone is a number. Of several resources of one
     * name the one with the lowest id.
     *
     * 0 when there is none that has a value. By name, decodes the names of all resources of the type.
     * @since 0.5.1
     */
    quint32 find(const QString &reference) const;

    /**
     * Every value of the resource @p id, base before splits, in the order of the tables; references are not followed.
     * Empty when there is no such resource.
     *
     * One answer has up to 65,536 items and 4,194,304 characters. What all calls take together is limited, too, so
     * that the values of all resources can be asked for whatever the package holds; beyond that, answers are empty.
     * @since 0.5.1
     */
    QVector<Value> values(quint32 id) const;

    /**
     * The value of values() without qualifiers, or the first when each has some; a value of empty texts when there is
     * no such resource. Costs less than all values, and counts for the same limits.
     * @since 0.5.1
     */
    Value defaultValue(quint32 id) const;

    /// Whether no limit has left anything out so far, of the tables or of an answer. @since 0.5.1
    bool isComplete() const;

private:
    ResourcesData &loaded() const;

    Package m_package;
    QSharedPointer<ResourcesData> d;
};

} // namespace SorrelKit

#endif
