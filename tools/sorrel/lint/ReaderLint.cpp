// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReaderLint.h"

#include "AttributeTexts.h"
#include "SequentialBytes.h"
#include "TableEncodings.h"

#include "archive/ZipArchive.h"
#include "document/DroppedNodes.h"
#include "document/XmlDecoder.h"
#include "limits/Limits.h"
#include "stream/Extractor.h"
#include "table/ApkResourcesData.h"
#include "table/ResourcesLoader.h"

#include <limits>
#include <optional>

using namespace LintChecks;
using ReaderCode = Diagnostics::Code;

namespace {

const QLatin1String tableFile("resources.arsc");
const QLatin1String manifestFile("AndroidManifest.xml");

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

// Diagnostics beyond the first ones are not kept.
QString countedItems(int count, const QString &noun)
{
    const QString atLeast = count >= Diagnostics::MaxItems ? QStringLiteral("at least ") : QString();
    return atLeast + FindingList::counted(count, noun);
}

QString nameOf(const Diagnostics::Item &item)
{
    switch (item.code) {
    case ReaderCode::UnknownElementNamespace:
        return QStringLiteral("%1 for element %2").arg(item.uri, item.name);
    case ReaderCode::UnknownAttributeNamespace:
        return item.uri;
    default:
        return QStringLiteral("0x%1").arg(item.number, 4, 16, QLatin1Char('0'));
    }
}

// Whether libsorrel finds an element in a document.
class FoundElements : public DroppedNodes
{
public:
    QString startElement(const QString &name) override
    {
        m_hasElement = true;
        return DroppedNodes::startElement(name);
    }
    QString startElement(const QString &uri, const QString &qualifiedName) override
    {
        m_hasElement = true;
        return DroppedNodes::startElement(uri, qualifiedName);
    }
    bool hasElement() const { return m_hasElement; }

private:
    bool m_hasElement = false;
};

// The error of ApkFile for an archive that Android and SorrelKit read.
PackageError::Code apkFileError(ZipArchive &archive)
{
    constexpr qint64 SearchedBytes = 0xffff; ///< of the file's end, for the end record
    const ZipDirectory &directory = archive.directory();
    if (directory.isMultiDisk() || archive.source().size() - directory.endAt() > SearchedBytes)
        return PackageError::CannotOpen;
    // ApkFile expects the directory right before its end record.
    return directory.gapBytes() > 0 ? PackageError::NoResources : PackageError::NoError;
}

// The content of the member @p path for ApkFile, which opens members whose header has another name, and none whose
// header has another method. Nothing when ApkFile does not open it.
std::optional<QByteArray> apkFileContent(ZipArchive &archive, const QString &path, qint64 maxBytes)
{
    const QByteArray name = path.toUtf8();
    const int number = archive.directory().find(ByteView(name));
    if (number < 0)
        return {};
    const ZipDirectory::Member member = archive.directory().member(number);
    const ZipDirectory::LocalHeader own = ZipDirectory::localHeader(archive.source(), member);
    if (!own.isFound || own.method != member.method || !ZipDirectory::agree(own, member))
        return {};
    Budget any(std::numeric_limits<qint64>::max(), 0);
    return archive.contentAnyway(path, maxBytes, &any).toByteArray();
}

} // namespace

ReaderLint::ReaderLint(const FileName &file, const SorrelKit::Package &package, FindingList *findings)
    : m_file(file), m_package(package), m_findings(findings)
{
}

void ReaderLint::run()
{
    if (!readMembers())
        return;
    if (!m_hasManifest && m_package.isValid()) {
        m_findings->add(PackageSet, QString(),
                        QStringLiteral("The file is a set of packages; SorrelKit reads it, ApkFile does not, and lint "
                                       "does not check each package."));
        checkPackage();
        return;
    }
    checkPackage();
    // ApkFile does not go by the number of members, so it may read this one.
    if (!m_isEmpty) {
        checkEncodings();
        readTable();
        readManifest();
    }
    reportError();
}

