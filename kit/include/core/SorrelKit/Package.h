// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGE_H
#define SORRELKIT_PACKAGE_H

#include <SorrelKit/Component.h>
#include <SorrelKit/Diagnostic.h>
#include <SorrelKit/Entry.h>
#include <SorrelKit/Error.h>
#include <SorrelKit/Feature.h>
#include <SorrelKit/KitCoreExport.h>
#include <SorrelKit/Permission.h>
#include <SorrelKit/Platform.h>

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QLocale>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVersionNumber>

class QIODevice;

/// The kit: packages, and sets of packages, that today's build tools make.
namespace SorrelKit {

class PackageData;

/**
 * An Android package that any build tool made: with XML icons, resource tables in every encoding, labels in every
 * language. A set of packages (`.apks`, `.xapk`, `.apkm`) is read as its base with all of its splits.
 *
 * Constructing an object opens and reads nothing. A query reads the parts that it needs, and they are kept, so each is
 * read once:
 *
 * | part              | read by                                                                                  |
 * |-------------------|------------------------------------------------------------------------------------------|
 * | archive directory | every query                                                                              |
 * | manifest          | every query except nativeAbis(), which needs the names of members alone                  |
 * | resource table    | error(), Resources, DrawableRenderer; others for an attribute that refers to a resource  |
 * | files of icons    | Entry::iconFiles(), DrawableRenderer                                                  |
 *
 * Attributes for labels and icons usually are references; any other attribute may be one. In a set of packages, queries
 * of the manifest read the directories and manifests up to those of the base. nativeAbis(), splits(), and queries that
 * need a table or a file read the directories and manifests of all packages. The tables of a set are read together.
 *
 * No query throws.
 *
 * **Errors.** error() is that of opening and reading, and does not depend on earlier queries. A package without a
 * resource table has no error, because it may have no resources. With a damaged table, the values in the manifest
 * itself can still be read. Without a manifest, every query returns the value for a package that names nothing: empty
 * texts and lists, or 0. With Error::Code::RefusedByAndroid, every query returns what can be read, also from a
 * manifest that Android does not open. A table or another file that Android does not open does not exist here either.
 * A manifest that is damaged has no facts, because a part of them misleads: permissions would be missing. The values of
 * a damaged table are those before the fault.
 * A label or icon that cannot be read is no error of the package.
 *
 * **Files.** Members of 64 KiB and more that are not compressed, such as large tables, are used where they lie in the mapped
 * file; other bytes are copied. A file that shrinks while it is open gives errors or missing values. For that, the
 * library handles the signal SIGBUS from its first mapping on, for its own mappings alone, and passes other faults to the
 * handler that was there before. A package on a device is never mapped.
 *
 * **Threads and copies.** Copies are cheap: they share the open archive and what was read. Use an object, its copies and
 * its launchers from one thread at a time; packages that were opened separately may be used in different threads.
 * Returned values belong to the caller.
 *
 * **Limits.** docs/limits.md lists them; SECURITY.md describes the guarantees for hosts.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Package
{
    Q_GADGET
    Q_PROPERTY(SorrelKit::Error error READ error CONSTANT)
    Q_PROPERTY(bool valid READ isValid CONSTANT)
    Q_PROPERTY(SorrelKit::Platform platform READ platform CONSTANT)
    Q_PROPERTY(QString packageName READ packageName CONSTANT)
    Q_PROPERTY(QString versionName READ versionName CONSTANT)
    Q_PROPERTY(qint64 versionCode READ versionCode CONSTANT)
    Q_PROPERTY(int minSdkVersion READ minSdkVersion CONSTANT)
    Q_PROPERTY(int targetSdkVersion READ targetSdkVersion CONSTANT)
    Q_PROPERTY(QList<SorrelKit::Permission> permissions READ permissions CONSTANT)
    Q_PROPERTY(QStringList permissionNames READ permissionNames CONSTANT)
    Q_PROPERTY(QList<SorrelKit::Feature> features READ features CONSTANT)
    Q_PROPERTY(QStringList nativeAbis READ nativeAbis CONSTANT)
    Q_PROPERTY(QStringList splits READ splits CONSTANT)
    Q_PROPERTY(QList<SorrelKit::Diagnostic> diagnostics READ diagnostics CONSTANT)
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QList<SorrelKit::Entry> launchers READ launchers CONSTANT)
    Q_PROPERTY(QList<SorrelKit::Component> components READ components CONSTANT)

public:
    /// How manifestXml() writes references to resources. @since 0.5.1
    enum class References {
        Names,   ///< by the name of the resource: "@string/app_name"
        Numbers, ///< by its number in its type, as ApkFile::getManifest() does: "@string/12"
        Values,  ///< by the value that a phone without a language takes: "Notes", "true", "res/drawable/icon.png"
    };

    /// No package: error() is Error::Code::CannotOpen. @since 0.5.1
    Package();
    /// The package, or set of packages, in the file @p fileName. The first query opens it, and it stays open while this
    /// object, a copy or a launcher lives. @since 0.5.1
    explicit Package(const QString &fileName);
    /// The package, or set, on @p device, which is random-access and not open. The first query opens it. The device
    /// stays the caller's and must outlive this object, its copies and its launchers. @since 0.5.1
    explicit Package(QIODevice *device);
    /// The package, or set, in the file at @p path: the bytes that the system has for the path, which need not be text
    /// in any encoding. Else as the constructor for a file name. @since 0.5.1
    static Package fromNativePath(const QByteArray &path);
    /// A copy of @p other. @since 0.5.1
    Package(const Package &other);
    /// Takes the value of @p other. @since 0.5.1
    Package(Package &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Package &operator=(const Package &other);
    /// Takes the value of @p other. @since 0.5.1
    Package &operator=(Package &&other) noexcept;
    /// Closes the archive when no copy and no launcher is left. @since 0.5.1
    ~Package();
    /// Exchanges two packages. @since 0.5.1
    void swap(Package &other) noexcept { d.swap(other.d); }

    /**
     * Sets the platform in which references to Android's own resources (`@android:string/ok`) are resolved: for labels,
     * icons and all other values, of this object, its copies and its launchers, and of each Resources that is made
     * later. Queries that were asked before may return another result afterwards. Opens nothing: the first such
     * reference opens the platform, which packages may share, also in different threads.
     *
     * Without a platform, which is the default, such a reference resolves to nothing, except colours that are the same on
     * every device. A package that is a platform itself uses its own resources.
     * @since 0.5.1
     */
    void setPlatform(const Platform &platform);
    /// The platform that was set; no platform by default. @since 0.5.1
    Platform platform() const;
    /**
     * The ids of the platform's resources (0x01PPEEEE) that the package needs, ascending: those to which the manifest
     * refers, by itself, through resources of the package in any language, and through their XML files, such as icons.
     * They include attributes of the platform's themes. Styles and arrays are not followed. Empty when there are none.
     *
     * Does not depend on platform(), and opens none. Reads the manifest, the table and these files on each call; what
     * exceeds the limits in docs/limits.md is left out.
     * @since 0.5.1
     */
    QList<quint32> platformResources() const;

