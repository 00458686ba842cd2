// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGEDATA_H
#define SORRELKIT_PACKAGEDATA_H

#include "archive/PackageError.h"
#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "limits/Limits.h"
#include "oddity/OddityList.h"
#include "package/DrawingSource.h"
#include "package/IconFileLookup.h"
#include "package/Manifest.h"
#include "package/SetReader.h"
#include "platform/PlatformData.h"
#include "resources/ResourceResolver.h"

#include <SorrelKit/Diagnostic.h>

#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QMap>
#include <QSet>
#include <QSharedData>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace SorrelKit {

/**
 * The data that Package and its launchers share: the archives, the decoded manifest, the tables, and the error. Each is
 * read on first use, and nothing is read twice:
 *
 * | step         | of a package                        | of a set                                                  |
 * |--------------|-------------------------------------|-----------------------------------------------------------|
 * | open()       | its directory                       | its directory; directories and manifests up to the base's |
 * | manifest()   | the manifest                        | nothing else                                              |
 * | openSplits() | nothing                             | directories and manifests of the other packages           |
 * | tables()     | the steps above, and its table      | the steps above, and all tables                           |
 *
 * The order of the steps is fixed, whatever the caller asks for first. They spend from one budget and keep the first
 * error, so neither depends on the order of queries. Files of the base hide those of its splits with the same path.
 */
class PackageData : public QSharedData, public DrawingSource, private TableSource, private FileSource
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

    /// Bytes of an XML file that describes entries, such as shortcuts; and characters of its names and texts. Each byte
    /// holds BytesPerDocumentByte, each character two.
    static constexpr qint64 MaxDocumentBytes = 1 << 20;
    static constexpr qint64 MaxDocumentCharacters = 1 << 20;
    static constexpr qint64 BytesPerDocumentByte = 5;

    explicit PackageData(const QString &fileName);
    explicit PackageData(QIODevice *device);
    /// The package in the file whose path the system knows by these bytes.
    explicit PackageData(const QByteArray &nativePath);
    /// The packages @p paths of the set in @p source: a base, and splits of it.
    PackageData(std::shared_ptr<ByteSource> source, const QStringList &paths);

    /// The first error of the steps that were taken. tables() takes all of them.
    PackageError::Code error() const { return m_error; }
    /// The fault behind the error; may be empty.
    QString fault() const { return m_fault; }
    /// What is odd in the archives, manifests and tables. Takes all steps.
    QList<Diagnostic> diagnostics();
    /// The bytes of the package or the set; null when it cannot be opened.
    std::shared_ptr<ByteSource> bytes();
    /// The path of its file, as the system has it; empty for a device.
    QByteArray path() const { return m_outer->path(); }
    /// The manifest; an empty one when it cannot be read.
    const Manifest &manifest();
    /// The bytes of the manifest. Reads it again.
    QByteArray manifestBytes(Budget *budget);
    /// Names of the splits.
    const QStringList &splits();
    const ResourceTables &tables() override;
    /// Sets the platform that references to it are resolved in, and forgets what was resolved before.
    void setPlatform(const PlatformDataPointer &platform);
    /// The ids that Package::platformResources() returns. Each call spends from a budget of its own.
    QList<quint32> platformResources();
    /// None by default.
    PlatformData *platform() override { return m_platform.data(); }
    /// Names of the processors that there is native code for. Needs the names of members, and no table.
    QStringList nativeAbis();
    /// The same for the open @p package alone, each with the bytes of the code.
    static QMap<QString, qint64> nativeLibraryBytes(ZipArchive &package);

    /// The text of @p attribute, with references followed; for a phone without a language. This function and the next
    /// ones need the tables only for a reference.
    QString text(const XmlAttribute *attribute) const;
    /// Whether @p attribute is true; @p fallback when it is missing or no boolean.
    bool isTrue(const XmlAttribute *attribute, bool fallback) const;
    /// The value of @p attribute, with references followed.
    ResolvedValue resolved(const XmlAttribute *attribute) const;
    /// The icon that @p attribute names. A reference stays one: it is resolved for the icon's size later.
    ResolvedValue iconValue(const XmlAttribute *attribute) const;
    /// The files for the icon that @p attribute names.
    QVector<IconFileLookup::File> iconFiles(const XmlAttribute *attribute);

    /// API levels of the manifest. A version with a code name counts as newer than any number.
    int minSdkVersion();
    int targetSdkVersion();
    /// The root of the XML file that the attribute `android:resource` of @p metaData names; null when there is none, or
    /// it is damaged. Each file is read once, and its elements live as long as this object.
    const XmlElement *details(const XmlElement &metaData);

    /// Whether both the application and its component @p element are enabled.
    bool isEnabled(const XmlElement &element);
    /// Whether other applications may use the component @p element of the manifest. Without the attribute, a component
    /// with an intent filter is exported, and other components are when @p isByDefault is true.
    bool isExported(const XmlElement &element, bool isByDefault = false) const;

    /// Looks as a phone of 160 dots per inch.
    const ResourceResolver &resolver() const override { return m_resolver; }
    FileSource &files() override { return *this; }
    std::optional<ResolvedValue> applicationIcon(bool isRound) override;
    std::optional<ResolvedValue> applicationBanner() override;
    quint32 theme(const XmlElement *activity) override;
    QVector<LauncherIcon> launcherIcons(int count, bool isRound) override;