bool ReaderLint::readMembers()
{
    const std::unique_ptr<ZipArchive> opened = ZipArchive::atNativePath(m_file.path());
    ZipArchive &archive = *opened;
    if (!archive.open())
        return false;
    m_isEmpty = archive.directory().claimedCount() == 0;
    setError(apkFileError(archive));
    m_hasTable = archive.contains(tableFile);
    m_hasManifest = archive.contains(manifestFile);
    const std::optional<QByteArray> table = apkFileContent(archive, tableFile, Limits::MaxTableBytes);
    const std::optional<QByteArray> manifest = apkFileContent(archive, manifestFile, Limits::MaxManifestBytes);
    m_isTableOpened = table.has_value();
    m_isManifestOpened = manifest.has_value();
    m_table = table.value_or(QByteArray());
    m_manifest = manifest.value_or(QByteArray());
    return true;
}

void ReaderLint::checkPackage()
{
    if (!m_package.isValid())
        return;
    if (m_package.packageName().isEmpty())
        m_findings->add(NoPackageName, manifestFile,
                        QStringLiteral("The manifest has no package name; Android does not install the package."));
    if (m_package.minSdkVersion() > m_package.targetSdkVersion())
        m_findings->add(MinAboveTarget, manifestFile,
                        QStringLiteral("The minimum SDK version %1 is higher than the target SDK version %2.")
                            .arg(m_package.minSdkVersion())
                            .arg(m_package.targetSdkVersion()));
}

void ReaderLint::checkEncodings()
{
    const TableEncodings encodings(m_table);
    const QString text = QStringLiteral(
        "The resource table has %1; SorrelKit reads them, ApkFile needs PackageNormalizer to read them.");
    if (encodings.isSparse())
        m_findings->add(SparseTable, tableFile, text.arg(QStringLiteral("sparse types")));
    if (encodings.hasShortOffsets())
        m_findings->add(ShortOffsetsTable, tableFile, text.arg(QStringLiteral("types with 16-bit offsets")));
    if (encodings.isCompact())
        m_findings->add(CompactTable, tableFile, text.arg(QStringLiteral("compact entries")));
    if (encodings.hasSharedEntries())
        m_findings->add(SharedEntriesTable, tableFile,
                        QStringLiteral("Resources share an entry of the resource table; SorrelKit finds all of them, "
                                       "ApkFile needs PackageNormalizer to find more than the last one."));
}

void ReaderLint::readTable()
{
    if (!m_hasTable) {
        setError(PackageError::NoResources);
        // reportError() reports a table that exists and cannot be read.
        if (m_package.error().code() == SorrelKit::Error::Code::BadTable)
            return;
        m_findings->add(LintChecks::NoTable, QString(),
                        QStringLiteral("The package has no resource table; ApkFile needs the empty one that "
                                       "PackageNormalizer adds, SorrelKit and Android need none."));
        return;
    }
    if (!m_isTableOpened) {
        setError(PackageError::NoResources);
        return;
    }
    SequentialBytes device(m_table);
    Extractor reader(&device);
    reader.diagnostics().setQuiet();
    ApkResourcesData table;
    ResourcesLoader().load(&table, &reader);
    if (reader.failed())
        setError(PackageError::BadResources, reader.fault());
}

