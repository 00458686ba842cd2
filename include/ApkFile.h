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
 * Constructing an object opens and reads nothing. The first query that needs them opens the archive, parses the
 * resource table (`resources.arsc`) and decodes the manifest (`AndroidManifest.xml`); both are kept, so later queries
 * read nothing. The next query that needs a part which could not be read tries again.
 *
 * **Errors.** No query throws. Each query documents the value for a failure, and getError() returns a code, which
 * getErrorString() returns as text:
 *
 * | code | text                                  | set by                                         |
 * |------|---------------------------------------|------------------------------------------------|
 * | 0    | "no error"                            | nothing: a new object has this code            |
 * | 1    | "could not open APK file"             | open(), and every query that opens the archive |
 * | 2    | "could not find resources.arsc"       | resources() and the queries that need it       |
 * | 3    | "could not parse resources.arsc"      | resources() and the queries that need it       |
 * | 4    | "could not find AndroidManifest.xml"  | getManifest() and the queries that need it     |
 * | 5    | "could not parse AndroidManifest.xml" | getManifest() and the queries that need it     |
 *
 * A new failure replaces the code of an earlier one. A success never resets it: the code is that of the most recent
 * failure, not of the most recent call.
 *
 * **Limits.** Memory, time and stack are limited for any package, far above the needs of real ones. docs/limits.md lists
 * the limits, and SECURITY.md describes the guarantees for hosts.
 *
 * **Threads.** Use an object, and the values that it returns, from one thread at a time; only copies of its table may be
 * read in several threads (see ApkResources). Different objects may be used in different threads. Const queries fill
 * caches and set the error code, without a lock.
 *
 * @since 0.5
 */
class SORREL_EXPORT ApkFile : public QObject
{
    Q_OBJECT

public:
    /**
     * A package in the file @p fileName. The file need not exist yet: the first query opens it. The object belongs to
     * @p parent, which destroys it, or to the caller when @p parent is null.
     * @since 0.5
     */
    explicit ApkFile(const QString &fileName, QObject *parent = nullptr);

    /**
     * A package on @p device, which must be random-access and not open: the first query opens it, and the destructor
     * closes it. An open device counts as an open archive (see isOpen()), in which no member is found.
     *
     * The device stays the caller's and must outlive this object, which belongs to @p parent, or to the caller when
     * @p parent is null.
     * @since 0.5
     */
    explicit ApkFile(QIODevice *device, QObject *parent = nullptr);

    /// Closes the archive. Returned values (documents, tables, launchers) stay valid. @since 0.5
    ~ApkFile() override;

    /**
     * Whether the archive is open, or the device that was passed to the constructor is open: a device that the caller
     * opened counts as an open archive. Takes constant time and sets no code.
     * @since 0.5
     */
    bool isOpen() const;

    /**
     * Opens the archive and reads the end of its directory, unless isOpen() is true. Every query that needs the archive
     * calls this, so callers need not. Returns false and sets code 1 when the file is missing, cannot be read, or is no
     * regular file or no ZIP archive, or the device is sequential. The archive stays open until the object is
     * destroyed.
     * @since 0.5
     */
    bool open();

    /// The code of the most recent failure (table above), or 0 when nothing has failed yet. Reads nothing. @since 0.5
    int getError() const;

    /// The text of getError(), in English; "unknown error" for a code that is not in the table. @since 0.5
    QString getErrorString() const;

    /**
     * The resource table of the package: a copy that shares its data and stays valid without this object.
     *
     * The first call opens the archive, and reads and parses all of `resources.arsc`; later calls cost nothing. When
     * the table cannot be read, ApkResources::isValid() of the result is false, code 1, 2 or 3 is set, and the next
     * call tries again.
     * @since 0.5
     */
    ApkResources resources() const;

    /**
     * The manifest, decoded into elements and attributes, without texts, comments and declarations. Android's
     * attributes are in the namespace `http://schemas.android.com/apk/res/android`; their values are texts. References
     * have the form `@string/12`, which the lookups of ApkResources resolve.
     *
     * The first call loads the resource table as resources() does, then reads and decodes `AndroidManifest.xml`; later
     * calls cost nothing. **A copy of a QDomDocument shares its tree: editing the result edits the cache**, and so
     * every later result of this object. Use QDomDocument::cloneNode() for a document of your own.
     *
     * When the manifest cannot be read, the result is a document whose only element, `error`, holds the text of the
     * code that was set: 1, 2 or 3 (without a readable resource table, no manifest is read), 4 or 5. The next call
     * tries again.
     * @since 0.5
     */
    QDomDocument getManifest() const;

    /**
     * Package name of the application ("org.example.notes"): the attribute `package` of the manifest's root. Loads the
     * manifest on first use, and sets the codes that getManifest() sets. When only the beginning of the manifest could
     * be decoded, the name in that part, or an empty string.
     * @since 0.5
     */
    QString mainPackage();

    /**
     * The lowest Android API level that the application runs on: `minSdkVersion` of the first `uses-sdk` element that
     * has it. 1 when no element has it, or the manifest cannot be read; 0 when it is not a decimal number (a preview's
     * code name, a reference). Loads the manifest on first use, and sets the codes that getManifest() sets.
     * @since 0.5
     */
    int minSdkVersion() const;

    /**
     * The entries that a home screen shows for this package: one for each intent filter of an activity, or activity
     * alias, that has the action `android.intent.action.MAIN` and the category `android.intent.category.LAUNCHER`, in
     * the order of the manifest. An activity with two such filters gives two entries.
     *
     * With @p includeDisabled false, entries that Android would not show are left out: an activity or application with
     * `enabled="false"` (the activity's may be a reference, the application's is taken as written), and an activity
     * with `exported="false"`, as written. With true, all entries are returned.
     *
     * Loads the manifest on first use. Each call resolves labels and icons anew, and reads and decodes each icon file
     * once. An icon that cannot be read or decoded is left out without an error: an XML drawable, a format other than
     * PNG, JPEG, GIF, WebP, BMP and ICO, a picture that would take too much memory. Labels and icons that lead through
     * more references and values than a build tool writes are left out, too, and so are entries after four million
     * characters of class names. When the manifest cannot be read, the list is empty, and getError() returns the
     * reason.
     * @since 0.5
     */
    QList<ApkLauncherInfo> getLauncherInfo(bool includeDisabled);

private:
    Q_DISABLE_COPY(ApkFile)

    ApkFilePrivate *d;
};

#endif
