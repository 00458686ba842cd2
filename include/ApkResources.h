// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef APKRESOURCES_H
#define APKRESOURCES_H

#include "SorrelExport.h"

#include <QMap>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

class ApkResourcesData;
class QDomDocument;
class QIODevice;

/**
 * The resource table of a package: the values of every resource (texts, colours, file names) for each configuration
 * (language, screen density and so on).
 *
 * A resource is addressed by its id, a 32-bit number `0xPPTTEEEE` of package, type and entry (package 0x7f is the
 * application's own), or by its **reference text** `@type/entry` with the entry as a decimal number, such as
 * `@string/12`. The names of entries are not kept.
 *
 * Copies share their data and are cheap; load() gives the object data of its own. The const operations only read:
 * copies of one value may be read in several threads at once. None of them throws or sets an error code of an ApkFile;
 * a lookup that finds nothing returns an empty list or map.
 *
 * @since 0.5
 */
class SORREL_EXPORT ApkResources
{
public:
    /// An empty table, not valid. @since 0.5
    ApkResources();
    /// A copy of @p other; both share the table until one of them loads another. @since 0.5
    ApkResources(const ApkResources &other);
    /// Becomes a copy of @p other. Other copies of this object keep its earlier table. @since 0.5
    ApkResources &operator=(const ApkResources &other);
    /// Copies and returned values stay valid. @since 0.5
    ~ApkResources();

    /**
     * Reads a table from @p device, which is open and positioned at the table's first byte (a member `resources.arsc`
     * of a package). Replaces the object's table; copies keep theirs. Reads the device once, to the table's end; time
     * and memory are proportional to the table's size.
     *
     * Returns isValid(). For a damaged table that is false, and a line on Qt's debug log has the reason; the part
     * before the fault can be looked up all the same. After a load that succeeded, a later one that fails still returns
     * true, and the object has the part before the fault: use a new object for each table.
     *
     * The device stays the caller's, and may be destroyed when the call returns. Use a sequential device (a member of
     * an archive, a pipe): on a random-access one (QFile, QBuffer) a skip within the table jumps to the wrong place,
     * which is kept for compatibility.
     * @since 0.5
     */
    bool load(QIODevice *device);

    /// Whether a load() has succeeded. @since 0.5
    bool isValid() const;

    /**
     * Decodes a binary XML document from @p device, which is open and positioned at the document's first byte.
     * References in attribute values get the form that refToString() returns.
     *
     * Sets @p ok, when it is not null, to whether the whole document was decoded. When it was not, a line on Qt's debug
     * log has the reason, and the result holds the elements before the fault (it may be a null document). The result
     * belongs to the caller. As with load(), the device should be sequential, and stays the caller's.
     * @since 0.5
     */
    QDomDocument loadXml(QIODevice *device, bool *ok) const;

    /**
     * The reference text of the resource id @p ref: "@string/5" for 0x7f010005, "@android:drawable/3" for a resource of
     * another package in the table. For an id whose package is not in the table, "@?" and 8 hexadecimal digits, or 16
     * when the top bit is set; for an id whose type is not in its package, "@#" and the digits. Does not check whether
     * the entry exists.
     * @since 0.5
     */
    QString refToString(int ref) const;

    /**
     * The text of a typed value of a table or a document: data type @p type (one of Android's `Res_value` codes) and
     * data word @p data. References, types 1 and 2, have the form of refToString(); a string, type 3, comes from the
     * table's pool; numbers, booleans and colours are spelled out; dimensions and fractions are the data word as a
     * decimal number.
     * @since 0.5
     */
    QString valueToString(int type, int data) const;

    /**
     * Every value of the resource with the reference text @p ref, in the order of the table, duplicates included. A
     * value that is a reference is its reference text. A text that does not begin with "@" is its own only value. Empty
     * when the text is no reference or the resource has no simple value; also for a reference with a package name
     * ("@android:string/1"), which none of the lookups resolves.
     * @since 0.5
     */
    QStringList lookupAll(const QString &ref) const;

    /**
     * The same values by configuration: the key is the configuration's qualifiers, as in the names of resource
     * directories ("de-rAT-land-hdpi"), empty for the default. Of two values for one configuration, the later one.
     * @since 0.5
     */
    QMap<QString, QString> lookupAllByConfig(const QString &ref) const;

    /**
     * The values of the resource by locale ("de", "pt-BR", empty for the default), with references followed up to
     * @p depth levels deep; a reference below that is its reference text. Of the values for one locale that differ in
     * other qualifiers, the first one. When the default value is a reference, the locales of its target precede those
     * of the resource's own later values. Depths above 64 count as 64. Empty when the lookup would look at more than
     * 131,072 values.
     * @since 0.5
     */
    QMap<QString, QString> lookupByLocale(const QString &ref, int depth) const;

private:
    friend class ApkResourcesData;

    QSharedDataPointer<ApkResourcesData> d;
};

#endif