    /// The first error in opening the package and in reading its manifest and its resource table. Without one,
    /// Error::Code::RefusedByAndroid when Android 14 refuses the package for one of diagnostics(): every query returns
    /// what was read all the same. The first call reads all of them, and the names of members. @since 0.5.1
    Error error() const;
    /// What is odd in the bytes of the archive, the manifest and the resource table, of each package in a set; the
    /// order is that of reading. The archive of a set itself is read by no Android, so it has none. Reads what error()
    /// reads. @since 0.5.1
    QList<Diagnostic> diagnostics() const;
    /// Whether the manifest can be read; error() may report a damaged resource table all the same. Reads the manifest.
    /// @since 0.5.1
    bool isValid() const;

    /// Name of the package ("org.example.notes"): the attribute `package` of the manifest's root. Reads the manifest.
    /// @since 0.5.1
    QString packageName() const;
    /// The version for people ("2.1"), a reference followed to its default; empty when there is none. This fact and those
    /// below read the manifest, and the table for a reference. @since 0.5.1
    QString versionName() const;
    /// The version that Android compares, 64 bits of `versionCodeMajor` and `versionCode`; 0 when there is none.
    /// @since 0.5.1
    qint64 versionCode() const;
    /// The lowest API level that the package runs on; 1 when the manifest has none, 10000 for the code name of a
    /// preview.
    /// @since 0.5.1
    int minSdkVersion() const;
    /// The API level that the package was made for; minSdkVersion() when the manifest has none. @since 0.5.1
    int targetSdkVersion() const;
    /// Permissions that the package requests, each once, in the order of the manifest, up to 8192 of them; behind them
    /// those that Android adds for them or for old API levels. Several requests for one permission are one that holds
    /// wherever one of them does. Goes over the manifest on each call. @since 0.5.1
    QList<Permission> permissions() const;
    /// Names of the permissions that the manifest requests ("android.permission.INTERNET"): those of permissions() that
    /// are not implied. @since 0.5.1
    QStringList permissionNames() const;
    /// Features that have a name, in the order of the manifest. @since 0.5.1
    QList<Feature> features() const;
    /// Features that the manifest does not name, in the order of their names: those that stores derive from permissions,
    /// activities and other features. Goes over the manifest on each call. @since 0.5.1
    QList<Feature> impliedFeatures() const;
    /// The required version of OpenGL ES, major and minor; a null version when the package requires none. @since 0.5.1
    QVersionNumber openGlEsVersion() const;
    /// Names of the processors that the package has native code for ("arm64-v8a"), in ascending order. Empty when there
    /// is no native code, and the package runs on every processor. Goes over the names of all members on each call, and
    /// reads no member of a single package. @since 0.5.1
    QStringList nativeAbis() const;
    /// Language tags ("de", "pt-BR") of all that the package has values for, in ascending order; without the language of
    /// its values for everybody. Reads the table, and goes over its configurations on each call. @since 0.5.1
    QStringList languages() const;
    /// Densities, in dots per inch, that the package has values for, in ascending order, with the numbers that the table
    /// has for any density (65534) and for none (65535). Reads and costs as languages() does. @since 0.5.1
    QList<int> densities() const;
    /// Names of the splits that belong to the base ("config.de"); empty for a single package. Reads the manifests of a
    /// set. @since 0.5.1
    QStringList splits() const;