void ReaderLint::readManifest()
{
    if (m_manifest.isEmpty()) {
        setError(m_isManifestOpened ? PackageError::BadManifest : PackageError::NoManifest);
        return;
    }
    const AttributeTexts texts(m_manifest);
    if (texts.differentTexts() > 0)
        m_findings->add(
            DifferentText, manifestFile,
            QStringLiteral("The text differs from the value in %1 of the manifest (%2); ApkFile uses the text, "
                           "SorrelKit and Android use the value.")
                .arg(FindingList::counted(texts.differentTexts(), QStringLiteral("attribute")), listed(texts.names())));
    SequentialBytes device(m_manifest);
    Extractor reader(&device);
    reader.diagnostics().setQuiet();
    // The names of resources make no difference here, so the table is left out.
    FoundElements nodes;
    XmlDecoder(&nodes).decode(&reader, ApkResourcesData());
    if (reader.failed())
        setError(PackageError::BadManifest, reader.fault());
    else if (!nodes.hasElement() && m_package.isValid())
        m_findings->add(ApkFileFindsNothing, manifestFile,
                        QStringLiteral("ApkFile finds nothing in the manifest and reports no error; SorrelKit and "
                                       "Android read it, ApkFile needs PackageNormalizer to read it."));
    reportManifest(reader.diagnostics().items());
}

void ReaderLint::reportManifest(const QVector<Diagnostics::Item> &items)
{
    report(UndeclaredNamespace, manifestFile, items,
           {ReaderCode::UnknownElementNamespace, ReaderCode::UnknownAttributeNamespace}, QStringLiteral("place"),
           QStringLiteral(
               "The manifest uses undeclared namespaces in %1 (%2); readers that search by prefix miss these names."));
    report(UndeclaredNamespace, manifestFile, items, {ReaderCode::NoAndroidNamespace}, QStringLiteral("place"),
           QStringLiteral("The manifest uses Android's attributes in %1 without declaring their namespace; readers "
                          "that search by prefix miss them."));
}

// One finding for all items of @p codes: their number, which counts @p noun, and the names of some.
void ReaderLint::report(const LintCheck &check, const QString &subject, const QVector<Diagnostics::Item> &items,
                        const QVector<ReaderCode> &codes, const QString &noun, const QString &text)
{
    QSet<QString> known;
    int count = 0;
    for (const Diagnostics::Item &item : items) {
        if (!codes.contains(item.code))
            continue;
        ++count;
        known.insert(nameOf(item));
    }
    if (count == 0)
        return;
    QStringList names = known.values();
    names.sort();
    const bool isNamed = text.contains(QLatin1String("%2"));
    const QString number = countedItems(count, noun);
    m_findings->add(check, subject, isNamed ? text.arg(number, listed(names)) : text.arg(number));
}

void ReaderLint::setError(PackageError::Code error, const QString &fault)
{
    if (m_error != PackageError::NoError)
        return;
    m_error = error;
    m_fault = fault;
}

// A package that both readers refuse is damaged. Otherwise the finding names the reader that refuses it.
void ReaderLint::reportError()
{
    using SorrelKit::Error;
    const QString otherReads =
        m_error == PackageError::NoError ? QStringLiteral(" ApkFile still reads it.") : QString();
    if (m_package.error().code() == Error::Code::NoManifest)
        m_findings->add(LintChecks::NoManifest, QString(),
                        QStringLiteral("The file has no readable manifest; it is not an Android package."));
    else if (m_package.error().code() == Error::Code::BadManifest)
        m_findings->add(DamagedManifest, manifestFile,
                        QStringLiteral("The manifest cannot be read (%1).").arg(m_package.error().message())
                            + otherReads);
    else if (m_package.error().code() == Error::Code::BadTable)
        m_findings->add(DamagedTable, tableFile,
                        QStringLiteral("The resource table cannot be read (%1); labels and icons are missing.")
                                .arg(m_package.error().message())
                            + otherReads);
    const bool isRead = !m_package.error() || m_package.error().code() == Error::Code::RefusedByAndroid;
    if (!isRead || m_error == PackageError::NoError)
        return;
    const QString fault = m_fault.isEmpty() ? QString() : QStringLiteral(": ") + FindingList::shortened(m_fault);
    m_findings->add(ApkFileRefuses, QString(),
                    QStringLiteral("SorrelKit reads the package, ApkFile does not (code %1, %2%3).")
                        .arg(QString::number(m_error), PackageError::text(m_error), fault));
}
