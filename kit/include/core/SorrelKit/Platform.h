// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PLATFORM_H
#define SORRELKIT_PLATFORM_H

#include <SorrelKit/Error.h>
#include <SorrelKit/KitCoreExport.h>

#include <QExplicitlySharedDataPointer>
#include <QMetaType>
#include <QString>

namespace SorrelKit {

class PlatformData;

/**
 * The resources of Android itself: its texts, colours, icons and themes, to which packages refer by ids that begin with
 * 0x01 (`@android:string/ok`). Every device has them in a framework package, which is an Android package whose resource
 * table has the package id 0x01. Debian installs one by its package `android-framework-res`, and `android.jar` of every
 * SDK is one.
 *
 *     const Platform platform = Platform::installed();
 *     Package package(fileName);
 *     package.setPlatform(platform);
 *     print(package.label()); // also when it is "@android:string/ok"
 *
 * Constructing an object opens nothing. The file is opened once for all copies: by the first package that refers to a
 * resource of the platform, or by a function of this class that reads it. It stays open until the last copy, and the
 * last package that uses it, is gone. A resource table that is not compressed is mapped, so that it takes memory only for the
 * pages that are read.
 *
 * **Errors.** No query throws. A file that is no framework package has no resources; packages then read as without a
 * platform. Of a damaged table, the part before the fault is used.
 *
 * **Threads and copies.** Copies are cheap and share the open file. Every function may be called from any thread, and
 * packages in different threads may use one platform. The table does not change once it is read, so it is read without a
 * lock; a lock is held while a member of the archive is read.
 *
 * **Limits.** The resource table has the limits of a package's own (docs/limits.md).
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Platform
{
    Q_GADGET
    Q_PROPERTY(QString fileName READ fileName CONSTANT)
    Q_PROPERTY(SorrelKit::Error error READ error CONSTANT)
    Q_PROPERTY(bool valid READ isValid CONSTANT)
    Q_PROPERTY(int apiLevel READ apiLevel CONSTANT)

public:
    /// No platform: isValid() is false, and there is no error(). @since 0.5.1
    Platform();
    /// The framework package in the file @p fileName. An empty name is no platform. @since 0.5.1
    explicit Platform(const QString &fileName);
    /// A copy of @p other. @since 0.5.1
    Platform(const Platform &other);
    /// Takes the value of @p other. @since 0.5.1
    Platform(Platform &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Platform &operator=(const Platform &other);
    /// Takes the value of @p other. @since 0.5.1
    Platform &operator=(Platform &&other) noexcept;
    /// Closes the file when no copy and no package uses it. @since 0.5.1
    ~Platform();
    /// Exchanges two platforms. @since 0.5.1
    void swap(Platform &other) noexcept { d.swap(other.d); }

    /**
     * The platform of this system: the file that the environment variable `SORREL_PLATFORM` names; when it is not set,
     * the file `/usr/share/android-framework-res/framework-res.apk`. No platform when the variable is empty, or is not
     * set and that file does not exist. Opens nothing.
     * @since 0.5.1
     */
    static Platform installed();

    /// The name of the file; empty when there is no platform. @since 0.5.1
    QString fileName() const;
    /// Whether the file has a resource table with the package id 0x01. Opens the file. @since 0.5.1
    bool isValid() const;
    /// The reason why the file is no framework package, or not a whole one: Error::Code::CannotOpen or
    /// Error::Code::BadTable. No error when there is no platform. Opens the file. @since 0.5.1
    Error error() const;
    /// The API level of this version of Android (29), which its manifest states; 0 when it states none. Reads the
    /// manifest once. @since 0.5.1
    int apiLevel() const;

private:
    friend class Package;

    QExplicitlySharedDataPointer<PlatformData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Platform)
Q_DECLARE_METATYPE(SorrelKit::Platform)

#endif
