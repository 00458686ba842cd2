// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef APKFILE_H
#define APKFILE_H

#include "ApkLauncherInfo.h"
#include "ApkResources.h"
#include "SorrelExport.h"

#include <QDomDocument>
#include <QList>
#include <QObject>
#include <QString>

class ApkFilePrivate;
class QIODevice;

/**
 * One Android application package (APK): a ZIP archive named by a file name or given as a device.
 *
 * Constructing an object opens and reads nothing. The first query that needs it opens the archive, parses the
 * resource table (`resources.arsc`) and decodes the manifest (`AndroidManifest.xml`); both are kept, so every later
 * query is answered from memory. A part that could not be read is tried again by the next query that needs it.
 *
 * **Errors.** No query throws. A failure is reported by the value that the query documents, and by a code that
 * getError() returns and getErrorString() puts into words:
 *
 * | code | text                                  | set by                                         |
 * |------|---------------------------------------|------------------------------------------------|
 * | 0    | "no error"                            | nothing: the value that a new object starts with |
 * | 1    | "could not open APK file"             | open(), and every query that opens the archive |
 * | 2    | "could not find resources.arsc"       | resources() and the queries that need it       |
 * | 3    | "could not parse resources.arsc"      | resources() and the queries that need it       |
 * | 4    | "could not find AndroidManifest.xml"  | getManifest() and the queries that need it     |
 * | 5    | "could not parse AndroidManifest.xml" | getManifest() and the queries that need it     |
 *
 * A new failure replaces the code of an earlier one, and a success never resets it: the code tells of the most recent
 * failure, not of the most recent call.
 *
 * **Limits.** What a stranger's package can make the library take is limited, far above what real ones need: in memory,
 * in time and in stack. docs/limits.md lists the limits, and SECURITY.md says what a host may rely on.
 *
 * **Threads.** An object, and what it hands out, is used from one thread at a time, except that copies of its table
 * may be read in several (see ApkResources); different objects may be used in different threads. Const queries fill
 * caches and set the error code, without a lock.
 *
 * @since 0.5
 */
class SORREL_EXPORT ApkFile : public QObject
{
    Q_OBJECT

public:
    /**
     * A package in the file @p fileName. The file need not exist yet: the first query that opens it finds out. The
     * object belongs to @p parent, which destroys it, or to the caller when that is null.
     * @since 0.5
     */
    explicit ApkFile(const QString &fileName, QObject *parent = nullptr);

    /**
     * A package held by @p device, which must be random-access and not open: the archive opens it on first use, and
     * closes it when this object is destroyed. A device that is open already is taken for an archive that is open
     * already (see isOpen()), and no member is found in it.
     *
     * The device stays the caller's, and must outlive this object, which belongs to @p parent, or to the caller when
     * that is null.
     * @since 0.5
     */
    explicit ApkFile(QIODevice *device, QObject *parent = nullptr);

    /// Closes the archive. Values handed out earlier (documents, tables, launchers) stay valid. @since 0.5
    ~ApkFile() override;

    /**
     * Whether the archive is open. When it is not, but was made on a device, whether that device is open: a device
     * that the caller opened counts as an opened archive. Costs nothing, sets no code.
     * @since 0.5
     */
    bool isOpen() const;

    /**
     * Opens the archive and reads the end of its directory, unless isOpen() is true already; there is no need to call
     * this, as every query does. Returns false and sets code 1 when there is no such file, it cannot be read, it is no
     * regular file or no ZIP archive, or the device is sequential. The archive stays open until the object is destroyed.
     * @since 0.5
     */
    bool open();

    /// The code of the most recent failure (table above), or 0 when nothing has failed yet. Reads nothing. @since 0.5
    int getError() const;

    /// The text of getError(), in English; "unknown error" for a code that is not in the table. @since 0.5
    QString getErrorString() const;

    /**
     * The resource table of the package; a copy that shares its data and outlives this object.
     *
     * The first call opens the archive, and reads and parses all of `resources.arsc`; later ones cost nothing. When
     * the table cannot be had, ApkResources::isValid() of the answer is false, code 1, 2 or 3 is set, and the next
     * call tries again.
     * @since 0.5
     */
    ApkResources resources() const;

    /**
     * The manifest, decoded into elements and attributes; there is no text, comment or declaration in it. Attributes
     * of Android's are in the namespace `http://schemas.android.com/apk/res/android`; their values are texts, with
     * references in the form `@string/12` that ApkResources::lookupAll() and its like resolve.
     *
     * The first call loads the resource table as resources() does, then reads and decodes `AndroidManifest.xml`;
     * later ones cost nothing. **A QDomDocument copy shares its tree: who edits the answer edits the cache**, and so
     * every later answer of this object. Use QDomDocument::cloneNode() for a document of your own.
     *
     * When the manifest cannot be had, the answer is a document whose only element, `error`, holds the text of the
     * code that was set: 1, 2 or 3 (a package without a readable resource table has no readable manifest either), 4
     * or 5. The next call tries again.
     * @since 0.5
     */
    QDomDocument getManifest() const;

    /**
     * Package name of the application ("org.example.notes"): the attribute `package` of the manifest's root. Loads
     * the manifest on first use, and sets the codes that getManifest() sets. When the manifest could not be decoded
     * to its end, the answer comes from the part that was decoded, and is an empty string when there is none.
     * @since 0.5
     */
    QString mainPackage();

    /**
     * The lowest Android API level that the application runs on: `minSdkVersion` of the first `uses-sdk` element that
     * has it. 1 when no element has it, or the manifest cannot be had; 0 when its text is not a decimal number (a
     * preview's code name, a reference). Loads the manifest on first use, and sets the codes that getManifest() sets.
     * @since 0.5
     */
    int minSdkVersion() const;

    /**
     * The entries that a home screen shows for this package: one for each intent filter of an activity, or activity
     * alias, that has the action `android.intent.action.MAIN` and the category `android.intent.category.LAUNCHER`, in
     * the order of the manifest. An activity with two such filters gives two entries.
     *
     * With @p includeDisabled false, entries that Android would not show are left out: those whose activity or
     * application has `enabled="false"` (the activity's may be a reference, the application's is taken as written),
     * and activities with `exported="false"`, as written. With true, all are returned.
     *
     * Loads the manifest on first use; every call then resolves labels and icons anew, and reads and decodes each
     * icon file once. An icon that cannot be read or decoded (an XML drawable, a format other than PNG, JPEG, GIF,
     * WebP, BMP and ICO, a picture that would take too much memory) is left out without an error. So are labels and icons
     * that lead through more references and values than any package of a build tool has, and entries after four
     * million characters of class names. When the manifest cannot be had the list is empty, and getError() tells why.
     * @since 0.5
     */
    QList<ApkLauncherInfo> getLauncherInfo(bool includeDisabled);

private:
    Q_DISABLE_COPY(ApkFile)

    ApkFilePrivate *d;
};

#endif
