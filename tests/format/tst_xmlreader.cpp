// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Cost.h"
#include "OddDocuments.h"
#include "Pictures.h"
#include "XmlBuilder.h"
#include "format/XmlReader.h"

#include <QtTest>

#include <cstring>
#include <memory>

using namespace fixture;

namespace {

constexpr quint32 NameId = 0x01010003;
constexpr quint32 IconId = 0x01010002;

QString tag(const char *name)
{
    return QString::fromLatin1(name);
}

QByteArray smallDocument()
{
    return XmlBuilder::manifest()
        .start(tag("a"), {plainText(tag("package"), tag("org.example")), androidReference(tag("icon"), 0x7f010002)})
        .empty(tag("b"), {androidText(tag("name"), tag("first"))})
        .start(tag("b"), {androidText(tag("name"), tag("second"))})
        .empty(tag("c"))
        .end(tag("b"))
        .end(tag("a"))
        .build();
}

QByteArray nested(int depth)
{
    XmlBuilder builder;
    for (int i = 0; i < depth; ++i)
        builder.start(tag("e"));
    for (int i = 0; i < depth; ++i)
        builder.end(tag("e"));
    return builder.build();
}

QByteArray wide(int children)
{
    XmlBuilder builder;
    builder.start(tag("e"));
    for (int i = 1; i < children; ++i)
        builder.empty(tag("e"));
    return builder.end(tag("e")).build();
}

} // namespace

Q_DECLARE_METATYPE(fixture::OddFile)

class TestXmlReader : public QObject
{
    Q_OBJECT

private slots:
    void elementsAndAttributes();
    void attributesAreKnownByTheirIds();
    void valuesWinOverWhatWasWritten();
    void typeOfTheDocumentMayBeUnset();
    void whatIsNoDocument();
    void documentsOfAnyRoot();
    void endsAreTakenInTurn();
    void whatFollowsTheRootIsLeftOut();
    void attributesMayBeAnywhere();

    void takesWhatAndroidTakes_data();
    void takesWhatAndroidTakes();
    void everyDocumentMayBeDamaged_data();
    void everyDocumentMayBeDamaged();

    void errorNotABinaryXmlDocument();
    void errorDamagedXmlDocument();
    void errorDamagedStringPool();
    void errorDamagedXmlElement();
    void errorXmlElementWithoutAName();
    void errorXmlDocumentWithoutAnElement();
    void errorElementsNestedTooDeeply();
    void errorTooManyNodes();
    void errorTooLongTexts();
    void tooLongTextsAreNotEvenMade();

    void everyPrefixIsAnswered();
    void everyByteMayBeDamaged();
};

void TestXmlReader::elementsAndAttributes()
{
    const XmlReader reader(smallDocument());
    QCOMPARE(formatFaultText(reader.fault()), QString());
    const XmlElement &root = reader.root();
    QCOMPARE(root.name, tag("a"));
    QCOMPARE(root.attributes.size(), 2);
    QCOMPARE(root.attribute(tag("package"))->text, tag("org.example"));
    const XmlAttribute *icon = root.attribute(IconId);
    QVERIFY(icon != nullptr);
    QVERIFY(icon->value.isReference());
    QCOMPARE(icon->value.data, 0x7f010002u);
    QCOMPARE(icon->text, QString());
    QCOMPARE(root.children.size(), 2);
    QCOMPARE(root.children.at(0).attribute(NameId)->text, tag("first"));
    QVERIFY(root.children.at(0).children.isEmpty());
    QCOMPARE(root.children.at(1).attribute(NameId)->text, tag("second"));
    QCOMPARE(root.children.at(1).children.at(0).name, tag("c"));
}

void TestXmlReader::attributesAreKnownByTheirIds()
{
    XmlBuilder builder;
    builder.attributeId(QStringLiteral("x1"), NameId);
    builder.empty(tag("a"), {plainText(tag("x1"), tag("named")), plainText(tag("name"), tag("plain"))});
    const XmlReader reader(builder.build());
    QCOMPARE(reader.root().attribute(NameId)->text, tag("named"));
    QVERIFY(reader.root().attribute(tag("x1")) == nullptr);
    QCOMPARE(reader.root().attribute(tag("name"))->text, tag("plain"));
    QVERIFY(reader.root().attribute(IconId) == nullptr);
}

