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
 * (language, screen density and so on) that the package provides for.
 *
 * A resource is addressed by its id, a 32-bit number `0xPPTTEEEE` of package, type and entry (package 0x7f is the
 * application's own), or by its **reference text** `@type/entry` with the entry as a decimal number, such as
 * `@string/12`. The names of entries are not kept.
 *
 * Copies share their data, so that they are cheap; load() gives the object data of its own. The const operations only
 * read: copies of one value may be read in several threads at once. None of them fails loudly or throws, and none
 * sets an error code of an ApkFile: what cannot be answered is an empty list or map.
 *
 * @since 0.5
 */
class SORREL_EXPORT ApkResources
{
public:
    /// An empty table, not valid. @since 0.5
    ApkResources();
    /// A copy of @p other, with which it shares the table until either loads another. @since 0.5
    ApkResources(const ApkResources &other);
    /// Becomes a copy of @p other; what this object held before, its other copies keep. @since 0.5
    ApkResources &operator=(const ApkResources &other);
    /// Takes nothing from copies, nor from what was answered. @since 0.5
    ~ApkResources();

    /**
     * Reads a table from @p device, which is open and stands at the table's first byte (a member `resources.arsc`,
     * as a package has it). Replaces what the object held before; copies made earlier keep their content. Reads the
     * device once, to the table's end; the time and the memory taken follow the table's size.
     *
     * Returns isValid(). When the table is damaged, false, and a line on Qt's debug log tells why; what was read
     * before the fault can be looked up all the same. Once a load has succeeded, a later one that fails still answers
     * true, and holds what it read before the fault: use a new object for each table.
     *
     * The device stays the caller's, and may be gone when the call returns. A sequential device (a member of an
     * archive, a pipe) is read as it should be; on a random-access one (QFile, QBuffer) a skip within the table jumps
     * to the wrong place, which is kept for compatibility.
     * @since 0.5
     */
    bool load(QIODevice *device);

    /// Whether a load() has succeeded. @since 0.5
    bool isValid() const;

    /**
     * Decodes a binary XML document from @p device, which is open and stands at its first byte. References in
     * attribute values are rendered as this table names them.
     *
     * Sets @p ok, when it is not null, to whether the whole document was decoded. When it was not, a line on Qt's
     * debug log tells why, and the answer holds the elements before the fault (it may be a null document). The answer
     * is the caller's own. As with load(), the device should be sequential, and stays the caller's.
     * @since 0.5
     */
    QDomDocument loadXml(QIODevice *device, bool *ok) const;

    /**
     * The reference text of the resource id @p ref: "@string/5" for 0x7f010005, "@android:drawable/3" for one of
     * another package that the table holds. An id whose package the table lacks gives "@?" and 8 hexadecimal digits, of
     * which there are 16 when the top bit is set; one whose type that package lacks, "@#" and the digits. Whether the
     * entry exists is not looked at.
     * @since 0.5
     */
    QString refToString(int ref) const;

    /**
     * The text of a typed value, as it stands in the table or in a document: data type @p type (one of Android's
     * `Res_value` codes) and data word @p data. References, types 1 and 2, are rendered by refToString(); a string,
     * type 3, is taken from the table's pool; numbers, booleans and colours are spelled out; dimensions and fractions
     * are the data word as a decimal number.
     * @since 0.5
     */
    QString valueToString(int type, int data) const;

    /**
     * Every value of the resource with the reference text @p ref, in the order of the table, duplicates included. A
     * value that is a reference is answered as its reference text. A text that does not begin with "@" is its own
     * only value. Empty when the text is no reference or the resource has no simple value; also for a reference with a
     * package name ("@android:string/1"), which none of the lookups resolves.
     * @since 0.5
     */
    QStringList lookupAll(const QString &ref) const;

    /**
     * As lookupAll(), by configuration: the key is the configuration's qualifiers, as in the names of resource
     * directories ("de-rAT-land-hdpi"), empty for the default. Of two values for one configuration, the later counts.
     * @since 0.5
     */
    QMap<QString, QString> lookupAllByConfig(const QString &ref) const;

    /**
     * The values of the resource by locale ("de", "pt-BR", empty for the default), with references followed up to
     * @p depth levels deep; a reference below that is answered as its reference text. Of the values for one locale
     * that differ in other qualifiers, the first counts. When the default value is a reference, the locales that it
     * brings count before those of the resource's own later values. Depths above 64 count as 64, and an answer that
     * would take more than 131,072 values to look at is empty.
     * @since 0.5
     */
    QMap<QString, QString> lookupByLocale(const QString &ref, int depth) const;

private:
    friend class ApkResourcesData;

    QSharedDataPointer<ApkResourcesData> d;
};

#endif