private:
    /// The oddities of a package's files.
    struct FileOddities {
        QString package; ///< its path in the set; empty for a single package
        OddityList manifest;
        OddityList table;
        /// The table, whose types are checked when the diagnostics are asked for; null for none.
        QSharedPointer<const ResourceTable> types = {};
    };

    QByteArray file(const QString &path, qint64 maxBytes, Budget *budget) override;
    int sdkVersion(quint32 id, int fallback);
    bool open();
    void openSplits();
    void readManifest();
    void readTable(ZipArchive &archive, FileOddities *files);
    bool isSet() const { return !m_members.empty(); }
    ZipArchive &base() { return isSet() ? *m_members.front() : *m_outer; }
    XmlElement document(const QString &path);
    void setError(PackageError::Code error, const QString &fault = QString());

    std::unique_ptr<ZipArchive> m_outer;                ///< the package or the set that was opened
    const std::optional<QStringList> m_paths;           ///< of the packages of a set that are read; all by default
    std::unique_ptr<SetReader> m_set;                   ///< until its splits are open
    std::vector<std::unique_ptr<ZipArchive>> m_members; ///< the packages of a set: the base, then the splits
    bool m_isOpened = false;                            ///< open() was called, with any result
    bool m_isOpen = false;                              ///< there is a package, or a set with a base
    bool m_hasManifest = false;                         ///< the manifest was read, with any result
    bool m_isManifestWhole = false;
    bool m_hasTables = false; ///< the tables were read, with any result
    PackageError::Code m_error = PackageError::NoError;
    QString m_fault;
    Manifest m_manifest;
    std::vector<FileOddities> m_oddities; ///< of the base or the single package, then of the splits
    std::optional<QList<Diagnostic>> m_diagnostics;
    QStringList m_splits;
    ResourceTables m_tables;
    PlatformDataPointer m_platform; ///< null for none
    Budget m_reading{MaxReadingWork, MaxReadingBytes};
    qint64 m_tableBytesLeft = MaxTableBytes;
    int m_typeChunksLeft = ResourceTable::MaxTypeChunks;
    Budget m_lookups{MaxLookupWork, MaxLookupBytes};
    ResourceResolver m_resolver;
    std::map<QString, XmlElement> m_documents; ///< by path; a null element for a file without one
    IconFileLookup m_iconFiles{m_resolver, *this, m_lookups};
};

using PackageDataPointer = QExplicitlySharedDataPointer<PackageData>;

} // namespace SorrelKit

#endif
