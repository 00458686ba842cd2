// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/PackageNormalizer.h>

#include "archive/BufferedFile.h"
#include "archive/ZipArchive.h"
#include "format/ChunkView.h"
#include "format/ResourceTable.h"
#include "format/XmlReader.h"
#include "limits/Budget.h"
#include "limits/Limits.h"
#include "normalize/DocumentRewriter.h"
#include "normalize/IconMembers.h"
#include "normalize/TableRewriter.h"
#include "package/PackageData.h"
#include "package/SetReader.h"
#include "picture/PictureFile.h"

#include <ApkFile.h>

#include <QBuffer>
#include <QDateTime>
#include <QVector>
#include <QtEndian>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

#include <algorithm>
#include <iterator>
#include <limits>

namespace SorrelKit {

namespace {

const char *const tableName = "resources.arsc";
const char *const manifestName = "AndroidManifest.xml";
const char *const requiredNames[] = {tableName, manifestName};

struct Member {
    QString name;
    QByteArray content;
};

struct OpenPackage {
    std::unique_ptr<ZipArchive> set;   ///< the set whose base the package is; outlives it
    std::unique_ptr<ZipArchive> files; ///< null when the package cannot be opened
};

QByteArray emptyTable()
{
    constexpr int HeaderSize = 12;
    QByteArray bytes(HeaderSize, '\0');
    qToLittleEndian(quint16(ChunkType::Table), bytes.data());
    qToLittleEndian(quint16(HeaderSize), bytes.data() + 2);
    qToLittleEndian(quint32(HeaderSize), bytes.data() + 4);
    return bytes;
}

// Members are stored: the reader of the archive has all of it in memory anyway.
QByteArray archiveOf(const QVector<Member> &members)
{
    constexpr qint64 RoomForNames = 512; ///< a member's name and headers
    // A fixed date, so that the result has the same bytes at any time.
    const QDateTime earliest(QDate(1980, 1, 1), QTime(0, 0), Qt::UTC);
    qint64 size = 0;
    for (const Member &member : members)
        size += member.content.size() + RoomForNames;
    QBuffer buffer;
    buffer.buffer().reserve(int(size));
    QuaZip archive(&buffer);
    archive.setUtf8Enabled(true);
    bool good = archive.open(QuaZip::mdCreate);
    for (const Member &member : members) {
        QuaZipNewInfo info(member.name);
        info.dateTime = earliest;
        QuaZipFile file(&archive);
        good = good && file.open(QIODevice::WriteOnly, info, nullptr, 0, ZipDirectory::Stored);
        good = good && file.write(member.content) == member.content.size();
        file.close();
    }
    archive.close();
    return good ? buffer.data() : QByteArray();
}

std::unique_ptr<ApkFile> apkFileOn(std::unique_ptr<QIODevice> device)
{
    auto package = std::make_unique<ApkFile>(device.get());
    device.release()->setParent(package.get());
    return package;
}

std::unique_ptr<QIODevice> bufferOf(const QByteArray &bytes)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    return buffer;
}

// Whether ApkFile reads the same files from @p archive as Android does. QuaZip is stricter.
bool isArchiveOfApkFile(ZipArchive &archive)
{
    const OddityList directory = archive.oddities();
    if (directory.contains(Oddity::DirectoryGap) || directory.contains(Oddity::DiskNumbers)
        || directory.contains(Oddity::LongComment))
        return false;
    return std::none_of(std::begin(requiredNames), std::end(requiredNames), [&archive](const char *name) {
        const OddityList member = archive.oddities(QLatin1String(name));
        return member.contains(Oddity::MemberMethod) || member.contains(Oddity::MemberNotDeflated)
               || member.contains(Oddity::MemberStoredSizes);
    });
}

} // namespace

class PackageNormalizerPrivate
{
public:
    explicit PackageNormalizerPrivate(const QString &name) : fileName(name) {}
    explicit PackageNormalizerPrivate(QIODevice *original) : device(original) {}
    explicit PackageNormalizerPrivate(const QByteArray &path) : nativePath(path) {}

    void load();
    std::unique_ptr<ApkFile> original() const;
    QByteArray normalized();

    Error error;
    bool isNeeded = false;

private:
    OpenPackage openPackage(Budget &budget);
    void loadTable(const OpenPackage &package, Budget &budget);
    void loadManifest(ZipArchive &archive);
    QVector<Member> pictures(const QStringList &paths, Budget &budget);
    void fail(const Error &reason);

    std::unique_ptr<ZipArchive> archive() const;

    QString fileName;
    QIODevice *device = nullptr;
    QByteArray nativePath; ///< null for a file name or a device
    bool isLoaded = false;
    QByteArray table;
    QByteArray manifest;
};

void PackageNormalizerPrivate::fail(const Error &reason)
{
    error = reason;
    isNeeded = false;
}

std::unique_ptr<ZipArchive> PackageNormalizerPrivate::archive() const
{
    if (device != nullptr)
        return std::make_unique<ZipArchive>(device);
    return nativePath.isNull() ? std::make_unique<ZipArchive>(fileName) : ZipArchive::atNativePath(nativePath);
}

