// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReaderLint.h"

#include "LibraryLog.h"
#include "ManifestScan.h"
#include "RawBytes.h"
#include "SequentialBytes.h"
#include "TableScan.h"

#include <ApkResources.h>
#include <SorrelKit/PackageNormalizer.h>

#include <quazip.h>
#include <quazipfile.h>

#include <QDomDocument>
#include <QFileInfo>
#include <QStringList>

using namespace LintChecks;

namespace {

const QLatin1String tableName("resources.arsc");
const QLatin1String manifestName("AndroidManifest.xml");
constexpr qint64 MaxTableBytes = 128 << 20;
constexpr qint64 MaxManifestBytes = 16 << 20;
constexpr quint16 UntypedChunk = 0;

// Those of the member that there are, up to @p maxBytes.
bool readMember(QuaZip *archive, const QString &name, qint64 maxBytes, QByteArray *bytes)
{
    constexpr qint64 PieceSize = 64 << 10;
    if (!archive->setCurrentFile(name, QuaZip::csDefault))
        return false;
    QuaZipFile file(archive);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    while (bytes->size() < maxBytes) {
        const QByteArray piece = file.read(qMin(PieceSize, maxBytes - bytes->size()));
        if (piece.isEmpty())
            break;
        // Where the room does not do, Qt 6 appends to a copy, and has both for a while; this moves the bytes.
        const qint64 needed = bytes->size() + piece.size();
        if (bytes->capacity() < needed)
            bytes->reserve(int(qMin(2 * needed, maxBytes)));
        *bytes += piece;
    }
    return true;
}

// What follows @p start in a line about a fault; the device has nothing to say about it.
QString faultIn(const QMap<QString, int> &lines, const QString &start)
{
    for (auto line = lines.cbegin(); line != lines.cend(); ++line) {
        if (line.key().startsWith(start))
            return line.key().mid(start.size()).section(QLatin1Char(':'), 0, 0);
    }
    return {};
}

QString listed(const QStringList &names)
{
    constexpr int MostNames = 5;
    QStringList shown;
    for (const QString &name : names.mid(0, MostNames))
        shown.append(FindingList::shortened(name));
    if (names.size() > MostNames)
        shown.append(QStringLiteral("..."));
    return shown.join(QStringLiteral(", "));
}

QString times(int count)
{
    constexpr int MostLines = 100; // that libsorrel tells of one file
    if (count >= MostLines)
        return QStringLiteral("%1 times or more").arg(MostLines);
    return count == 1 ? QStringLiteral("once") : QStringLiteral("%1 times").arg(count);
}

QString apkFileText(int code)
{
    switch (code) {
    case 2:
        return QStringLiteral("could not find resources.arsc");
    case 3:
        return QStringLiteral("could not parse resources.arsc");
    case 4:
        return QStringLiteral("could not find AndroidManifest.xml");
    case 5:
        return QStringLiteral("could not parse AndroidManifest.xml");
    default:
        return QStringLiteral("no error");
    }
}

} // namespace

ReaderLint::ReaderLint(const QString &fileName, const SorrelKit::Package &package, FindingList *findings)
    : m_fileName(fileName), m_package(package), m_findings(findings)
{
}

void ReaderLint::run()
{
    if (!readMembers())
        return;
    if (!m_hasManifest && m_package.isValid()) {
        m_findings->add(
            PackageSet, QString(),
            QStringLiteral("The file is a set of packages, which ApkFile does not read and SorrelKit does; its "
                           "packages were not looked at one by one."));
        checkPackage();
        return;
    }
    checkPackage();
    checkEncodings();
    readTable();
    readManifest();
    tellError();
}