// Android does the same: it uses values, except for the names of packages and splits, which it uses as written.
void TestXmlReader::valuesWinOverWhatWasWritten()
{
    constexpr int Null = 0;
    constexpr int Decimal = 0x10;
    const auto element = [](const Attribute &attribute) {
        return XmlReader(XmlBuilder::manifest().empty(tag("e"), {attribute}).build()).root();
    };
    const auto named = [&](const Attribute &attribute) { return *element(attribute).attribute(NameId); };
    const XmlAttribute other = named(writtenAs(androidText(tag("name"), tag("value")), tag("written")));
    QCOMPARE(other.text, tag("value"));
    QCOMPARE(other.raw, tag("written"));
    const XmlAttribute same = named(androidText(tag("name"), tag("value")));
    QCOMPARE(same.text, tag("value"));
    QVERIFY(same.raw.isNull());
    const XmlAttribute number = named(writtenAs(androidValue(tag("name"), Decimal, 5), tag("written")));
    QCOMPARE(number.text, QString());
    QCOMPARE(number.plainText(), tag("5"));
    QCOMPARE(number.raw, tag("written"));
    const XmlAttribute reference = named(writtenAs(androidReference(tag("name"), 0x7f010000), tag("written")));
    QCOMPARE(reference.text, QString());
    // Without a value, the written text is used.
    QCOMPARE(named(writtenAs(androidValue(tag("name"), Null, 0), tag("written"))).text, tag("written"));

    const XmlElement plain = element(writtenAs(plainText(tag("package"), tag("value")), tag("written")));
    QCOMPARE(plain.attribute(tag("package"))->text, tag("written"));
    const XmlElement version = element(writtenAs({QString(), tag("package"), QString(), Decimal, 5}, tag("written")));
    QCOMPARE(version.attribute(tag("package"))->text, tag("written"));
}

void TestXmlReader::typeOfTheDocumentMayBeUnset()
{
    QByteArray document = smallDocument();
    QVERIFY(XmlReader::isDocument(document));
    poke16(document, 0, 0);
    QVERIFY(XmlReader::isDocument(document));
    const XmlReader reader(document);
    QCOMPARE(formatFaultText(reader.fault()), QString());
    QCOMPARE(reader.root().name, tag("a"));
}

void TestXmlReader::whatIsNoDocument()
{
    QVERIFY(!XmlReader::isDocument(QByteArray()));
    QVERIFY(!XmlReader::isDocument("\x89PNG\r\n"));
    QVERIFY(!XmlReader::isDocument("<manifest/>"));
    QVERIFY(!XmlReader::isDocument(QByteArray("\2\0\14\0", 4)));
    // The size of its file is where that of a chunk would be.
    QVERIFY(!XmlReader::isDocument(webp(webpChunk("VP8X", QByteArray(0x8000, '\0')))));
}

void TestXmlReader::documentsOfAnyRoot()
{
    int unusual = 0;
    for (const OddFile &file : oddDocuments()) {
        const bool isUsual = file.bytes.startsWith(QByteArray("\3\0\10\0", 4));
        if (file.fault == FormatFault::None)
            QVERIFY2(XmlReader::isDocument(file.bytes), qPrintable(file.name));
        unusual += file.fault == FormatFault::None && !isUsual ? 1 : 0;
    }
    QVERIFY(unusual >= 8);
    QByteArray cut = smallDocument();
    poke16(cut, 0, 0x0100);
    QVERIFY(XmlReader::isDocument(cut));
    QVERIFY(!XmlReader::isDocument(cut.chopped(1)));
}

void TestXmlReader::endsAreTakenInTurn()
{
    const XmlReader reader(XmlBuilder().start(tag("a")).start(tag("b")).end(tag("a")).end(tag("b")).build());
    QCOMPARE(formatFaultText(reader.fault()), QString());
    QCOMPARE(reader.root().name, tag("a"));
    QCOMPARE(reader.root().children.first().name, tag("b"));
}

void TestXmlReader::whatFollowsTheRootIsLeftOut()
{
    const XmlReader reader(XmlBuilder().end(tag("z")).empty(tag("a")).empty(tag("b")).end(tag("b")).build());
    QCOMPARE(formatFaultText(reader.fault()), QString());
    QCOMPARE(reader.root().name, tag("a"));
}

