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

using namespace LintChecks;
using Code = Diagnostics::Code;

namespace {

const QLatin1String tableName("resources.arsc");
const QLatin1String manifestName("AndroidManifest.xml");

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
    if (count >= Diagnostics::MaxItems)
        return QStringLiteral("%1 times or more").arg(int(Diagnostics::MaxItems));
    return count == 1 ? QStringLiteral("once") : QStringLiteral("%1 times").arg(count);
}

QString nameOf(const Diagnostics::Item &item)
{
    switch (item.code) {
    case Code::UnknownElementNamespace:
        return QStringLiteral("%1 for element %2").arg(item.uri, item.name);
    case Code::UnknownAttributeNamespace:
        return item.uri;
    default:
        return QStringLiteral("0x%1").arg(item.number, 4, 16, QLatin1Char('0'));
    }
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
    const std::unique_ptr<ZipArchive> opened = ZipArchive::atNativePath(m_file.path());
    ZipArchive &archive = *opened;
    if (!archive.open())
        return false;
    m_hasTable = archive.contains(tableName);
    m_hasManifest = archive.contains(manifestName);
    m_table = archive.file(tableName, Limits::MaxTableBytes);
    m_manifest = archive.file(manifestName, Limits::MaxManifestBytes);
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
    const TableEncodings encodings(m_table);
    const QString text = QStringLiteral("The resource table has %1, which ApkFile does not read; SorrelKit does, and "
                                        "PackageNormalizer writes them anew for ApkFile.");
    if (encodings.isSparse())
        m_findings->add(SparseTable, tableName, text.arg(QStringLiteral("sparse types")));
    if (encodings.hasShortOffsets())
        m_findings->add(ShortOffsetsTable, tableName, text.arg(QStringLiteral("types with offsets of 16 bits")));
    if (encodings.isCompact())
        m_findings->add(CompactTable, tableName, text.arg(QStringLiteral("compact entries")));
    if (encodings.hasSharedEntries())
        m_findings->add(
            SharedEntriesTable, tableName,
            QStringLiteral("Resources share entries of the resource table, and ApkFile finds the last one's "
                           "alone; SorrelKit finds all, and PackageNormalizer writes them anew for ApkFile."));
}

void ReaderLint::readTable()
{
    if (!m_hasTable) {
        setError(PackageError::NoResources);
        // tellError() reports a table that exists and cannot be read.
        if (m_package.error().code() == SorrelKit::Error::Code::BadTable)
            return;
        m_findings->add(
            LintChecks::NoTable, QString(),
            QStringLiteral("There is no resource table, so that there are no resources; ApkFile needs one to "
                           "read the manifest, SorrelKit and Android do not. PackageNormalizer adds an empty one for "
                           "ApkFile."));
        return;
    }
    SequentialBytes device(m_table);
    Extractor reader(&device);
    reader.diagnostics().setQuiet();
    ApkResourcesData table;
    ResourcesLoader().load(&table, &reader);
    if (reader.failed()) {
        // The diagnostics of a table that was misread may be about anything.
        setError(PackageError::BadResources, reader.fault());
        return;
    }
    const QVector<Diagnostics::Item> &items = reader.diagnostics().items();
    report(UnknownTableChunk, tableName, items, {Code::UnexpectedTableChunk},
           QStringLiteral("The resource table has chunks of types that libsorrel skips, %1 (%2)."));
    report(UnknownStringPool, tableName, items, {Code::UnknownStringPool},
           QStringLiteral("The resource table has string pools that nothing refers to, %1."));
}

