// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCES_H
#define SORRELKIT_RESOURCES_H

#include <SorrelKit/KitCoreExport.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/ResourceValue.h>

#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QString>

namespace SorrelKit {

class ResourcesPrivate;

/**
 * The resources of a package and its splits: their ids, their names, and every value. Tables are read in every encoding
 * that build tools write (`ResTable_header` and the structures behind it in Android's ResourceTypes.h).
 *
 *     const Resources resources{Package(fileName)};
 *     for (quint32 id : resources.ids())
 *         print(resources.name(id), resources.defaultValue(id).text());
 *
 * Constructing an object reads nothing. The first query reads the package's manifest and its resource table, unless an
 * earlier query did, and no other member. It goes over the table once to note the place of each value; the object keeps
 * these notes, 12 bytes for each value. Values and names are decoded on each call.
 *
 * **Errors.** No query throws. A package that cannot be read, or has no table, has no resources: empty lists, empty texts,
 * 0. Package::error() returns the reason. Of a damaged table, the part before the fault is used.
 *
 * **Limits.** Names, texts and values beyond the limits in docs/limits.md are left out or cut, and isComplete() then
 * returns false. A name that is too long counts as missing.
 *
 * **Threads and copies.** Copies are cheap: they share the package, which stays open, and what was read. Use an object,
 * its copies and its package from one thread at a time. Returned values belong to the caller.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Resources
{
public:
    /// The resources of @p package. This object keeps a copy of it. @since 0.5.1
    explicit Resources(const Package &package);
    /// A copy of @p other. @since 0.5.1
    Resources(const Resources &other);
    /// Takes the value of @p other. @since 0.5.1
    Resources(Resources &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Resources &operator=(const Resources &other);
    /// Takes the value of @p other. @since 0.5.1
    Resources &operator=(Resources &&other) noexcept;
    /// Copies and returned values stay valid. @since 0.5.1
    ~Resources();
    /// Exchanges two objects. @since 0.5.1
    void swap(Resources &other) noexcept { d.swap(other.d); }

    /**
     * The ids (0xPPTTEEEE: package, type, entry) of all resources that have a value, each once, in ascending order;
     * empty when there are none. Goes over the values, up to two million of them, but decodes none.
     * @since 0.5.1
     */
    QList<quint32> ids() const;

    /**
     * The name of the resource @p id: "string/app_name". The name of another package precedes it
     * ("com.example.library:string/ok"); the application's own package is the first one of the first table. The entry's
     * decimal number ("string/12") replaces a name that is missing, consists of digits alone, or is the one that
     * optimizers give to every resource. Returns the id ("0x7f010003") when the type has no name.
     *
     * A resource of the package's platform has a name as well ("android:string/ok").
     *
     * Empty when the resource has no value. Several resources may have one name. A name may contain any characters.
     * Costs a binary search.
     * @since 0.5.1
     */
    QString name(quint32 id) const;

    /**
     * The id of the resource that @p reference names: "@string/app_name"; "string/app_name"; either of them with a
     * package, as name() returns it; "@string/12" with the entry's decimal number, as ApkFile::getManifest() has it; or
     * an id, "0x7f010003" or "@0x7f010003". An entry of digits alone is a number. Of several resources of one name, the
     * one with the lowest id.
     *
     * 0 when no such resource has a value. A search by name decodes the names of all resources of the type.
     * @since 0.5.1
     */
    quint32 find(const QString &reference) const;

    /**
     * Every value of the resource @p id, base before splits, in the order of the tables; references are not followed.
     * Empty when there is no such resource.
     *
     * One call returns up to 65,536 items and 4,194,304 characters. All calls together are limited, too, far above what
     * reading the values of all resources once takes; beyond that limit the list is empty. Decodes the values on each
     * call.
     * @since 0.5.1
     */
    QList<ResourceValue> values(quint32 id) const;

    /**
     * The one of values() without qualifiers, or the first when all have some. A value of empty texts when there is no
     * such resource. Costs less than values(), and counts against the same limits.
     * @since 0.5.1
     */
    ResourceValue defaultValue(quint32 id) const;

    /// Whether no limit has left anything out so far, of the tables or of a returned value. @since 0.5.1
    bool isComplete() const;

private:
    QExplicitlySharedDataPointer<ResourcesPrivate> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Resources)

#endif