void TestXmlReader::attributesMayBeAnywhere()
{
    XmlBuilder builder;
    ElementFields fields;
    fields.name = builder.index(tag("a"));
    fields.attributeStart = 24;
    fields.attributeSize = 28;
    fields.attributeCount = 2;
    const QByteArray records = Bytes()
                                   .zeros(4)
                                   .raw(attributeRecord(-1, builder.index(tag("x")), -1, 0x10, 7))
                                   .zeros(8)
                                   .raw(attributeRecord(-1, builder.index(tag("y")), -1, 0x10, 8))
                                   .zeros(8)
                                   .data();
    builder.chunk(nodeChunk(0x0102, elementBody(fields, records))).end(tag("a"));
    const XmlReader reader(builder.build());
    QCOMPARE(formatFaultText(reader.fault()), QString());
    QCOMPARE(reader.root().attribute(tag("x"))->value.data, 7u);
    QCOMPARE(reader.root().attribute(tag("y"))->value.data, 8u);
}

void TestXmlReader::takesWhatAndroidTakes_data()
{
    QTest::addColumn<OddFile>("file");
    for (const OddFile &file : oddDocuments())
        QTest::newRow(qPrintable(file.name)) << file;
}

void TestXmlReader::takesWhatAndroidTakes()
{
    QFETCH(OddFile, file);
    const XmlReader reader(file.bytes);
    QCOMPARE(formatFaultText(reader.fault()), formatFaultText(file.fault));
    if (file.fault != FormatFault::None)
        return;
    QVector<Oddity> oddities;
    for (const OddityList::Item &item : reader.oddities().items())
        oddities.append(item.oddity);
    QCOMPARE(oddities, file.oddities);
    QCOMPARE(reader.root().name, tag("manifest"));
    QCOMPARE(reader.root().children.size(), 1);
    QCOMPARE(reader.root().children.first().name, tag("application"));
}

void TestXmlReader::everyDocumentMayBeDamaged_data()
{
    takesWhatAndroidTakes_data();
}

// Each copy is in a heap block of its exact size, so that sanitizers report a read beyond it.
void TestXmlReader::everyDocumentMayBeDamaged()
{
    QFETCH(OddFile, file);
    constexpr int MostBytes = 1000; // a header of 7 KiB has the same bytes
    for (int at = 0; at < qMin(int(file.bytes.size()), MostBytes); ++at) {
        const auto block = std::make_unique<char[]>(size_t(file.bytes.size()));
        std::memcpy(block.get(), file.bytes.constData(), size_t(file.bytes.size()));
        block[size_t(at)] = char(block[size_t(at)] ^ 0xff);
        const XmlReader reader(QByteArray::fromRawData(block.get(), int(file.bytes.size())));
        QVERIFY(reader.fault() != FormatFault::None || !reader.root().isNull());
    }
}

void TestXmlReader::errorNotABinaryXmlDocument()
{
    QCOMPARE(formatFaultText(XmlReader("<manifest/>").fault()), QStringLiteral("not a binary XML document"));
    QVERIFY(XmlReader("<manifest/>").root().isNull());
}

void TestXmlReader::errorDamagedXmlDocument()
{
    const XmlReader inner(XmlBuilder().start(tag("a")).empty(tag("b")).chunk("\1\2\3").build());
    QCOMPARE(formatFaultText(inner.fault()), QStringLiteral("damaged XML document"));
    QCOMPARE(inner.root().name, tag("a"));
    QCOMPARE(inner.root().children.size(), 1);
    const XmlReader behind(XmlBuilder().empty(tag("a")).chunk("\1\2\3").build());
    QCOMPARE(formatFaultText(behind.fault()), QString());
    QVERIFY(behind.oddities().contains(Oddity::DocumentBytesBehind));
}

void TestXmlReader::errorDamagedStringPool()
{
    const QByteArray document = XmlBuilder().empty(tag("a")).build();
    QByteArray damaged = document;
    poke32(damaged, ChunkView::HeaderSize + PoolBuilder::CountAt, 1000);
    QCOMPARE(formatFaultText(XmlReader(damaged).fault()), QStringLiteral("damaged string pool in XML document"));
}

void TestXmlReader::errorDamagedXmlElement()
{
    for (const int count : {3, 0xffff}) {
        XmlBuilder builder;
        ElementFields fields;
        fields.name = builder.index(tag("a"));
        fields.attributeCount = count;
        builder.chunk(nodeChunk(0x0102, elementBody(fields, QByteArray(40, '\0')))).end(tag("a"));
        QCOMPARE(formatFaultText(XmlReader(builder.build()).fault()), QStringLiteral("damaged XML element"));
    }
}

