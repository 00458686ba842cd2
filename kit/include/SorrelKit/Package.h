// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGE_H
#define SORRELKIT_PACKAGE_H

#include <SorrelKit/Export.h>
#include <SorrelKit/Feature.h>
#include <SorrelKit/Launcher.h>

#include <QImage>
#include <QList>
#include <QLocale>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

class QIODevice;

/// What libsorrelkit offers: packages and sets of packages as today's build tools make them.
namespace SorrelKit {

class PackageData;

/**
 * An Android package as today's applications have it: with XML icons, tables in every encoding, labels in every
 * language. One that comes as a set of packages (`.apks`, `.xapk`, `.apkm`) is read as its base with all of its splits.
 *
 * Constructing an object opens and reads nothing. The first query opens the archive and reads the manifest and the
 * resource table; both are kept. No query throws.
 *
 * **Errors.** error() is that of opening and reading, and does not change after the first query; the codes and texts are
 * those of libsorrel's ApkFile, with one difference: a package without a resource table is no failure, as it may have no
 * resources. With a damaged table, what the manifest says by itself is answered all the same. Without a manifest, every
 * query answers what it documents for a package that names nothing: empty texts and lists, 0, null images. What goes
 * wrong with a single label or icon is no error of the package; icon() tells of it by itself.
 *
 * **Threads and copies.** Copies share what was read, the open archive included, and are cheap. An object, its copies and
 * its launchers are used from one thread at a time; packages that were opened separately may be used in different ones.
 *
 * **Limits.** docs/limits.md lists them; SECURITY.md says what a host may rely on.
 *
 * @since 0.5.1
 */
class SORRELKIT_EXPORT Package
{
public:
    /// Codes of failures, those of ApkFile::getError().
    enum Error {
        NoError = 0,     ///< "no error"
        CannotOpen = 1,  ///< "could not open APK file": no such file, no regular file, no archive; an open device
        BadTable = 3,    ///< "could not parse resources.arsc": labels and icons are missing
        NoManifest = 4,  ///< "could not find AndroidManifest.xml"
        BadManifest = 5, ///< "could not parse AndroidManifest.xml"
    };

    /// The package, or set of packages, in the file @p fileName. The file need not exist yet: the first query opens it,
    /// and it stays open as long as this object, its copies and its launchers live.
    explicit Package(const QString &fileName);
    /// The package, or set, on @p device: random-access, not open, the caller's, and living at least as long as this
    /// object, its copies and its launchers. The first query opens it.
    explicit Package(QIODevice *device);
    /// A copy of @p other, with which it shares what was read, and what will be.
    Package(const Package &other);
    /// Becomes a copy of @p other, with which it shares what was read, and what will be.
    Package &operator=(const Package &other);
    /// Closes the archive when no copy and no launcher is left.
    ~Package();

    /// What failed when the package was opened and read; reads it when nothing did yet.
    Error error() const;
    /// The text of error(), in English, with the fault behind it when one is known ("could not parse resources.arsc:
    /// damaged chunk in resource table").
    QString errorString() const;
    /// Whether the manifest was read; the table may be damaged all the same, which error() tells.
    bool isValid() const;

    /// Name of the package ("org.example.notes"): the attribute `package` of the manifest's root.
    QString packageName() const;
    /// The version as people read it ("2.1"), a reference followed to its default; empty when there is none.
    QString versionName() const;
    /// The version as Android compares it, 64 bits of `versionCodeMajor` and `versionCode`; 0 when there is none.
    qint64 versionCode() const;
    /// The lowest API level that the package runs on; 1 when it names none, 10000 for the code name of a preview.
    int minSdkVersion() const;
    /// The API level that the package was made for; minSdkVersion() when it names none.
    int targetSdkVersion() const;
    /// Permissions that the package asks for ("android.permission.INTERNET"), each once, in the order of the manifest.
    QStringList permissions() const;
    /// Features with a name, in the order of the manifest.
    QList<Feature> features() const;
    /// The version of OpenGL ES that is required, as 0xMMMMmmmm of major and minor; 0 when none is.
    quint32 openGlEsVersion() const;
    /// Names of the processors that there is native code for ("arm64-v8a"), ascending; empty when there is none, and the
    /// package runs everywhere. Reads the directory of the archive on each call.
    QStringList nativeAbis() const;
    /// Names of the splits that were read with the base ("config.de"); empty for a package by itself.
    QStringList splits() const;

    /// The application's labels by language tag, as Launcher::labels() has them; empty when there is none.
    QMap<QString, QString> labels() const;
    /// The application's label for @p locale, chosen as Launcher::label() has it; packageName() when there is none.
    QString label(const QLocale &locale = QLocale()) const;
    /**
     * The application's icon, as Launcher::icon() has it. When the application has none, or none that can be had, that
     * of the first launcher that is shown and has one of its own takes its place; up to four are tried, each at the cost
     * of an icon. @p error is about the picture that is returned; when that stands in for an icon of the application,
     * or there is none, it says why the application's could not be had.
     */
    QImage icon(int size, IconMask mask = IconMask::None, QString *error = nullptr) const;

    /// Every entry for home screens, the ones that are not shown included; each activity or alias once, in the order of
    /// the manifest, up to 1024 of them. Made anew on each call, which looks at the manifest alone.
    QList<Launcher> launchers() const;

private:
    friend class DrawableRenderer;
    friend class Resources;

    const PackageData &loaded() const;

    QSharedPointer<PackageData> d;
};

} // namespace SorrelKit

#endif