bool ReaderLint::readMembers()
{
    QuaZip archive(m_fileName);
    // Opening a pipe would wait for somebody to write to it.
    if (!QFileInfo(m_fileName).isFile() || !archive.open(QuaZip::mdUnzip))
        return false;
    // QuaZip finds the last of several members of one name, as ApkFile does, once it was asked for all names.
    for (bool more = archive.goToFirstFile(); more && !archive.getCurrentFileName().isEmpty();)
        more = archive.goToNextFile();
    m_hasTable = readMember(&archive, tableName, MaxTableBytes, &m_table);
    m_hasManifest = readMember(&archive, manifestName, MaxManifestBytes, &m_manifest);
    return true;
}

void ReaderLint::checkPackage()
{
    if (!m_package.isValid())
        return;
    if (m_package.packageName().isEmpty())
        m_findings->add(NoPackageName, manifestName,
                        QStringLiteral("The manifest names no package, and Android does not install it."));
    if (m_package.minSdkVersion() > m_package.targetSdkVersion())
        m_findings->add(
            MinAboveTarget, manifestName,
            QStringLiteral("The package runs on API level %1 and later, and was made for %2, which is below "
                           "it.")
                .arg(m_package.minSdkVersion())
                .arg(m_package.targetSdkVersion()));
}

void ReaderLint::checkEncodings()
{
    const TableScan scan(m_table);
    const QString text = QStringLiteral("The resource table has %1, which ApkFile does not read; SorrelKit does, and "
                                        "PackageNormalizer writes them anew for ApkFile.");
    if (scan.isSparse())
        m_findings->add(SparseTable, tableName, text.arg(QStringLiteral("sparse types")));
    if (scan.hasShortOffsets())
        m_findings->add(ShortOffsetsTable, tableName, text.arg(QStringLiteral("types with offsets of 16 bits")));
    if (scan.isCompact())
        m_findings->add(CompactTable, tableName, text.arg(QStringLiteral("compact entries")));
    if (scan.hasSharedEntries())
        m_findings->add(
            SharedEntriesTable, tableName,
            QStringLiteral("Resources share entries of the resource table, and ApkFile finds the last one's "
                           "alone; SorrelKit finds all, and PackageNormalizer writes them anew for ApkFile."));
}

void ReaderLint::readTable()
{
    if (!m_hasTable) {
        setError(NoTable);
        // One that is there and cannot be read is told as such.
        if (m_package.error() == SorrelKit::Package::BadTable)
            return;
        m_findings->add(
            LintChecks::NoTable, QString(),
            QStringLiteral("There is no resource table, so that there are no resources; ApkFile needs one to "
                           "read the manifest, SorrelKit and Android do not."));
        return;
    }
    const LibraryLog log;
    SequentialBytes device(m_table);
    ApkResources resources;
    // Of a table that was misread, the lines before the fault may be about anything.
    if (resources.load(&device))
        tellTableLines(log.lines());
    else
        setError(BadTable, faultIn(log.lines(), QStringLiteral("Error extracting resources: ")));
}

void ReaderLint::readManifest()
{
    if (!m_hasManifest || m_manifest.isEmpty()) {
        setError(m_hasManifest ? BadManifest : NoManifest);
        return;
    }
    const bool isUntyped = RawBytes(m_manifest).u16(0) == UntypedChunk;
    if (isUntyped && m_package.isValid())
        m_findings->add(
            UntypedManifest, manifestName,
            QStringLiteral("The manifest's first chunk has no type, and ApkFile finds nothing in it and tells "
                           "no error; Android and SorrelKit read it, and PackageNormalizer sets the type for "
                           "ApkFile."));
    const ManifestScan scan(m_manifest);
    if (scan.differentTexts() > 0)
        m_findings->add(
            DifferentText, manifestName,
            QStringLiteral("Attributes of the manifest were written as texts that are not their values, %1 (%2); "
                           "ApkFile takes the texts, SorrelKit and Android take the values.")
                .arg(times(scan.differentTexts()), listed(scan.namesOfDifferentTexts())));
    const LibraryLog log;
    SequentialBytes device(m_manifest);
    bool isRead = true;
    // Names of resources make no difference here, and so the table is left out.
    ApkResources().loadXml(&device, &isRead);
    if (!isRead)
        setError(BadManifest, faultIn(log.lines(), QStringLiteral("XmlLoader error: ")));
    if (!isUntyped)
        tellManifestLines(log.lines());
}