void TestXmlReader::errorXmlElementWithoutAName()
{
    XmlBuilder builder;
    ElementFields fields;
    fields.name = 77;
    builder.chunk(nodeChunk(0x0102, elementBody(fields))).end(tag("a"));
    QCOMPARE(formatFaultText(XmlReader(builder.build()).fault()), QStringLiteral("XML element without a name"));
}

void TestXmlReader::errorXmlDocumentWithoutAnElement()
{
    QCOMPARE(formatFaultText(XmlReader(XmlBuilder().build()).fault()),
             QStringLiteral("XML document without an element"));
}

void TestXmlReader::errorElementsNestedTooDeeply()
{
    QCOMPARE(formatFaultText(XmlReader(nested(XmlReader::MaxDepth)).fault()), QString());
    QCOMPARE(formatFaultText(XmlReader(nested(XmlReader::MaxDepth + 1)).fault()),
             QStringLiteral("elements nested too deeply"));
}

void TestXmlReader::errorTooManyNodes()
{
    QCOMPARE(formatFaultText(XmlReader(wide(XmlReader::MaxNodes)).fault()), QString());
    QCOMPARE(formatFaultText(XmlReader(wide(XmlReader::MaxNodes + 1)).fault()),
             QStringLiteral("too many nodes in XML document"));
}

void TestXmlReader::errorTooLongTexts()
{
    constexpr int Length = 1 << 16;
    const auto document = [](int count) {
        XmlBuilder builder;
        builder.start(tag("a"));
        for (int i = 0; i < count; ++i)
            builder.empty(tag("b"), {plainText(tag("x"), QString(Length, QLatin1Char('x')))});
        return builder.end(tag("a")).build();
    };
    const int most = int(XmlReader::MaxCharacters / (Length + 2));
    QCOMPARE(formatFaultText(XmlReader(document(most)).fault()), QString());
    QCOMPARE(formatFaultText(XmlReader(document(most + 1)).fault()), QStringLiteral("too long texts in XML document"));
}

// The attributes of one element share a text. Without a stop at the first text over the limit, they take gigabytes.
void TestXmlReader::tooLongTextsAreNotEvenMade()
{
    constexpr int Length = 1 << 16;
    constexpr int Count = 40000;
    XmlBuilder builder;
    const int name = builder.index(tag("a"));
    const int text = builder.index(QString(Length, QLatin1Char('x')));
    QByteArray records;
    for (int i = 0; i < Count; ++i)
        records += attributeRecord(-1, name, text, 3, text);
    ElementFields fields;
    fields.name = name;
    fields.attributeCount = Count;
    const QByteArray bytes = builder.chunk(nodeChunk(0x102, elementBody(fields, records))).end(tag("a")).build();
    QCOMPARE(formatFaultText(XmlReader(bytes).fault()), QStringLiteral("too long texts in XML document"));
    const Cost taken = cost([&bytes]() { XmlReader reader(bytes); });
    QVERIFY(taken.ended);
    QVERIFY2(taken.allocated < 48 << 20, qPrintable(QString::number(taken.allocated)));
}

void TestXmlReader::everyPrefixIsAnswered()
{
    const QByteArray document = smallDocument();
    for (int size = 0; size < document.size(); ++size) {
        // From a heap block of exactly that size, so that a read beyond it is reported.
        const auto block = std::make_unique<char[]>(size_t(size));
        std::memcpy(block.get(), document.constData(), size_t(size));
        const XmlReader reader(QByteArray::fromRawData(block.get(), size));
        QCOMPARE(formatFaultText(reader.fault()), QStringLiteral("not a binary XML document"));
    }
}

void TestXmlReader::everyByteMayBeDamaged()
{
    const QByteArray document = smallDocument();
    int read = 0;
    for (int at = 0; at < document.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x7f, 0x80, 0xff}) {
            QByteArray damaged = document;
            poke8(damaged, at, value);
            const XmlReader reader(damaged);
            read += int(reader.fault() == FormatFault::None);
            if (reader.fault() == FormatFault::None)
                QVERIFY(!reader.root().isNull());
        }
    }
    // Damage has no effect in bytes that the reader ignores, and causes a fault in others.
    QVERIFY(read > 0 && read < document.size() * 5);
}

QTEST_GUILESS_MAIN(TestXmlReader)
#include "tst_xmlreader.moc"