void ReaderLint::readManifest()
{
    if (!m_hasManifest || m_manifest.isEmpty()) {
        setError(m_hasManifest ? PackageError::BadManifest : PackageError::NoManifest);
        return;
    }
    const bool isUntyped = ChunkType(ByteView(m_manifest).u16(0)) == ChunkType::Untyped;
    if (isUntyped && m_package.isValid())
        m_findings->add(
            UntypedManifest, manifestName,
            QStringLiteral("The manifest's first chunk has no type, and ApkFile finds nothing in it and tells "
                           "no error; Android and SorrelKit read it, and PackageNormalizer sets the type for "
                           "ApkFile."));
    const AttributeTexts texts(m_manifest);
    if (texts.differentTexts() > 0)
        m_findings->add(
            DifferentText, manifestName,
            QStringLiteral("Attributes of the manifest were written as texts that are not their values, %1 (%2); "
                           "ApkFile takes the texts, SorrelKit and Android take the values.")
                .arg(times(texts.differentTexts()), listed(texts.names())));
    SequentialBytes device(m_manifest);
    Extractor reader(&device);
    reader.diagnostics().setQuiet();
    // The names of resources make no difference here, so the table is left out.
    DroppedNodes nodes;
    XmlDecoder(&nodes).decode(&reader, ApkResourcesData());
    if (reader.failed())
        setError(PackageError::BadManifest, reader.fault());
    if (!isUntyped)
        reportManifest(reader.diagnostics().items());
}

void ReaderLint::reportManifest(const QVector<Diagnostics::Item> &items)
{
    report(UnknownManifestChunk, manifestName, items, {Code::UnexpectedDocumentChunk},
           QStringLiteral("The manifest has chunks of types that libsorrel skips, %1 (%2)."));
    report(UndeclaredNamespace, manifestName, items, {Code::UnknownElementNamespace, Code::UnknownAttributeNamespace},
           QStringLiteral("The manifest uses namespaces that it does not declare, %1 (%2), and readers that go by "
                          "prefixes do not find what is in them."));
    report(UndeclaredNamespace, manifestName, items, {Code::NoAndroidNamespace},
           QStringLiteral("The manifest uses Android's attributes and does not declare their namespace, %1, and "
                          "readers that go by prefixes do not find them."));
}

// One finding for all items of @p codes: their number, and the names of some.
void ReaderLint::report(const LintCheck &check, const QString &subject, const QVector<Diagnostics::Item> &items,
                        const QVector<Code> &codes, const QString &text)
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
    m_findings->add(check, subject, isNamed ? text.arg(times(count), listed(names)) : text.arg(times(count)));
}

void ReaderLint::setError(PackageError::Code error, const QString &fault)
{
    if (m_error != PackageError::NoError)
        return;
    m_error = error;
    m_fault = fault;
}

// A package that both readers refuse is damaged. Otherwise the finding names the reader that refuses it.
void ReaderLint::tellError()
{
    using SorrelKit::Error;
    const QString otherReads =
        m_error == PackageError::NoError ? QStringLiteral(" ApkFile reads it all the same.") : QString();
    if (m_package.error().code() == Error::Code::NoManifest)
        m_findings->add(LintChecks::NoManifest, QString(),
                        QStringLiteral("There is no manifest that can be read: this is no Android package."));
    else if (m_package.error().code() == Error::Code::BadManifest)
        m_findings->add(DamagedManifest, manifestName,
                        QStringLiteral("The manifest cannot be read (%1).").arg(m_package.error().message())
                            + otherReads);
    else if (m_package.error().code() == Error::Code::BadTable)
        m_findings->add(DamagedTable, tableName,
                        QStringLiteral("The resource table cannot be read (%1), and labels and icons are missing.")
                                .arg(m_package.error().message())
                            + otherReads);
    if (m_package.error() || m_error == PackageError::NoError)
        return;
    const QString fault = m_fault.isEmpty() ? QString() : QStringLiteral(": ") + FindingList::shortened(m_fault);
    m_findings->add(ApkFileRefuses, QString(),
                    QStringLiteral("ApkFile alone does not read the package (code %1, %2%3); SorrelKit does.")
                        .arg(QString::number(m_error), PackageError::text(m_error), fault));
}