void ReaderLint::tellTableLines(const QMap<QString, int> &lines)
{
    tellLines(UnknownTableChunk, tableName, lines, QStringLiteral("Skipping unexpected "),
              QStringLiteral("The resource table has chunks of types that libsorrel skips, %1 (%2)."));
    tellLines(UnknownStringPool, tableName, lines, QStringLiteral("Skipping unknown string pool at "),
              QStringLiteral("The resource table has string pools that nothing refers to, %1."));
}

void ReaderLint::tellManifestLines(const QMap<QString, int> &lines)
{
    tellLines(UnknownManifestChunk, manifestName, lines, QStringLiteral("Unexpected chunk "),
              QStringLiteral("The manifest has chunks of types that libsorrel skips, %1 (%2)."));
    tellLines(UndeclaredNamespace, manifestName, lines, QStringLiteral("Unknown namespace "),
              QStringLiteral("The manifest uses namespaces that it does not declare, %1 (%2), and readers that go by "
                             "prefixes do not find what is in them."));
    tellLines(UndeclaredNamespace, manifestName, lines, QStringLiteral("Android namespace not defined"),
              QStringLiteral("The manifest uses Android's attributes and does not declare their namespace, %1, and "
                             "readers that go by prefixes do not find them."));
}

// One finding for all lines that begin with @p start: how many there are, and what follows in some of them.
void ReaderLint::tellLines(const LintCheck &check, const QString &subject, const QMap<QString, int> &lines,
                           const QString &start, const QString &text)
{
    QStringList names;
    int count = 0;
    for (auto line = lines.cbegin(); line != lines.cend(); ++line) {
        if (!line.key().startsWith(start))
            continue;
        count += line.value();
        QString name = line.key().mid(start.size());
        if (name.endsWith(QLatin1String(" chunk")))
            name.chop(6);
        names.append(name);
    }
    const bool isNamed = text.contains(QLatin1String("%2"));
    if (count > 0)
        m_findings->add(check, subject, isNamed ? text.arg(times(count), listed(names)) : text.arg(times(count)));
}

void ReaderLint::setError(ApkFileError error, const QString &fault)
{
    if (m_error != NoError)
        return;
    m_error = error;
    m_fault = fault;
}

// What both readers refuse is damaged; what one of them refuses is told for that one.
void ReaderLint::tellError()
{
    using SorrelKit::Package;
    using SorrelKit::PackageNormalizer;
    const QString otherReads = m_error == NoError ? QStringLiteral(" ApkFile reads it all the same.") : QString();
    if (m_package.error() == Package::NoManifest)
        m_findings->add(LintChecks::NoManifest, QString(),
                        QStringLiteral("There is no manifest that can be read: this is no Android package."));
    else if (m_package.error() == Package::BadManifest)
        m_findings->add(DamagedManifest, manifestName,
                        QStringLiteral("The manifest cannot be read (%1).").arg(m_package.errorString()) + otherReads);
    else if (m_package.error() == Package::BadTable)
        m_findings->add(DamagedTable, tableName,
                        QStringLiteral("The resource table cannot be read (%1), and labels and icons are missing.")
                                .arg(m_package.errorString())
                            + otherReads);
    if (m_package.error() != Package::NoError || m_error == NoError)
        return;
    const QString fault = m_fault.isEmpty() ? QString() : QStringLiteral(": ") + FindingList::shortened(m_fault);
    m_findings->add(ApkFileRefuses, QString(),
                    QStringLiteral("ApkFile alone does not read the package (code %1, %2%3); SorrelKit does%4.")
                        .arg(QString::number(m_error), apkFileText(m_error), fault,
                             PackageNormalizer(m_fileName).isNeeded()
                                 ? QStringLiteral(", and so does ApkFile through PackageNormalizer")
                                 : QString()));
}
