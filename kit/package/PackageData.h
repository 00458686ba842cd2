// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGEDATA_H
#define SORRELKIT_PACKAGEDATA_H

#include "archive/PackageError.h"
#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "limits/Limits.h"
#include "package/DrawingSource.h"
#include "package/IconFileLookup.h"
#include "package/Manifest.h"
#include "resources/ResourceResolver.h"

#include <QExplicitlySharedDataPointer>
#include <QHash>
#include <QSharedData>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace SorrelKit {

/**
 * The data that Package and its launchers share: the archives, the decoded manifest and tables, and the error. Read on
 * first use. Files of the base hide those of its splits with the same path.
 */
class PackageData : public QSharedData, public DrawingSource, private FileSource
{
public:
    /// Bytes of all tables, those of splits included: libsorrel's limit for one table. All tables together also have at
    /// most as many type chunks as one may have (ResourceTable::MaxTypeChunks).
    static constexpr qint64 MaxTableBytes = Limits::MaxTableBytes;
    /// The budget of reading the packages of a set: their directories, manifests and tables, and the packages that are
    /// compressed in the set, which stay in memory. A package alone is read once, whatever that costs.
    static constexpr qint64 MaxReadingWork = 1 << 28;
    static constexpr qint64 MaxReadingBytes = 256 << 20;

    /// The budget of all lookups for a package and its launchers except those of labels: facts of the manifest, and the
    /// files of icons. Results are kept.
    static constexpr qint64 MaxLookupWork = 1 << 28;
    static constexpr qint64 MaxLookupBytes = 32 << 20;

    explicit PackageData(const QString &fileName);
    explicit PackageData(QIODevice *device);
    /// The package in the file whose path the system knows by these bytes.
    explicit PackageData(const QByteArray &nativePath);

    /// This object, after the package was opened and read on first use.
    PackageData &loaded();

    PackageError::Code error() const { return m_error; }
    /// The fault behind the error; may be empty.
    QString fault() const { return m_fault; }
    const Manifest &manifest() const { return m_manifest; }
    const QStringList &splits() const { return m_splits; }
    /// The tables of all packages, the base's first.
    const QVector<QSharedPointer<const ResourceTable>> &tables() const { return m_tables; }
    /// Names of the processors that there is native code for.
    QStringList nativeAbis();

    /// The text of @p attribute, with references followed; for a phone without a language.
    QString text(const XmlAttribute *attribute) const;
    /// Whether @p attribute is true; @p fallback when it is missing or no boolean.
    bool isTrue(const XmlAttribute *attribute, bool fallback) const;
    /// The value of @p attribute, with references followed.
    ResolvedValue resolved(const XmlAttribute *attribute) const;
    /// The icon that @p attribute names. A reference stays one: it is resolved for the icon's size later.
    ResolvedValue iconValue(const XmlAttribute *attribute) const;
    /// The files for the icon that @p attribute names.
    QVector<IconFileLookup::File> iconFiles(const XmlAttribute *attribute);

    /// Whether both the application and the launcher's activity or alias are enabled.
    bool isEnabled(const Manifest::LauncherEntry &entry) const;
    /// Whether other applications may start the launcher's activity or alias.
    bool isExported(const Manifest::LauncherEntry &entry) const;

    /// Looks as a phone of 160 dots per inch.
    const ResourceResolver &resolver() const override { return m_resolver; }
    FileSource &files() override { return *this; }
    std::optional<ResolvedValue> applicationIcon() const override;
    QVector<ResolvedValue> launcherIcons(int count) const override;

private:
    QByteArray file(const QString &path, qint64 maxBytes, Budget *budget) override;
    void read();
    bool readManifest(ZipArchive &archive);
    void readTable(ZipArchive &archive);
    void setError(PackageError::Code error, const QString &fault = QString());

    std::unique_ptr<ZipArchive> m_outer;                ///< the package or the set that was opened
    std::vector<std::unique_ptr<ZipArchive>> m_members; ///< the packages of a set: the base, then the splits
    QHash<QString, ZipArchive *> m_holders;             ///< the first package of a set that has a member, by path
    bool m_isLoaded = false;
    PackageError::Code m_error = PackageError::NoError;
    QString m_fault;
    Manifest m_manifest;
    QStringList m_splits;
    QVector<QSharedPointer<const ResourceTable>> m_tables;
    Budget m_reading{MaxReadingWork, MaxReadingBytes};
    qint64 m_tableBytesLeft = MaxTableBytes;
    int m_typeChunksLeft = ResourceTable::MaxTypeChunks;
    Budget m_lookups{MaxLookupWork, MaxLookupBytes};
    ResourceResolver m_resolver;
    IconFileLookup m_iconFiles{m_resolver, *this, m_lookups};
};

using PackageDataPointer = QExplicitlySharedDataPointer<PackageData>;

} // namespace SorrelKit

#endif