    /// The application's labels by language tag, in the form of Entry::labels(); empty when there is none. Reads the
    /// table for a reference. @since 0.5.1
    QMap<QString, QString> labels() const;
    /// The application's label for @p locale, chosen as Entry::label() does; packageName() when there is none. Reads
    /// the table for a reference. @since 0.5.1
    QString label(const QLocale &locale = QLocale()) const;
    /// The path of the file that a device with @p density dots per inch takes for the application's icon
    /// ("res/mipmap-xhdpi-v4/icon.png"); empty when there is no icon, it is no file, or the file is the platform's.
    /// Whether the file exists is not checked. Reads the table for a reference. @since 0.5.1
    QString iconPath(int density) const;

    /// Every entry for home screens, including those that are not shown; each activity or alias once, in the order of
    /// the manifest, up to 1024 of them. Reads the manifest and no table; goes over the manifest on each call.
    /// @since 0.5.1
    QList<Entry> launchers() const;
    /// Every entry of @p kind, including those that are not shown; each component once, in the order of the manifest, up
    /// to 1024 of them. For shortcuts and direct shares, the items of the files that launchers name, each file and each
    /// id of a shortcut once. Reads the manifest, and for these two kinds the table and their files, once; goes over
    /// them on each call. @since 0.5.1
    QList<Entry> entries(Entry::Kind kind) const;
    /// The components of the application that have a name, in the order of the manifest, up to 8192 of them. The
    /// first of several elements with one tag and one name counts. A set has those of the base's manifest. Reads the manifest,
    /// and the table for a reference; goes over the manifest on each call. @since 0.5.1
    QList<Component> components() const;

    /**
     * The manifest as XML 1.0 in UTF-8, indented, one element on each line. Attributes have the values that Android reads,
     * in the order of their names. The root declares all namespaces. A name or a value may have any characters except
     * those that XML does not allow, which are replaced, so a program that shows the text has to make it harmless.
     *
     * References are "@string/app_name" or "?attr/colorAccent", with the package in front when it is another one
     * ("@com.example.library:string/ok"). Resources of the platform have names ("@android:string/ok") when
     * there is a platform() that has them. The id replaces the name of a resource that is missing ("@0x01040000").
     * References::Values writes the value of a resource instead, if it is a text, a number, a truth value, a colour or
     * a size. A reference whose resource has no such value, and an attribute of the theme, keep their names.
     *
     * Empty when isValid() is false, or when the text would exceed the limit in docs/limits.md. Of a set, the base's
     * manifest. Reads the manifest again on each call, and notes the place of each resource as Resources does.
     * @since 0.5.1
     */
    QByteArray manifestXml(References references = References::Names) const;

private:
    friend class PackageAccess;

    QExplicitlySharedDataPointer<PackageData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Package)
Q_DECLARE_METATYPE(SorrelKit::Package)

#endif