OpenPackage PackageNormalizerPrivate::openPackage(Budget &budget)
{
    OpenPackage package;
    package.files = archive();
    if (!package.files->open()) {
        package.files.reset();
    } else if (!package.files->contains(QLatin1String(manifestName)) && SetReader::isSet(*package.files)) {
        SetReader set(*package.files, budget);
        if (set.base() != nullptr) {
            package.set = std::move(package.files);
            package.files = std::move(set.base());
        }
    }
    return package;
}

void PackageNormalizerPrivate::load()
{
    if (isLoaded)
        return;
    isLoaded = true;
    Budget budget(PackageData::MaxReadingWork, PackageData::MaxReadingBytes);
    const OpenPackage package = openPackage(budget);
    if (package.files == nullptr) {
        fail(Error(Error::Code::CannotOpen));
        return;
    }
    isNeeded = package.set != nullptr;
    loadManifest(*package.files);
    loadTable(package, budget);
    isNeeded = isNeeded || (!error && !isArchiveOfApkFile(*package.files));
}

void PackageNormalizerPrivate::loadTable(const OpenPackage &package, Budget &budget)
{
    if (!package.files->isOpened(QLatin1String(tableName))) {
        table = emptyTable();
        isNeeded = isNeeded || !manifest.isEmpty(); // without a manifest, the archive is no package
        return;
    }
    // As in PackageData: a package that is compressed in a set may list tables that are empty and take long.
    const QString name = QLatin1String(tableName);
    Budget any(std::numeric_limits<qint64>::max(), 0);
    const QByteArray original =
        package.files->contentAnyway(name, TableRewriter::MaxTableBytes, package.set != nullptr ? &budget : &any)
            .toByteArray();
    FormatFault fault = FormatFault::None;
    table = TableRewriter::rewritten(original, &fault);
    if (fault != FormatFault::None)
        fail(Error(Error::Code::BadTable, formatFaultText(fault)));
    else if (table.constData() != original.constData())
        isNeeded = true;
}

void PackageNormalizerPrivate::loadManifest(ZipArchive &archive)
{
    Budget any(std::numeric_limits<qint64>::max(), 0);
    const QByteArray original =
        archive.contentAnyway(QLatin1String(manifestName), Limits::MaxManifestBytes, &any).toByteArray();
    manifest = DocumentRewriter::rewritten(original);
    isNeeded = isNeeded || manifest.constData() != original.constData();
}

QVector<Member> PackageNormalizerPrivate::pictures(const QStringList &paths, Budget &budget)
{
    QVector<Member> members;
    Budget opening(PackageData::MaxReadingWork, PackageData::MaxReadingBytes);
    const OpenPackage package = openPackage(opening);
    if (package.files == nullptr)
        return members;
    for (const QString &path : paths) {
        if (path == QLatin1String(tableName) || path == QLatin1String(manifestName))
            continue;
        const QByteArray content = package.files->file(path, PictureFile::MaxBytes, &budget);
        if (!content.isEmpty() && !XmlReader::isDocument(content) && budget.holdBytes(content.size()))
            members.append({path, content});
    }
    return members;
}

QByteArray PackageNormalizerPrivate::normalized()
{
    load();
    if (error)
        return {};
    QVector<Member> members{{QLatin1String(tableName), table}};
    if (!manifest.isEmpty())
        members.append({QLatin1String(manifestName), manifest});
    Budget budget(IconMembers::MaxWork, IconMembers::MaxBytes);
    const ResourceTable resources(table);
    const QStringList paths = IconMembers(resources, budget).paths(XmlReader(manifest).root());
    return archiveOf(members + pictures(paths, budget));
}

std::unique_ptr<ApkFile> PackageNormalizerPrivate::original() const
{
    if (device != nullptr)
        return std::make_unique<ApkFile>(device);
    if (nativePath.isNull())
        return std::make_unique<ApkFile>(fileName);
    return apkFileOn(BufferedFile::atNativePath(nativePath));
}

PackageNormalizer::PackageNormalizer(const QString &fileName) : d(std::make_unique<PackageNormalizerPrivate>(fileName))
{
}

PackageNormalizer::PackageNormalizer(QIODevice *device) : d(std::make_unique<PackageNormalizerPrivate>(device)) {}

PackageNormalizer::PackageNormalizer(std::unique_ptr<PackageNormalizerPrivate> data) : d(std::move(data)) {}

PackageNormalizer PackageNormalizer::fromNativePath(const QByteArray &path)
{
    const QByteArray known = path.isNull() ? QByteArray("") : path;
    return PackageNormalizer(std::make_unique<PackageNormalizerPrivate>(known));
}

PackageNormalizer::PackageNormalizer(PackageNormalizer &&other) noexcept = default;
PackageNormalizer &PackageNormalizer::operator=(PackageNormalizer &&other) noexcept = default;
PackageNormalizer::~PackageNormalizer() = default;

bool PackageNormalizer::isNeeded() const
{
    d->load();
    return d->isNeeded;
}

QByteArray PackageNormalizer::normalized() const
{
    return d->normalized();
}

std::unique_ptr<ApkFile> PackageNormalizer::apkFile() const
{
    if (isNeeded())
        return apkFileOn(bufferOf(d->normalized()));
    return d->original();
}

Error PackageNormalizer::error() const
{
    d->load();
    return d->error;
}

} // namespace SorrelKit
