// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGENORMALIZER_H
#define SORRELKIT_PACKAGENORMALIZER_H

#include <SorrelKit/Error.h>
#include <SorrelKit/KitGuiExport.h>

#include <QByteArray>
#include <QString>

#include <memory>

class ApkFile;
class QIODevice;

namespace SorrelKit {

class PackageNormalizerPrivate;

/**
 * Lets code for libsorrel's ApkFile read packages that ApkFile alone refuses:
 *
 *     const std::unique_ptr<ApkFile> package = PackageNormalizer(fileName).apkFile();
 *     for (const ApkLauncherInfo &launcher : package->getLauncherInfo(false)) { ... }
 *
 * These are
 * - packages whose resource table has sparse types, offsets of 16 bits, compact entries, or entries that resources share,
 *   as today's build tools write them;
 * - packages without a resource table;
 * - packages whose manifest does not have the type of a manifest, which Android reads all the same;
 * - sets of packages; their base is read, without its splits.
 *
 * They are rewritten in memory, with only the members that ApkFile reads: the table in its classic form, with the same
 * content; the manifest; and the icons' picture files. Nothing is written to disk. The result is read by ApkFile, which
 * leaves out XML icons, for example. Package reads XML icons and splits.
 *
 * Constructing an object opens and reads nothing. The first query opens the archive, reads the table and the manifest,
 * which the object keeps, and closes the archive again. No query throws.
 *
 * **Errors.** Each query documents the value for a failure; error() returns the reason. It is known after the first query
 * and does not change. A package with a damaged table is not rewritten.
 *
 * **Threads.** Use an object from one thread at a time; different objects may be used in different threads.
 *
 * **Limits.** A table has up to 128 MiB, also after rewriting; a larger manifest than 16 MiB counts as missing; picture files
 * beyond 4096, and beyond 64 MiB in all, are left out. docs/limits.md lists all of the limits.
 *
 * @since 0.5.1
 */
class SORRELKITGUI_EXPORT PackageNormalizer
{
public:
    /// For the package in the file @p fileName. @since 0.5.1
    explicit PackageNormalizer(const QString &fileName);

    /**
     * For the package on @p device, which is random-access and not open. Each query closes it again. The device stays
     * the caller's and must outlive this object; apkFile() may need it longer.
     * @since 0.5.1
     */
    explicit PackageNormalizer(QIODevice *device);

    /// For the package in the file at @p path: the bytes that the system has for the path, which need not be text in
    /// any encoding. Else as the constructor for a file name. @since 0.5.1
    static PackageNormalizer fromNativePath(const QByteArray &path);

    /// Takes the value of @p other. @since 0.5.1
    PackageNormalizer(PackageNormalizer &&other) noexcept;
    /// Takes the value of @p other. @since 0.5.1
    PackageNormalizer &operator=(PackageNormalizer &&other) noexcept;
    /// Returned values stay valid. @since 0.5.1
    ~PackageNormalizer();
    /// Exchanges two normalizers. @since 0.5.1
    void swap(PackageNormalizer &other) noexcept { d.swap(other.d); }

    /**
     * Whether ApkFile cannot read the package as it is, but can read normalized(). Also false when this object cannot
     * read the package; error() returns the reason.
     *
     * The first call reads the table and the manifest, and goes over the table's entries once; later calls cost
     * nothing.
     * @since 0.5.1
     */
    bool isNeeded() const;

    /**
     * The package in a form that ApkFile reads: a ZIP archive without compression, the same bytes on each call. It has
     * the members `resources.arsc`, and, when the package has them, `AndroidManifest.xml` and the picture files for the
     * icons of its activities. It is also made when it is not needed. A null array on a failure; error() returns the
     * reason.
     *
     * The bytes belong to the caller. An ApkFile reads them from a QBuffer that is not open. Each call opens the
     * archive again for the pictures, and holds the table and the pictures twice while it runs.
     * @since 0.5.1
     */
    QByteArray normalized() const;

    /**
     * An ApkFile for the package: on the normalized() bytes when they are needed, else on the original, which is then
     * read by the returned object. The original is also used when this object cannot read the package; the ApkFile then
     * reports its own error. Never null; each call makes a new object.
     *
     * The object belongs to the caller and to the calling thread, and may outlive this one. Only a device that was
     * passed to the constructor must outlive it. While the returned object lives and reads from that device, the device
     * is open, and no query of this object finds the package.
     * @since 0.5.1
     */
    std::unique_ptr<ApkFile> apkFile() const;

    /// The error in reading the package: Error::Code::None, CannotOpen or BadTable. Reads the package on first use.
    /// @since 0.5.1
    Error error() const;

private:
    Q_DISABLE_COPY(PackageNormalizer)
    explicit PackageNormalizer(std::unique_ptr<PackageNormalizerPrivate> data);

    std::unique_ptr<PackageNormalizerPrivate> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::PackageNormalizer)

#endif
