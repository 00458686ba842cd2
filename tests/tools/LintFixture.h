// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LINTFIXTURE_H
#define LINTFIXTURE_H

#include "Apk.h"
#include "RawZip.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// Packages without findings of `sorrel lint`. Each part can be made wrong.
namespace fixture {

constexpr qint64 LabelResource = 0x7f010000;
constexpr qint64 IconResource = 0x7f020000;

/// The content of a manifest with one launcher.
struct LintManifest {
    QString package = QStringLiteral("org.x"); ///< null for no package
    int minSdk = 23;
    int targetSdk = 23;
    /// The activity's name, label, icon and further attributes. Omitted ones are missing.
    QVector<Attribute> activity = {androidText(QStringLiteral("name"), QStringLiteral(".Main")),
                                   androidReference(QStringLiteral("label"), LabelResource),
                                   androidReference(QStringLiteral("icon"), IconResource)};
    int launchers = 1;
    bool hasOwnIcons = false;                        ///< whether each launcher has the icon after the last one's
    QByteArray chunk;                                ///< before the end of the root
    bool isDeclared = true;                          ///< whether the namespace of Android's attributes is declared
    QString closing = QStringLiteral("application"); ///< the name at the end of the application
};
QByteArray lintManifest(const LintManifest &manifest = {});
/// A launcher with a literal label and the path of an icon, which need no table.
LintManifest lintManifestWithoutResources();

/// The table's package with the types string and drawable, without values.
PackageBuilder lintPackage();
/// A label at LabelResource.
TypeBuilder labelType();
/// @p count icons from IconResource on, which are the file res/icon.png.
TypeBuilder iconType(int count = 1);
/// That file in the table, as the icon in the configuration @p config.
TypeBuilder xmlIconType(const QByteArray &config = ConfigBuilder().build());
/// A table of @p package, whose strings these types use.
QByteArray lintTable(const PackageBuilder &package);
QByteArray lintTable();

/// The icon's file, which is a PNG.
Member lintIcon();
/// A file of the icon that is XML: an element @p root with a colour. It is drawn when @p root is "color".
Member xmlIcon(const QString &root);
/// A file of the icon that is XML: an inset of the drawable @p resource.
Member iconWithin(qint64 resource);

/// The package of a table, a manifest, the icon and other members.
QByteArray lintPackageFile(const QByteArray &table = lintTable(), const QByteArray &manifest = lintManifest(),
                           const QVector<Member> &others = {});

/// The members of the same archive, stored, and others.
QVector<RawMember> lintMembers(const QVector<RawMember> &others = {}, const QByteArray &manifest = lintManifest());
/// The same for Android 11, with the resource table @p distance bytes after a multiple of 4.
QByteArray lintPackageWithTableAt(int distance);
/// The same, with the chunk @p chunk in its manifest.
QByteArray lintPackageWithChunk(const QByteArray &chunk);

} // namespace fixture

#endif
