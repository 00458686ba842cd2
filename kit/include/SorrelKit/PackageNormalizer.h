// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGENORMALIZER_H
#define SORRELKIT_PACKAGENORMALIZER_H

#include <SorrelKit/Export.h>

#include <QByteArray>
#include <QString>

#include <memory>

class ApkFile;
class QIODevice;

namespace SorrelKit {

class PackageNormalizerPrivate;

/**
 * Lets code that is written for libsorrel's ApkFile read packages which ApkFile alone refuses:
 *
 *     const std::unique_ptr<ApkFile> package = PackageNormalizer(fileName).apkFile();
 *     for (const ApkLauncherInfo &launcher : package->getLauncherInfo(false)) { ... }
 *
 * These are packages whose resource table is written with sparse types, offsets of 16 bits, compact entries, or entries
 * that resources share, as today's build tools do; packages that have no resource table; packages whose manifest does not
 * say that it is one, which Android reads all the same; and sets of packages, of which the base is taken, without its
 * splits. They are rewritten in memory, with the members that ApkFile reads, and no others: the table in its classic form,
 * which says the same; the manifest; and the icons' picture files. Nothing is written to disk. Answers are those of
 * ApkFile: XML icons, for one, are left out. Package reads them, and splits.
 *
 * Constructing an object opens and reads nothing. The first query opens the archive, reads the table and the manifest,
 * which the object keeps, and closes the archive again. No query throws.
 *
 * **Errors.** What fails is told by the value that the query documents, and by error(), which is settled by the first
 * query. A package with a damaged table is not rewritten.
 *
 * **Threads.** An object is used from one thread at a time; different objects may be used in different threads.
 *
 * **Limits.** A table takes up to 128 MiB, also when it is rewritten; a manifest up to 16 MiB, and a larger one counts as
 * missing; 4096 picture files up to 64 MiB, and those beyond are left out. docs/limits.md lists all of them.
 *
 * @since 0.5.1
 */
class SORRELKIT_EXPORT PackageNormalizer
{
public:
    /// Codes of failures, those of ApkFile::getError().
    enum Error {
        NoError = 0,    ///< "no error"
        CannotOpen = 1, ///< "could not open APK file": no such file, no regular file, no archive; an open device
        BadTable = 3,   ///< "could not parse resources.arsc", and the fault behind it
    };

    /// For the package in the file @p fileName. @since 0.5.1
    explicit PackageNormalizer(const QString &fileName);

    /**
     * For the package on @p device, which is random-access and not open, and is so again after each query. It stays the
     * caller's, and outlives this object; apkFile() may need it longer.
     * @since 0.5.1
     */
    explicit PackageNormalizer(QIODevice *device);

    /// Takes nothing from what was answered. @since 0.5.1
    ~PackageNormalizer();

    /**
     * Whether ApkFile cannot read the package as it is, but can when it is normalized(). False, too, when this object
     * cannot read the package; error() tells.
     *
     * The first call reads the table and the manifest, and goes over the table's entries once; later ones cost nothing.
     * @since 0.5.1
     */
    bool isNeeded() const;

    /**
     * The package as ApkFile reads it: a ZIP archive, not compressed, the same bytes on each call. It has the members
     * `resources.arsc`, and as far as the package has them `AndroidManifest.xml` and the picture files that the icons of
     * its activities lead to. Made, too, when it is not needed. A null array on a failure, which error() tells.
     *
     * The bytes are the caller's; as the device of an ApkFile they take a QBuffer that is not open. Each call opens the
     * archive again for the pictures, and takes the table and the pictures twice while it runs.
     * @since 0.5.1
     */
    QByteArray normalized() const;

    /**
     * The package, ready to be asked: the normalized() one when that is needed, and otherwise the original, which is read
     * when the answer is asked. So it is when this object cannot read the package, and then ApkFile tells what is wrong in
     * its own way. Never null; each call makes another one.
     *
     * The answer is the caller's, belongs to the calling thread, and holds what it needs: this object may be gone. Only a
     * device that was given to the constructor has to outlive it, and is open while the answer lives and reads from it; no
     * query of this object finds the package then.
     * @since 0.5.1
     */
    std::unique_ptr<ApkFile> apkFile() const;

    /// What failed, if anything did; reads the package when nothing did yet. @since 0.5.1
    Error error() const;

    /// The text of error(), in English, with the fault behind it when one is known ("could not parse resources.arsc:
    /// damaged entry in resource table"). @since 0.5.1
    QString errorString() const;

private:
    Q_DISABLE_COPY(PackageNormalizer)

    const std::unique_ptr<PackageNormalizerPrivate> d;
};

} // namespace SorrelKit

#endif
