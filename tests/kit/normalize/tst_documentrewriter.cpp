// SPDX-License-Identifier: LGPL-2.1-or-later
#include "normalize/DocumentRewriter.h"

#include "Apk.h"
#include "ApkFile.h"
#include "Bytes.h"
#include "OddDocuments.h"
#include "format/AndroidAttributes.h"
#include "format/XmlReader.h"

#include <SorrelKit/PackageNormalizer.h>

#include <QDomDocument>
#include <QtTest>

#include <cstring>
#include <memory>

using namespace fixture;
using SorrelKit::DocumentRewriter;
using SorrelKit::PackageNormalizer;

namespace {

bool isSame(const XmlElement &left, const XmlElement &right)
{
    bool same = left.name == right.name && left.attributes.size() == right.attributes.size()
                && left.children.size() == right.children.size();
    for (int i = 0; same && i < left.attributes.size(); ++i) {
        const XmlAttribute &mine = left.attributes.at(i);
        const XmlAttribute &other = right.attributes.at(i);
        same = mine.id == other.id && mine.name == other.name && mine.text == other.text
               && mine.value.type == other.value.type && mine.value.data == other.value.data;
    }
    for (int i = 0; same && i < left.children.size(); ++i)
        same = isSame(left.children.at(i), right.children.at(i));
    return same;
}

} // namespace

Q_DECLARE_METATYPE(fixture::OddFile)

class TestDocumentRewriter : public QObject
{
    Q_OBJECT

private slots:
    void everyOddDocument_data();
    void everyOddDocument();
    void libsorrelReadsIt_data();
    void libsorrelReadsIt();
    void everyByteMayBeDamaged_data();
    void everyByteMayBeDamaged();
};

void TestDocumentRewriter::everyOddDocument_data()
{
    QTest::addColumn<OddFile>("file");
    for (const OddFile &file : oddDocuments())
        QTest::newRow(qPrintable(file.name)) << file;
}

void TestDocumentRewriter::everyOddDocument()
{
    QFETCH(OddFile, file);
    const QByteArray result = DocumentRewriter::rewritten(file.bytes);
    const bool isKept = file.fault != FormatFault::None || file.oddities.isEmpty()
                        || file.oddities == QVector<Oddity>{Oddity::UnbalancedNamespaces};
    QCOMPARE(result.constData() == file.bytes.constData(), isKept);
    if (isKept)
        return;
    const XmlReader reader(result);
    QCOMPARE(formatFaultText(reader.fault()), QString());
    QVERIFY(reader.oddities().isEmpty());
    // Attributes whose names are not in the pool are missing.
    const bool hasAll = !file.oddities.contains(Oddity::AttributeNameIndex);
    QCOMPARE(isSame(reader.root(), XmlReader(file.bytes).root()), hasAll);
    QCOMPARE(reader.root().children.first().attribute(Attr::Label)->text, QStringLiteral("Label"));
}

void TestDocumentRewriter::libsorrelReadsIt_data()
{
    everyOddDocument_data();
}

void TestDocumentRewriter::libsorrelReadsIt()
{
    QFETCH(OddFile, file);
    // libsorrel compares the names of ends, and takes no attributes in place of the fields before them. Neither is odd.
    const QStringList refused{QStringLiteral("ends of other names"), QStringLiteral("attributes at the start")};
    if (file.fault != FormatFault::None || refused.contains(file.name))
        return;
    PackageDevice device(emptyTable(), file.bytes);
    const PackageNormalizer normalizer(&device);
    const std::unique_ptr<ApkFile> package = normalizer.apkFile();
    const QDomElement root = package->getManifest().documentElement();
    QCOMPARE(root.tagName(), QStringLiteral("manifest"));
    QVERIFY(!root.firstChildElement(QStringLiteral("application")).isNull());
}

void TestDocumentRewriter::everyByteMayBeDamaged_data()
{
    everyOddDocument_data();
}

// Each copy is in a heap block of its exact size, so that sanitizers report a read beyond it.
void TestDocumentRewriter::everyByteMayBeDamaged()
{
    QFETCH(OddFile, file);
    constexpr int MostBytes = 1000; // a header of 7 KiB has the same bytes
    for (int at = 0; at < qMin(int(file.bytes.size()), MostBytes); ++at) {
        const auto block = std::make_unique<char[]>(size_t(file.bytes.size()));
        std::memcpy(block.get(), file.bytes.constData(), size_t(file.bytes.size()));
        block[size_t(at)] = char(block[size_t(at)] ^ 0xff);
        const QByteArray bytes = QByteArray::fromRawData(block.get(), int(file.bytes.size()));
        const QByteArray result = DocumentRewriter::rewritten(bytes);
        QCOMPARE(int(XmlReader(result).fault()), int(XmlReader(bytes).fault()));
    }
}

QTEST_GUILESS_MAIN(TestDocumentRewriter)
#include "tst_documentrewriter.moc"
