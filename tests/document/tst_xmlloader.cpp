// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkResources.h"
#include "Bytes.h"
#include "Devices.h"
#include "LocalEncoding.h"
#include "LogCapture.h"
#include "PoolBuilder.h"
#include "TableBuilder.h"
#include "XmlBuilder.h"
#include "document/XmlLoader.h"
#include "stream/Extractor.h"

#include <QDomDocument>
#include <QtTest>

#include <limits>
#include <vector>

using namespace fixture;

namespace {

enum ChunkType : int {
    PoolType = 0x0001,
    DocumentType = 0x0003,
    StartNamespaceType = 0x0100,
    StartElementType = 0x0102,
    EndElementType = 0x0103,
    CharacterDataType = 0x0104,
    LastNodeType = 0x017f,
    ResourceIdMapType = 0x0180,
    UnknownType = 0x0777,
};

constexpr int Decimal = 0x10;
constexpr int HeaderSizeAt = 2;
constexpr int SizeAt = 4;
constexpr int NodeHeaderSizeAt = HeaderSizeAt;
constexpr qint64 NoString = -1;
constexpr int LabelId = 0x01010001;

const QString deviceText = QStringLiteral("device");
const QString badIndex = QStringLiteral("bad index in  pool");

/// The result of decoding a document.
struct Decoded {
    QDomDocument document;
    bool ok = false;
    QStringList log;

    QDomElement root() const { return document.documentElement(); }
    /// The fault that the log shows, or an empty string.
    QString fault() const
    {
        const QString before = QStringLiteral("XmlLoader error: ");
        const QString after = ": " + deviceText;
        if (log.isEmpty() || !log.last().startsWith(before) || !log.last().endsWith(after))
            return QString();
        return log.last().mid(before.size()).chopped(after.size());
    }
};

Decoded decoded(const QByteArray &bytes, const ApkResources &table = ApkResources())
{
    LogCapture log;
    SequentialDevice device(bytes, QIODevice::ReadOnly);
    device.setErrorText(deviceText);
    Decoded result;
    result.document = table.loadXml(&device, &result.ok);
    result.log = log.texts();
    return result;
}

Decoded decoded(const XmlBuilder &builder, const ApkResources &table = ApkResources())
{
    return decoded(builder.build(), table);
}

/// A document chunk with a pool of these strings, and these chunks after it.
QByteArray documentOf(const QStringList &strings, const QByteArray &chunks)
{
    return chunk(DocumentType, QByteArray(), PoolBuilder().strings(strings).build() + chunks);
}

QByteArray startElement(const ElementFields &fields, const QByteArray &records = QByteArray())
{
    return nodeChunk(StartElementType, elementBody(fields, records));
}

QByteArray startElement(int name)
{
    ElementFields fields;
    fields.name = name;
    return startElement(fields);
}

QByteArray endElement(qint64 name, qint64 ns = NoString)
{
    return nodeChunk(EndElementType, Bytes().u32(ns).u32(name).data());
}

QByteArray namespaceNode(int type, qint64 prefix, qint64 uri)
{
    return nodeChunk(type, Bytes().u32(prefix).u32(uri).data());
}

QByteArray resourceIdMap(const QVector<qint64> &ids)
{
    Bytes body;
    for (const qint64 id : ids)
        body.u32(id);
    return chunk(ResourceIdMapType, QByteArray(), body.data());
}

/// An element "e" (string 0 of the pool) with these attribute records.
QByteArray elementWith(const QVector<QByteArray> &records)
{
    ElementFields fields;
    fields.attributeCount = int(records.size());
    QByteArray all;
    for (const QByteArray &record : records)
        all += record;
    return startElement(fields, all);
}

/// The element's attributes as "{URI}prefix:name=value", in alphabetical order.
QStringList attributes(const QDomElement &element)
{
    QStringList texts;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.size(); ++i) {
        const QDomAttr attribute = map.item(i).toAttr();
        QString text = attribute.name() + '=' + attribute.value();
        if (!attribute.prefix().isEmpty())
            text.prepend(attribute.prefix() + ':');
        if (!attribute.namespaceURI().isEmpty())
            text.prepend('{' + attribute.namespaceURI() + '}');
        texts.append(text);
    }
    texts.sort();
    return texts;
}

/// The elements below a node: "a(b,c(d))".
QString shape(const QDomNode &node)
{
    QStringList children;
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
        children.append(child.isElement() ? child.nodeName() + shape(child) : QStringLiteral("not an element"));
    return children.isEmpty() ? QString() : '(' + children.join(',') + ')';
}

/// A table with a string of the application, for references to it.
ApkResources table()
{
    SequentialDevice device(TableBuilder()
                                .strings({"Notes"})
                                .package(PackageBuilder().types({"attr", "string"}).type(TypeBuilder(2).value(5, 3, 0)))
                                .package(PackageBuilder(1, "android").types({"attr"}))
                                .build());
    ApkResources table;
    table.load(&device);
    return table;
}

/// A small document with one item of each kind.
XmlBuilder goodDocument()
{
    XmlBuilder builder = XmlBuilder::manifest();
    return builder.start("manifest", {plainText("package", "org.example")})
        .chunk(nodeChunk(CharacterDataType, Bytes().u32(0).zeros(8).data()))
        .start("application", {androidReference("label", 0x7f020005), androidValue("enabled", 0x12, 1)})
        .startNamespace("tools", "urn:tools")
        .start("note", {Attribute{"urn:tools", "ignore", "all", 3, 0}}, "urn:tools")
        .end("note", "urn:tools")
        .endNamespace("tools", "urn:tools")
        .end("application")
        .end("manifest")
        .endNamespace("android", androidUri);
}

/// Nested elements, all closed.
XmlBuilder nested(int depth)
{
    XmlBuilder builder;
    for (int i = 0; i < depth; ++i)
        builder.start("e");
    for (int i = 0; i < depth; ++i)
        builder.end("e");
    return builder;
}

} // namespace

class TestXmlLoader : public QObject
{
    Q_OBJECT

private slots:
    // the document
    void aGoodDocumentIsDecoded();
    void theFlagMayBeNull();
    void documentsAreIndependent();
    void aLoaderStartsEachDocumentAnew();
    void theDeviceStaysTheCallers();
    void aFaultLeavesThePartialDocument();
    void nothingIsReadAfterAFault();
    void aReaderThatHadFailedStaysSo();
    void failuresAreLogged();
    void linesAreInTheLocalEncoding_data();
    void linesAreInTheLocalEncoding();
    void debugLinesHaveTheirContext();

    // chunks
    void aChunkThatIsNoDocumentIsHandledAlone();
    void withoutAPoolNamesAreEmpty();
    void onlyTheFirstChunkIsRead();
    void keepsTheDocumentsHeaderSizeUnused();
    void aDocumentClearsThePool();
    void documentsMayBeNested();
    void documentsNestedWithoutEndAreLoaded();
    void theLaterPoolReplacesTheEarlier();
    void unexpectedChunksAreLoggedAndSkipped_data();
    void unexpectedChunksAreLoggedAndSkipped();
    void characterDataLeavesNoText();
    void keepsTypesWithTheTopBitSetAtEightDigits();
    void nodeHeadersAreReadWhateverTheHeaderSize();
    void everyNodeHasAHeader_data();
    void everyNodeHasAHeader();
    void commentsMustExist_data();
    void commentsMustExist();
    void theRestOfAChunkIsSkipped();
    void theLastByteOfADocumentStartsAChunk();
    void keepsChunksOfNoSizeAsStepsBack();
    void manyChunksOfNoSizeAreRefusedWithAShortLog();

    // the resource-id map
    void theMapNamesAttributes();
    void theLaterMapReplacesTheEarlier();
    void furtherHeaderFieldsOfTheMapAreSkipped();
    void aMapMayBeEmpty();
    void aMapAfterAnElementDoesNotNameIt();
    void aNegativeMapHeaderStepsBack();

    // namespaces
    void namespacesLeaveNoAttributes();
    void theInnermostBindingOfAUriCounts();
    void bindingsOfOtherUrisAreIndependent();
    void theEndOfANamespaceRemovesEveryEqualBinding();
    void theEndOfTheOuterBindingLeavesTheInner();
    void theEndOfNoBindingIsIgnored();
    void aNamespaceWithoutItsStringsIsAFault();
    void aNamespaceWithoutPrefixIsRefused();
    void aNamespaceWithoutUriIsRefused();

    // the end of elements
    void elementsCloseToTheirParent();
    void elementsAreClosedByTheirLocalName();
    void aPrefixedNameClosesNoElement();
    void theNamespaceOfAnEndIsNotCompared();
    void theNamespaceOfAnEndMustExist();
    void anEndWithoutAnElementIsAFault();
    void anEndAfterTheRootIsAFault();
    void anEndOfAnotherNameIsAFault();
    void theEndOfANamelessElementIsAFault();
    void ofTwoFaultsOfAnEndTheMismatchIsTold();
    void anEndWithoutNameIsRefused();
    void aSecondTopLevelElementIsAppended();
    void elementsLeftOpenAreNoFault();
    void elementsNestToTheCeiling();
    void theCeilingCountsOpenElementsOnly();
    void theCeilingStartsAnewUnderANamelessElement();

    // the start of elements
    void anElementWithoutNamespaceIsPlain();
    void anElementHasThePrefixOfItsNamespace();
    void anUnboundNamespaceIsLoggedAndKept();
    void keepsTheColonOfAnElementWithoutPrefix();
    void theNameOfAnElementMustExist();
    void theNamespaceOfAnElementMustExist();
    void anElementWithoutNameIsRefused();
    void anEmptyNameGivesNoElement();
    void anAttributeSizeBelow20IsAFault_data();
    void anAttributeSizeBelow20IsAFault();
    void ofTwoFaultsOfAnElementTheAttributeSizeIsTold();
    void attributesStartWhereTheElementSays_data();
    void attributesStartWhereTheElementSays();
    void keepsAnAttributeStartBelow14AsAStepBack();
    void anAttributeStartOutOfTheChunkIsAFault();
    void longerRecordsAreSkippedToTheirEnd();
    void anElementWithoutAttributes_data();
    void anElementWithoutAttributes();
    void allRecordsAreReadDespiteAFault();
    void recordsThatRunOutOfTheChunkAreAFault();

    // attributes
    void theRawValueWins_data();
    void theRawValueWins();
    void theRawValueMustExist();
    void referencesAreRenderedByTheTable_data();
    void referencesAreRenderedByTheTable();
    void otherValuesAreRenderedByThePool_data();
    void otherValuesAreRenderedByThePool();
    void theSizeOfAValueIsIgnored();
    void knownAttributes_data();
    void knownAttributes();
    void unknownIdsHaveNoName_data();
    void unknownIdsHaveNoName();
    void aKnownIdNeedsNoNameOrNamespace();
    void aKnownIdTakesThePrefixThatIsBound();
    void aKnownIdWithoutTheAndroidNamespaceIsLogged();
    void theIndexOfTheNameIsTheIndexOfTheId();
    void anAttributeWithoutNamespaceIsPlain();
    void anAttributeHasThePrefixOfItsNamespace();
    void anUnboundAttributeNamespaceIsLoggedAndKept();
    void keepsTheColonOfAnAttributeWithoutPrefix();
    void theNameOfAnAttributeMustExist();
    void theNamespaceOfAnAttributeMustExist();
    void anAttributeWithoutNameIsRefused();
    void theLaterAttributeOfANameWins();
    void ofOneLocalNameTheLaterAttributeIsFound();

    // damage
    void everyPrefixIsRefused();
    void devicesThatDeliverLittleAreRefused();
    void theBufferOfADeviceMakesNoDifference();

    // every error text
    void closingTagDoesNotMatchOpeningTag();
    void badAttrSizeInXmlElement();
    void elementsNestedTooDeeply();
    void badIndexInPool();
    void badInput();
    void chunkTooShort();
    void fileTooShort();
    void boundaryOutOfBounds();
    void tooManyStepsBack();
    void stringExtendsPastStringblockEnd();
    void stringPoolContainsBadCount();

    void everyFieldMayBeDamaged();
};

void TestXmlLoader::aGoodDocumentIsDecoded()
{
    const Decoded result = decoded(goodDocument(), table());
    QVERIFY(result.ok);
    QCOMPARE(result.log, QStringList{"Unexpected chunk 0x0104"});
    QCOMPARE(shape(result.document), QString("(manifest(application(tools:note)))"));
    const QDomElement root = result.root();
    QCOMPARE(attributes(root), QStringList{"package=org.example"});
    const QDomElement application = root.firstChildElement();
    QCOMPARE(attributes(application),
             (QStringList{"{" + androidUri + "}android:enabled=true", "{" + androidUri + "}android:label=@string/5"}));
    QCOMPARE(application.attributeNS(androidUri, "label"), QString("@string/5"));
    const QDomElement note = application.firstChildElement();
    QCOMPARE(note.namespaceURI(), QString("urn:tools"));
    QCOMPARE(note.localName(), QString("note"));
    QCOMPARE(attributes(note), QStringList{"{urn:tools}tools:ignore=all"});
}

void TestXmlLoader::theFlagMayBeNull()
{
    LogCapture log;
    for (const QByteArray &bytes : {goodDocument().build(), QByteArray()}) {
        SequentialDevice device(bytes);
        QCOMPARE(ApkResources().loadXml(&device, nullptr).isNull(), bytes.isEmpty());
    }
}

void TestXmlLoader::documentsAreIndependent()
{
    // no strings, ids, namespaces or open elements remain from the document before
    XmlBuilder first;
    first.attributeId("label", LabelId).startNamespace("p", "urn:p").start("e", {}, "urn:p");
    const Decoded one = decoded(first);
    QVERIFY(one.ok);
    const Decoded two = decoded(documentOf({"e", "urn:p"}, startElement({1, 0}) + elementWith({})));
    QVERIFY(two.ok);
    QCOMPARE(two.log, QStringList{"Unknown namespace urn:p for element e"});
    QCOMPARE(shape(two.document), QString("(e(e))"));
    QCOMPARE(shape(one.document), QString("(p:e)"));
}

void TestXmlLoader::aLoaderStartsEachDocumentAnew()
{
    XmlLoader loader;
    LogCapture log;
    for (const bool closed : {false, true}) {
        const QByteArray end = closed ? endElement(0) : QByteArray();
        SequentialDevice device(documentOf({"e"}, startElement(0) + end));
        Extractor reader(&device);
        loader.load(&reader, ApkResources());
        QVERIFY(!reader.failed());
        QCOMPARE(shape(loader.document()), QString("(e)"));
    }
    // the element that the first load left open is no longer the current one
    SequentialDevice open(documentOf({"e"}, startElement(0)));
    Extractor reader(&open);
    loader.load(&reader, ApkResources());
    SequentialDevice end(documentOf({"e"}, endElement(0)));
    Extractor endReader(&end);
    loader.load(&endReader, ApkResources());
    QVERIFY(endReader.failed());
    QVERIFY(loader.document().isNull());
}

void TestXmlLoader::theDeviceStaysTheCallers()
{
    const QByteArray bytes = documentOf({"e"}, startElement(0));
    SequentialDevice device(bytes);
    QVERIFY(!ApkResources().loadXml(&device, nullptr).isNull());
    QVERIFY(device.isOpen());
    QCOMPARE(device.delivered(), bytes.size());
}

void TestXmlLoader::aFaultLeavesThePartialDocument()
{
    XmlBuilder builder;
    builder.start("a").start("b", {plainText("n", "v")}).chunk("x");
    const Decoded result = decoded(builder);
    QVERIFY(!result.ok);
    QCOMPARE(shape(result.document), QString("(a(b))"));
    QCOMPARE(attributes(result.root().firstChildElement()), QStringList{"n=v"});

    const Decoded empty = decoded(QByteArray());
    QVERIFY(!empty.ok);
    QVERIFY(empty.document.isNull());
}

void TestXmlLoader::nothingIsReadAfterAFault()
{
    const Decoded result = decoded(documentOf({"e"}, startElement(0) + chunk(ResourceIdMapType, QByteArray(), "x")
                                                         + startElement(0) + chunk(UnknownType)));
    QCOMPARE(shape(result.document), QString("(e)"));
    QCOMPARE(result.log.size(), 1);
    QVERIFY(!result.ok);
}

void TestXmlLoader::aReaderThatHadFailedStaysSo()
{
    LogCapture log;
    SequentialDevice device(goodDocument().build());
    device.setErrorText(deviceText);
    Extractor reader(&device);
    reader.setError("earlier");
    XmlLoader loader;
    loader.load(&reader, ApkResources());
    QVERIFY(loader.document().isNull());
    QCOMPARE(reader.position, 8);
    QCOMPARE(log.texts(), QStringList{"XmlLoader error: earlier: device"});
}

void TestXmlLoader::failuresAreLogged()
{
    LogCapture log;
    SequentialDevice device(goodDocument().build().left(20));
    bool ok = true;
    ApkResources().loadXml(&device, &ok);
    QVERIFY(!ok);
    // a device without an error text shows a general one
    QCOMPARE(log.texts(), QStringList{"XmlLoader error: file too short: " + device.errorString()});
}

void TestXmlLoader::linesAreInTheLocalEncoding_data()
{
    QTest::addColumn<QByteArray>("codec");
    for (const QByteArray &codec : LocalEncoding::all())
        QTest::newRow(codec.constData()) << codec;
}

void TestXmlLoader::linesAreInTheLocalEncoding()
{
    QFETCH(QByteArray, codec);
    const LocalEncoding encoding(codec);
    const QString uri = QString::fromUtf8("urn:\u00fc\u4e2d");
    const QString name = QString::fromUtf8("\u00f6\u4e2d");
    LogCapture log;
    XmlBuilder builder;
    builder.start(name, {Attribute{uri, "n", "v", 3, 0}}, uri).chunk("x");
    SequentialDevice device(builder.build());
    device.setErrorText(name);
    ApkResources().loadXml(&device, nullptr);
    const auto local = [](const QString &text) { return QString::fromUtf8(text.toLocal8Bit()); };
    const QStringList expected = {"Unknown namespace " + local(uri) + " for element " + local(name),
                                  "Unknown namespace " + local(uri),
                                  "XmlLoader error: chunk too short: " + local(name)};
    QCOMPARE(log.texts(), expected);
}

void TestXmlLoader::debugLinesHaveTheirContext()
{
    LogCapture log;
    XmlBuilder builder;
    builder.attributeId("label", LabelId);
    builder.start("e", {Attribute{"urn:u", "n", "v", 3, 0}, Attribute{QString(), "label", "v", 3, 0}}, "urn:u");
    builder.chunk(chunk(UnknownType)).chunk("x");
    SequentialDevice device(builder.build());
    ApkResources().loadXml(&device, nullptr);
    QCOMPARE(log.texts(), (QStringList{"Unknown namespace urn:u for element e", "Unknown namespace urn:u",
                                       "Android namespace not defined", "Unexpected chunk 0x0777",
                                       "XmlLoader error: chunk too short: " + device.errorString()}));
    for (const LogCapture::Line &line : log.lines()) {
        QCOMPARE(line.type, QtDebugMsg);
        QCOMPARE(line.category, QString("default"));
        QVERIFY(line.file.endsWith("XmlLoader.cpp"));
        QVERIFY(line.line > 0);
        QVERIFY(line.function.contains("XmlLoader::"));
    }
}

void TestXmlLoader::aChunkThatIsNoDocumentIsHandledAlone()
{
    const Decoded pool = decoded(PoolBuilder().strings({"e"}).build());
    QVERIFY(pool.ok);
    QVERIFY(pool.document.isNull());
    QVERIFY(pool.log.isEmpty());

    const Decoded map = decoded(resourceIdMap({LabelId}));
    QVERIFY(map.ok);
    QVERIFY(map.log.isEmpty());

    const Decoded unknown = decoded(chunk(UnknownType, "head", "body"));
    QVERIFY(unknown.ok);
    QVERIFY(unknown.document.isNull());
    QCOMPARE(unknown.log, QStringList{"Unexpected chunk 0x0777"});
}

void TestXmlLoader::withoutAPoolNamesAreEmpty()
{
    // a pool that was never loaded has no reader, so it cannot report a missing string
    const Decoded start = decoded(startElement(0));
    QVERIFY(start.ok);
    QVERIFY(start.log.isEmpty());
    QCOMPARE(shape(start.document), QString());
    QVERIFY(decoded(namespaceNode(StartNamespaceType, 3, 4)).ok);
    QCOMPARE(decoded(endElement(0)).fault(), QString("closing tag does not match opening tag"));
}

void TestXmlLoader::onlyTheFirstChunkIsRead()
{
    LogCapture log;
    const QByteArray bytes = documentOf({"e"}, startElement(0) + endElement(0));
    for (const QByteArray &rest : {QByteArray("x"), bytes}) {
        SequentialDevice device(bytes + rest);
        bool ok = false;
        QCOMPARE(shape(ApkResources().loadXml(&device, &ok)), QString("(e)"));
        QVERIFY(ok);
        QCOMPARE(device.delivered(), bytes.size());
    }
}

void TestXmlLoader::keepsTheDocumentsHeaderSizeUnused()
{
    for (const int headerSize : {0, 7, 16, 0x7fff, 0x8000, 0xffff}) {
        QByteArray bytes = documentOf({"e"}, startElement(0));
        poke16(bytes, HeaderSizeAt, headerSize);
        const Decoded result = decoded(bytes);
        QVERIFY(result.ok);
        QCOMPARE(shape(result.document), QString("(e)"));
    }
}

void TestXmlLoader::aDocumentClearsThePool()
{
    const QByteArray inner = chunk(DocumentType, QByteArray(), startElement(0));
    QCOMPARE(decoded(documentOf({"e"}, inner)).fault(), badIndex);
    // an empty pool behaves the same
    QCOMPARE(decoded(documentOf({"e"}, chunk(DocumentType) + startElement(0))).fault(), badIndex);
}

void TestXmlLoader::documentsMayBeNested()
{
    const QByteArray inner = documentOf({"inner"}, startElement(0) + endElement(0));
    const QByteArray outer = PoolBuilder().strings({"outer"}).build() + startElement(0);
    const Decoded result = decoded(documentOf({"first"}, startElement(0) + inner + outer));
    QVERIFY(result.ok);
    QCOMPARE(shape(result.document), QString("(first(inner,outer))"));
}

void TestXmlLoader::documentsNestedWithoutEndAreLoaded()
{
    constexpr int Depth = 200000;
    constexpr int HeaderSize = 8;
    const QByteArray content = PoolBuilder().strings({"deep"}).build() + startElement(0);
    Bytes bytes;
    for (int left = Depth; left > 0; --left)
        bytes.u16(DocumentType).u16(HeaderSize).u32(HeaderSize * left + content.size());
    bytes.raw(content);
    const Decoded result = decoded(bytes.data());
    QVERIFY(result.ok);
    QCOMPARE(shape(result.document), QString("(deep)"));
    // the outer document continues at the end of the nested ones
    const QByteArray after = PoolBuilder().strings({"after"}).build() + startElement(0);
    QCOMPARE(shape(decoded(chunk(DocumentType, QByteArray(), bytes.data() + after)).document),
             QString("(deep(after))"));
    QVERIFY(!decoded(bytes.data().chopped(1)).ok);
}

void TestXmlLoader::theLaterPoolReplacesTheEarlier()
{
    const QByteArray second = PoolBuilder().strings({"b"}).build();
    const Decoded result = decoded(documentOf({"a", "lost"}, startElement(0) + second + startElement(0)));
    QVERIFY(result.ok);
    QCOMPARE(shape(result.document), QString("(a(b))"));
    QCOMPARE(decoded(documentOf({"a", "lost"}, second + startElement(1))).fault(), badIndex);
}

void TestXmlLoader::unexpectedChunksAreLoggedAndSkipped_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("digits");
    QTest::newRow("null") << 0x0000 << "0x0000";
    QTest::newRow("table") << 0x0002 << "0x0002";
    QTest::newRow("before the nodes") << 0x00ff << "0x00ff";
    QTest::newRow("character data") << 0x0104 << "0x0104";
    QTest::newRow("last node") << 0x017f << "0x017f";
    QTest::newRow("after the resource-id map") << 0x0181 << "0x0181";
    QTest::newRow("package") << 0x0200 << "0x0200";
    QTest::newRow("largest positive") << 0x7fff << "0x7fff";
    QTest::newRow("node with the top bit") << 0x8102 << "0xffff8102";
    QTest::newRow("all bits") << 0xffff << "0xffffffff";
}

void TestXmlLoader::unexpectedChunksAreLoggedAndSkipped()
{
    QFETCH(int, type);
    QFETCH(QString, digits);
    const QByteArray unexpected = nodeChunk(type, QByteArray(9, '\x7f'));
    const Decoded result = decoded(documentOf({"e"}, startElement(0) + unexpected + endElement(0)));
    QVERIFY(result.ok);
    QCOMPARE(result.log, QStringList{"Unexpected chunk " + digits});
    QCOMPARE(shape(result.document), QString("(e)"));
}

void TestXmlLoader::characterDataLeavesNoText()
{
    XmlBuilder builder;
    const int text = builder.index("some text");
    builder.start("a").chunk(nodeChunk(CharacterDataType, Bytes().u32(text).u16(8).u8(0).u8(3).u32(text).data()));
    const Decoded result = decoded(builder.end("a").start("b"));
    QVERIFY(result.ok);
    QCOMPARE(result.log, QStringList{"Unexpected chunk 0x0104"});
    QCOMPARE(shape(result.document), QString("(a,b)"));
    QCOMPARE(result.root().text(), QString());
}

void TestXmlLoader::keepsTypesWithTheTopBitSetAtEightDigits()
{
    const Decoded result = decoded(documentOf({}, chunk(0x8000)));
    QVERIFY(result.ok);
    QCOMPARE(result.log, QStringList{"Unexpected chunk 0xffff8000"});
}

void TestXmlLoader::nodeHeadersAreReadWhateverTheHeaderSize()
{
    for (const int headerSize : {0, 8, 17, 0x7fff, 0x8000}) {
        QByteArray start = startElement(0);
        QByteArray end = endElement(0);
        poke16(start, NodeHeaderSizeAt, headerSize);
        poke16(end, NodeHeaderSizeAt, headerSize);
        const Decoded result = decoded(documentOf({"e"}, start + start + end));
        QVERIFY(result.ok);
        QCOMPARE(shape(result.document), QString("(e(e))"));
    }
}

void TestXmlLoader::everyNodeHasAHeader_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isNode");
    QTest::newRow("before") << 0x00ff << false;
    QTest::newRow("character data") << 0x0104 << true;
    QTest::newRow("in between") << 0x0150 << true;
    QTest::newRow("last") << int(LastNodeType) << true;
    QTest::newRow("after") << int(ResourceIdMapType) << false;
    QTest::newRow("top bit") << 0x8104 << false;
}

void TestXmlLoader::everyNodeHasAHeader()
{
    QFETCH(int, type);
    QFETCH(bool, isNode);
    QCOMPARE(decoded(documentOf({"e"}, chunk(type))).fault(), isNode ? QString("chunk too short") : QString());
    QCOMPARE(decoded(documentOf({"e"}, chunk(type, QByteArray(4, '\0')))).ok, !isNode);
    QCOMPARE(decoded(documentOf({"e"}, nodeChunk(type, QByteArray(), 1))).fault(), isNode ? badIndex : QString());
    QCOMPARE(decoded(documentOf({}, nodeChunk(type, QByteArray(), 0))).fault(), isNode ? badIndex : QString());
}

void TestXmlLoader::commentsMustExist_data()
{
    QTest::addColumn<int>("type");
    for (int type = StartNamespaceType; type <= CharacterDataType; ++type)
        QTest::newRow(qPrintable(QString::number(type, 16))) << type;
}

void TestXmlLoader::commentsMustExist()
{
    QFETCH(int, type);
    const QByteArray before = namespaceNode(StartNamespaceType, 0, 0) + startElement(0);
    const QByteArray body = type == StartElementType ? elementBody(ElementFields())
                                                     : Bytes().u32(type == EndElementType ? -1 : 0).u32(0).data();
    for (const qint64 comment : {qint64(-1), qint64(-2), qint64(0x80000000), qint64(0), qint64(1)})
        QVERIFY(decoded(documentOf({"e", "comment"}, before + nodeChunk(type, body, comment))).ok);
    for (const qint64 comment : {2, 0x7fffffff}) {
        const Decoded result = decoded(documentOf({"e", "comment"}, before + nodeChunk(type, body, comment)));
        QVERIFY(!result.ok);
        QCOMPARE(result.fault(), badIndex);
        QCOMPARE(shape(result.document), QString("(e)"));
    }
}

void TestXmlLoader::theRestOfAChunkIsSkipped()
{
    const auto padded = [](const QByteArray &bytes) {
        QByteArray result = bytes + QByteArray(5, '\xff');
        poke32(result, SizeAt, result.size());
        return result;
    };
    const QByteArray start = namespaceNode(StartNamespaceType, 0, 0);
    const Decoded result = decoded(
        documentOf({"e"}, padded(start) + padded(startElement(0)) + padded(endElement(0)) + padded(startElement(0))));
    QVERIFY(result.ok);
    QCOMPARE(shape(result.document), QString("(e,e)"));
}

void TestXmlLoader::theLastByteOfADocumentStartsAChunk()
{
    for (int count = 1; count < 8; ++count)
        QCOMPARE(decoded(documentOf({"e"}, QByteArray(count, '\0'))).fault(), QString("chunk too short"));
}

// After each chunk the position is back at its start, so the document ends 8 bytes later on the device.
void TestXmlLoader::keepsChunksOfNoSizeAsStepsBack()
{
    const QByteArray none = Bytes().u16(UnknownType).u16(8).u32(0).data();
    const QByteArray rest = chunk(UnknownType, QByteArray(), QByteArray(16, 'x'));
    const Decoded result = decoded(documentOf({"e"}, none.repeated(3) + startElement(0)) + rest);
    QVERIFY(result.ok);
    QCOMPARE(result.log.size(), 4);
    QCOMPARE(shape(result.document), QString("(e)"));
}

void TestXmlLoader::manyChunksOfNoSizeAreRefusedWithAShortLog()
{
    const QByteArray none = Bytes().u16(UnknownType).u16(8).u32(0).data();
    // the document is skipped to its end, and each step back has moved that end on
    const QByteArray rest(8 * (Extractor::MaxStepsBack + 1), 'x');
    const Decoded result = decoded(documentOf({"e"}, none.repeated(100000)) + rest);
    QVERIFY(!result.ok);
    QCOMPARE(result.fault(), QString("too many steps back"));
    QVERIFY(result.log.size() <= Extractor::MaxStepsBack + 2);
}

void TestXmlLoader::theMapNamesAttributes()
{
    XmlBuilder builder;
    builder.attributeId("obscured", LabelId).attributeId("other", 0x01010002).startNamespace("android", androidUri);
    const Decoded result = decoded(builder.start("e", {androidText("obscured", "a"), androidText("other", "b")}));
    QCOMPARE(attributes(result.root()),
             (QStringList{"{" + androidUri + "}android:icon=b", "{" + androidUri + "}android:label=a"}));
}

void TestXmlLoader::theLaterMapReplacesTheEarlier()
{
    const QByteArray element = elementWith({attributeRecord(NoString, 1, 0, 3, 0)});
    const QByteArray first = resourceIdMap({0, LabelId});
    // a shorter map replaces it as well
    for (const QByteArray &second : {resourceIdMap({0, 0}), resourceIdMap({0}), resourceIdMap({})}) {
        QCOMPARE(attributes(decoded(documentOf({"e", "n"}, first + second + element)).root()), QStringList{"n=e"});
        QCOMPARE(attributes(decoded(documentOf({"e", "n"}, second + first + element)).root()),
                 QStringList{"{" + androidUri + "}label=e"});
    }
}

void TestXmlLoader::furtherHeaderFieldsOfTheMapAreSkipped()
{
    const QByteArray map = chunk(ResourceIdMapType, "12345", Bytes().u32(0).u32(LabelId).data());
    const Decoded result = decoded(documentOf({"e", "n"}, map + elementWith({attributeRecord(NoString, 1, 0, 3, 0)})));
    QVERIFY(result.ok);
    QCOMPARE(attributes(result.root()), QStringList{"{" + androidUri + "}label=e"});
}

void TestXmlLoader::aMapMayBeEmpty()
{
    QVERIFY(decoded(documentOf({"e"}, chunk(ResourceIdMapType))).ok);
    QVERIFY(decoded(documentOf({"e"}, chunk(ResourceIdMapType, "12345"))).ok);
}

void TestXmlLoader::aMapAfterAnElementDoesNotNameIt()
{
    const QByteArray element = elementWith({attributeRecord(NoString, 1, 0, 3, 0)});
    const Decoded result = decoded(documentOf({"e", "n"}, element + resourceIdMap({0, LabelId}) + element));
    QCOMPARE(attributes(result.root()), QStringList{"n=e"});
    QCOMPARE(attributes(result.root().firstChildElement()), QStringList{"{" + androidUri + "}label=e"});
}

// The map then contains the bytes that follow on the device, as many as its header stepped back.
void TestXmlLoader::aNegativeMapHeaderStepsBack()
{
    QByteArray map = resourceIdMap({0});
    poke16(map, HeaderSizeAt, 4);
    const QByteArray id = Bytes().u32(LabelId).data();
    const QByteArray element = elementWith({attributeRecord(NoString, 1, 0, 3, 0)});
    const Decoded result = decoded(documentOf({"e", "n"}, map + element)
                                       .insert(8 + PoolBuilder().strings({"e", "n"}).build().size() + map.size(), id));
    QVERIFY(result.ok);
    QCOMPARE(attributes(result.root()), QStringList{"{" + androidUri + "}label=e"});
    // the largest header size makes a map that the device cannot deliver, or a map of no whole words
    for (const int headerSize : {0x8000, 0xffff, 0x7fff}) {
        poke16(map, HeaderSizeAt, headerSize);
        QVERIFY(!decoded(documentOf({"e", "n"}, map + element)).ok);
    }
}

void TestXmlLoader::namespacesLeaveNoAttributes()
{
    XmlBuilder builder;
    const Decoded result = decoded(builder.startNamespace("p", "urn:p").start("e").end("e").endNamespace("p", "urn:p"));
    QVERIFY(result.ok);
    QVERIFY(result.log.isEmpty());
    QCOMPARE(attributes(result.root()), QStringList());
    QCOMPARE(shape(result.document), QString("(e)"));
}

void TestXmlLoader::theInnermostBindingOfAUriCounts()
{
    XmlBuilder builder;
    builder.startNamespace("outer", "urn:u").start("a", {}, "urn:u");
    builder.startNamespace("inner", "urn:u").start("b", {Attribute{"urn:u", "n", "v", 3, 0}}, "urn:u").end("b");
    builder.endNamespace("inner", "urn:u").start("c", {Attribute{"urn:u", "n", "v", 3, 0}}, "urn:u").end("c");
    builder.endNamespace("outer", "urn:u").start("d", {}, "urn:u");
    const Decoded result = decoded(builder);
    QVERIFY(result.ok);
    QCOMPARE(shape(result.document), QString("(outer:a(inner:b,outer:c,d))"));
    QCOMPARE(attributes(result.root().firstChildElement()), QStringList{"{urn:u}inner:n=v"});
    QCOMPARE(attributes(result.root().firstChildElement().nextSiblingElement()), QStringList{"{urn:u}outer:n=v"});
    QCOMPARE(result.log, QStringList{"Unknown namespace urn:u for element d"});
}

void TestXmlLoader::bindingsOfOtherUrisAreIndependent()
{
    XmlBuilder builder;
    builder.startNamespace("p", "urn:a").startNamespace("p", "urn:b").start("a", {}, "urn:a");
    builder.endNamespace("p", "urn:b").start("b", {}, "urn:a").start("c", {}, "urn:b");
    const Decoded result = decoded(builder);
    QCOMPARE(shape(result.document), QString("(p:a(p:b(c)))"));
    QCOMPARE(result.log, QStringList{"Unknown namespace urn:b for element c"});
}

void TestXmlLoader::theEndOfANamespaceRemovesEveryEqualBinding()
{
    XmlBuilder builder;
    builder.startNamespace("other", "urn:u").startNamespace("p", "urn:u").startNamespace("p", "urn:u");
    builder.start("a", {}, "urn:u").endNamespace("p", "urn:u").start("b", {}, "urn:u");
    QCOMPARE(shape(decoded(builder).document), QString("(p:a(other:b))"));
}

void TestXmlLoader::theEndOfTheOuterBindingLeavesTheInner()
{
    XmlBuilder builder;
    builder.startNamespace("outer", "urn:u").startNamespace("inner", "urn:u").endNamespace("outer", "urn:u");
    builder.start("a", {}, "urn:u").endNamespace("inner", "urn:u").start("b", {}, "urn:u");
    QCOMPARE(shape(decoded(builder).document), QString("(inner:a(b))"));
}

void TestXmlLoader::theEndOfNoBindingIsIgnored()
{
    XmlBuilder builder;
    builder.endNamespace("p", "urn:p").startNamespace("p", "urn:p");
    builder.endNamespace("q", "urn:p").endNamespace("p", "urn:q").start("e", {}, "urn:p");
    const Decoded result = decoded(builder);
    QVERIFY(result.ok);
    QVERIFY(result.log.isEmpty());
    QCOMPARE(shape(result.document), QString("(p:e)"));
}

void TestXmlLoader::aNamespaceWithoutItsStringsIsAFault()
{
    for (const int type : {0x0100, 0x0101}) {
        QCOMPARE(decoded(documentOf({"p"}, namespaceNode(type, 0, 1))).fault(), badIndex);
        QCOMPARE(decoded(documentOf({"p"}, namespaceNode(type, 1, 0))).fault(), badIndex);
        QCOMPARE(decoded(documentOf({"p"}, nodeChunk(type, QByteArray(7, '\0')))).fault(), QString("chunk too short"));
    }
}

void TestXmlLoader::aNamespaceWithoutPrefixIsRefused()
{
    QCOMPARE(decoded(documentOf({"uri"}, namespaceNode(0x0100, NoString, 0))).fault(), badIndex);
    QCOMPARE(decoded(documentOf({"uri"}, namespaceNode(0x0101, NoString, 0))).fault(), badIndex);
}

void TestXmlLoader::aNamespaceWithoutUriIsRefused()
{
    QCOMPARE(decoded(documentOf({"p"}, namespaceNode(0x0100, 0, NoString))).fault(), badIndex);
}

void TestXmlLoader::elementsCloseToTheirParent()
{
    XmlBuilder builder;
    builder.start("a").empty("b").start("c").empty("d").empty("e").end("c").empty("f").end("a");
    const Decoded result = decoded(builder);
    QVERIFY(result.ok);
    QVERIFY(result.log.isEmpty());
    QCOMPARE(shape(result.document), QString("(a(b,c(d,e),f))"));
}

void TestXmlLoader::elementsAreClosedByTheirLocalName()
{
    XmlBuilder builder;
    builder.startNamespace("p", "urn:p").start("a", {}, "urn:p").start("b", {}, "urn:unbound").start("c:d");
    const Decoded result = decoded(builder.end("c:d").end("b").end("a"));
    QVERIFY(result.ok);
    QCOMPARE(shape(result.document), QString("(p:a(b(c:d)))"));
}

void TestXmlLoader::aPrefixedNameClosesNoElement()
{
    XmlBuilder builder;
    builder.startNamespace("p", "urn:p").start("a", {}, "urn:p").end("p:a");
    QCOMPARE(decoded(builder).fault(), QString("closing tag does not match opening tag"));
}

void TestXmlLoader::theNamespaceOfAnEndIsNotCompared()
{
    XmlBuilder builder;
    builder.startNamespace("p", "urn:p").start("a", {}, "urn:p").start("b").end("b", "urn:other").end("a", "urn:q");
    const Decoded result = decoded(builder);
    QVERIFY(result.ok);
    QVERIFY(result.log.isEmpty());
}

void TestXmlLoader::theNamespaceOfAnEndMustExist()
{
    const Decoded result = decoded(documentOf({"e"}, startElement(0) + endElement(0, 1)));
    QVERIFY(!result.ok);
    QCOMPARE(result.fault(), badIndex);
    QVERIFY(decoded(documentOf({"e"}, startElement(0) + endElement(0, -2))).ok);
    QVERIFY(decoded(documentOf({"e"}, startElement(0) + endElement(0, 0))).ok);
}

void TestXmlLoader::anEndWithoutAnElementIsAFault()
{
    for (const char *name : {"e", ""}) {
        const Decoded result = decoded(documentOf({name}, endElement(0)));
        QVERIFY(!result.ok);
        QCOMPARE(result.fault(), QString("closing tag does not match opening tag"));
        QVERIFY(result.document.isNull());
    }
}

void TestXmlLoader::anEndAfterTheRootIsAFault()
{
    const Decoded result = decoded(documentOf({"e"}, startElement(0) + endElement(0) + endElement(0)));
    QVERIFY(!result.ok);
    QCOMPARE(result.fault(), QString("closing tag does not match opening tag"));
    QCOMPARE(shape(result.document), QString("(e)"));
}

void TestXmlLoader::anEndOfAnotherNameIsAFault()
{
    XmlBuilder builder;
    builder.start("a").start("b").end("a").start("c");
    const Decoded result = decoded(builder);
    QVERIFY(!result.ok);
    QCOMPARE(result.log, QStringList{"XmlLoader error: closing tag does not match opening tag: device"});
    QCOMPARE(shape(result.document), QString("(a(b))"));

    XmlBuilder other;
    QVERIFY(!decoded(other.start("a").end("A")).ok);
}

void TestXmlLoader::theEndOfANamelessElementIsAFault()
{
    const Decoded result = decoded(documentOf({"", "a"}, startElement(1) + startElement(0) + endElement(0)));
    QCOMPARE(result.fault(), QString("closing tag does not match opening tag"));
    QCOMPARE(shape(result.document), QString("(a)"));
}

void TestXmlLoader::ofTwoFaultsOfAnEndTheMismatchIsTold()
{
    QCOMPARE(decoded(documentOf({"a", "b"}, startElement(0) + endElement(1, 99))).fault(),
             QString("closing tag does not match opening tag"));
    // a missing name is not compared
    QCOMPARE(decoded(documentOf({"a", "b"}, startElement(0) + endElement(2))).fault(), badIndex);
    QCOMPARE(decoded(documentOf({"a"}, startElement(0) + nodeChunk(EndElementType, "1234"))).fault(),
             QString("chunk too short"));
}

void TestXmlLoader::anEndWithoutNameIsRefused()
{
    QCOMPARE(decoded(documentOf({"e"}, startElement(0) + endElement(NoString))).fault(), badIndex);
}

void TestXmlLoader::aSecondTopLevelElementIsAppended()
{
    XmlBuilder builder;
    const Decoded result = decoded(builder.empty("a").start("b").empty("c").end("b").empty("d"));
    QVERIFY(result.ok);
    QCOMPARE(shape(result.document), QString("(a,b(c),d)"));
    QCOMPARE(result.root().tagName(), QString("a"));
}

void TestXmlLoader::elementsLeftOpenAreNoFault()
{
    XmlBuilder builder;
    const Decoded result = decoded(builder.start("a").start("b"));
    QVERIFY(result.ok);
    QVERIFY(result.log.isEmpty());
    QCOMPARE(shape(result.document), QString("(a(b))"));
}

void TestXmlLoader::elementsNestToTheCeiling()
{
    for (const int depth : {XmlDecoder::MaxElementDepth - 1, XmlDecoder::MaxElementDepth})
        QVERIFY(decoded(nested(depth)).ok);
    const Decoded result = decoded(nested(XmlDecoder::MaxElementDepth + 1));
    QVERIFY(!result.ok);
    QCOMPARE(result.fault(), QString("elements nested too deeply"));
    // elements above the ceiling exist, the one below is missing
    QCOMPARE(result.document.elementsByTagName("e").size(), XmlDecoder::MaxElementDepth);
}

void TestXmlLoader::theCeilingCountsOpenElementsOnly()
{
    XmlBuilder siblings;
    siblings.start("root");
    for (int i = 0; i < 2 * XmlDecoder::MaxElementDepth; ++i)
        siblings.empty("e");
    QVERIFY(decoded(siblings).ok);
    // each load starts at depth 0
    XmlLoader loader;
    for (int i = 0; i < 2; ++i) {
        XmlBuilder open;
        for (int depth = 0; depth < XmlDecoder::MaxElementDepth; ++depth)
            open.start("e");
        SequentialDevice device(open.build());
        Extractor reader(&device);
        loader.load(&reader, ApkResources());
        QVERIFY(!reader.failed());
    }
}

void TestXmlLoader::theCeilingStartsAnewUnderANamelessElement()
{
    QByteArray chunks;
    for (int i = 0; i < XmlDecoder::MaxElementDepth; ++i)
        chunks += startElement(1);
    const Decoded good = decoded(documentOf({"", "e"}, chunks.left(chunks.size() / 2) + startElement(0) + chunks));
    QVERIFY(good.ok);
    const Decoded bad = decoded(documentOf({"", "e"}, startElement(0) + chunks + startElement(1)));
    QCOMPARE(bad.fault(), QString("elements nested too deeply"));
}

void TestXmlLoader::anElementWithoutNamespaceIsPlain()
{
    for (const int ns : {-1, -2, std::numeric_limits<int>::min()}) {
        const Decoded result = decoded(documentOf({"e", "p:e"}, startElement({ns, 0}) + startElement({ns, 1})));
        QVERIFY(result.ok);
        QVERIFY(result.log.isEmpty());
        QCOMPARE(result.root().tagName(), QString("e"));
        QVERIFY(result.root().namespaceURI().isEmpty());
        QVERIFY(result.root().prefix().isEmpty());
        // a colon in the name of such an element is part of the name
        QCOMPARE(result.root().firstChildElement().tagName(), QString("p:e"));
    }
}

void TestXmlLoader::anElementHasThePrefixOfItsNamespace()
{
    XmlBuilder builder;
    const Decoded result = decoded(builder.startNamespace("p", "urn:p").start("e", {}, "urn:p"));
    QVERIFY(result.log.isEmpty());
    QCOMPARE(result.root().nodeName(), QString("p:e"));
    QCOMPARE(result.root().localName(), QString("e"));
    QCOMPARE(result.root().prefix(), QString("p"));
    QCOMPARE(result.root().namespaceURI(), QString("urn:p"));
}

void TestXmlLoader::anUnboundNamespaceIsLoggedAndKept()
{
    XmlBuilder builder;
    const Decoded result = decoded(builder.startNamespace("q", "urn:q").start("e", {}, "urn:p").end("e"));
    QVERIFY(result.ok);
    QCOMPARE(result.log, QStringList{"Unknown namespace urn:p for element e"});
    QCOMPARE(result.root().namespaceURI(), QString("urn:p"));
    QCOMPARE(result.root().localName(), QString("e"));
    QCOMPARE(result.root().prefix(), QString());
}

// The qualified name is ":a:b", and it is split at its first colon.
void TestXmlLoader::keepsTheColonOfAnElementWithoutPrefix()
{
    XmlBuilder builder;
    const Decoded result = decoded(builder.start("a:b", {}, "urn:p").end("a:b"));
    QVERIFY(result.ok);
    QCOMPARE(result.root().prefix(), QString());
    QCOMPARE(result.root().localName(), QString("a:b"));

    XmlBuilder bound;
    const QDomElement root = decoded(bound.startNamespace("p", "urn:p").start("a:b", {}, "urn:p")).root();
    QCOMPARE(root.prefix(), QString("p"));
    QCOMPARE(root.localName(), QString("a:b"));
}

void TestXmlLoader::theNameOfAnElementMustExist()
{
    const Decoded result = decoded(documentOf({"e"}, startElement(0) + startElement(1)));
    QVERIFY(!result.ok);
    QCOMPARE(result.fault(), badIndex);
    // no element is created, and the current element stays
    QCOMPARE(shape(result.document), QString("(e)"));
}

// The element exists, in a namespace without a URI.
void TestXmlLoader::theNamespaceOfAnElementMustExist()
{
    const Decoded result = decoded(documentOf({"e"}, startElement({1, 0})));
    QVERIFY(!result.ok);
    QCOMPARE(result.log,
             (QStringList{"Unknown namespace  for element e", "XmlLoader error: " + badIndex + ": device"}));
    QCOMPARE(shape(result.document), QString("(e)"));
}

void TestXmlLoader::anElementWithoutNameIsRefused()
{
    const Decoded result = decoded(documentOf({"e"}, startElement(-1)));
    QCOMPARE(result.fault(), badIndex);
    QVERIFY(result.document.isNull());
}

void TestXmlLoader::anEmptyNameGivesNoElement()
{
    ElementFields nameless;
    nameless.attributeCount = 1;
    const QByteArray none = startElement(nameless, attributeRecord(NoString, 1, 1, 3, 0));
    // no element is current after it
    const Decoded result = decoded(documentOf({"", "a"}, startElement(1) + none + startElement(1) + endElement(1)));
    QVERIFY(result.ok);
    QCOMPARE(shape(result.document), QString("(a,a)"));
    QCOMPARE(decoded(documentOf({"", "a"}, startElement(1) + none + endElement(1))).fault(),
             QString("closing tag does not match opening tag"));
}

void TestXmlLoader::anAttributeSizeBelow20IsAFault_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("isGood");
    QTest::newRow("0") << 0 << false;
    QTest::newRow("19") << 19 << false;
    QTest::newRow("20") << 20 << true;
    QTest::newRow("largest") << 0x7fff << true;
    QTest::newRow("smallest") << 0x8000 << false;
    QTest::newRow("-1") << 0xffff << false;
}

void TestXmlLoader::anAttributeSizeBelow20IsAFault()
{
    QFETCH(int, size);
    QFETCH(bool, isGood);
    // this holds without attributes as well
    ElementFields fields;
    fields.attributeSize = size;
    const Decoded result = decoded(documentOf({"e"}, startElement(0) + startElement(fields)));
    QCOMPARE(result.ok, isGood);
    QCOMPARE(result.fault(), isGood ? QString() : QString("bad attr size in XML element"));
    QCOMPARE(shape(result.document), isGood ? QString("(e(e))") : QString("(e)"));
}

void TestXmlLoader::ofTwoFaultsOfAnElementTheAttributeSizeIsTold()
{
    ElementFields fields;
    fields.name = 9;
    fields.attributeSize = 19;
    QCOMPARE(decoded(documentOf({"e"}, startElement(fields))).fault(), QString("bad attr size in XML element"));
}

void TestXmlLoader::attributesStartWhereTheElementSays_data()
{
    QTest::addColumn<int>("start");
    for (const int start : {14, 15, 20, 24, 300})
        QTest::newRow(qPrintable(QString::number(start))) << start;
}

void TestXmlLoader::attributesStartWhereTheElementSays()
{
    QFETCH(int, start);
    const Bytes body = Bytes().u32(NoString).u32(0).u16(start).u16(20).u16(1);
    const QByteArray element = nodeChunk(StartElementType, body.data() + QByteArray(start - 14, '\xff')
                                                               + attributeRecord(NoString, 1, 0, 3, 0));
    const Decoded result = decoded(documentOf({"e", "n"}, element));
    QVERIFY(result.ok);
    QCOMPARE(attributes(result.root()), QStringList{"n=e"});
}

// The position steps back but the device does not: the record is the one that follows, and the chunk ends later.
void TestXmlLoader::keepsAnAttributeStartBelow14AsAStepBack()
{
    for (const int start : {10, 0, -10}) {
        const Bytes body = Bytes().u32(NoString).u32(0).u16(start).u16(20).u16(1);
        QByteArray element = nodeChunk(StartElementType, body.data() + attributeRecord(NoString, 1, 0, 3, 0));
        const QByteArray rest(14 - start, 'x');
        const Decoded result = decoded(documentOf({"e", "n"}, element + rest + endElement(0)));
        // the document ends later as well, where the device has no more bytes
        QCOMPARE(attributes(result.root()), QStringList{"n=e"});
        QCOMPARE(shape(result.document), QString("(e)"));
        QCOMPARE(decoded(documentOf({"e", "n"}, element) + rest).fault(), QString());
    }
}

void TestXmlLoader::anAttributeStartOutOfTheChunkIsAFault()
{
    ElementFields fields;
    fields.attributeStart = 21;
    const Decoded result = decoded(documentOf({"e"}, startElement(fields)));
    QVERIFY(!result.ok);
    QCOMPARE(result.fault(), QString("chunk too short"));
    QVERIFY(result.document.isNull());
}

void TestXmlLoader::longerRecordsAreSkippedToTheirEnd()
{
    for (const int extra : {1, 4, 100}) {
        ElementFields fields;
        fields.attributeSize = 20 + extra;
        fields.attributeCount = 2;
        const QByteArray padding(extra, '\xff');
        const QByteArray records =
            attributeRecord(NoString, 1, 0, 3, 0) + padding + attributeRecord(NoString, 2, 1, 3, 0) + padding;
        const Decoded result = decoded(documentOf({"e", "a", "b"}, startElement(fields, records)));
        QVERIFY(result.ok);
        QCOMPARE(attributes(result.root()), (QStringList{"a=e", "b=a"}));
    }
}

void TestXmlLoader::anElementWithoutAttributes_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("0") << 0;
    QTest::newRow("-1") << 0xffff;
    QTest::newRow("smallest") << 0x8000;
}

void TestXmlLoader::anElementWithoutAttributes()
{
    QFETCH(int, count);
    ElementFields fields;
    fields.attributeCount = count;
    const Decoded result = decoded(documentOf({"e"}, startElement(fields, attributeRecord(NoString, 0, 0, 3, 0))));
    QVERIFY(result.ok);
    QCOMPARE(shape(result.document), QString("(e)"));
    QCOMPARE(attributes(result.root()), QStringList());
}

void TestXmlLoader::allRecordsAreReadDespiteAFault()
{
    const QVector<QByteArray> records = {attributeRecord(NoString, 1, 0, 3, 0), attributeRecord(NoString, 99, 0, 3, 0),
                                         attributeRecord(NoString, 2, 99, 3, 0), attributeRecord(NoString, 3, 0, 3, 0)};
    const Decoded result = decoded(documentOf({"e", "a", "b", "c"}, elementWith(records) + startElement(0)));
    QVERIFY(!result.ok);
    QCOMPARE(result.fault(), badIndex);
    const QStringList found = attributes(result.root());
    QVERIFY(found.contains("a=e"));
    QVERIFY(found.contains("b="));
    QVERIFY(found.contains("c=e"));
    QCOMPARE(shape(result.document), QString("(e)"));
}

// The record that exceeds the chunk is read from the bytes after it.
void TestXmlLoader::recordsThatRunOutOfTheChunkAreAFault()
{
    ElementFields fields;
    fields.attributeCount = 2;
    const QByteArray element = startElement(fields, attributeRecord(NoString, 1, 0, 3, 0));
    const Decoded result = decoded(documentOf({"e", "a", "b"}, element + attributeRecord(NoString, 2, 0, 3, 0)) + "rest"
                                   + QByteArray(16, 'x'));
    QVERIFY(!result.ok);
    QCOMPARE(result.fault(), QString("boundary out of bounds"));
    QCOMPARE(attributes(result.root()), (QStringList{"a=e", "b=e"}));
}

void TestXmlLoader::theRawValueWins_data()
{
    QTest::addColumn<int>("dataType");
    for (const int dataType : {0x00, 0x01, 0x02, 0x03, 0x10, 0x12, 0x1c, 0xff})
        QTest::newRow(qPrintable(QString::number(dataType, 16))) << dataType;
}

void TestXmlLoader::theRawValueWins()
{
    QFETCH(int, dataType);
    const QByteArray element = elementWith({attributeRecord(NoString, 1, 2, dataType, 5)});
    QCOMPARE(attributes(decoded(documentOf({"e", "n", "raw"}, element)).root()), QStringList{"n=raw"});
    const QByteArray first = elementWith({attributeRecord(NoString, 1, 0, dataType, 5)});
    QCOMPARE(attributes(decoded(documentOf({"e", "n"}, first)).root()), QStringList{"n=e"});
}

void TestXmlLoader::theRawValueMustExist()
{
    const Decoded result = decoded(documentOf({"e", "n"}, elementWith({attributeRecord(NoString, 1, 2, Decimal, 5)})));
    QCOMPARE(result.fault(), badIndex);
    QCOMPARE(attributes(result.root()), QStringList{"n="});
    // any negative index means no string
    for (const qint64 raw : {qint64(-1), qint64(-2), qint64(0x80000000)}) {
        const QByteArray element = elementWith({attributeRecord(NoString, 1, raw, Decimal, 5)});
        QCOMPARE(attributes(decoded(documentOf({"e", "n"}, element)).root()), QStringList{"n=5"});
    }
}

void TestXmlLoader::referencesAreRenderedByTheTable_data()
{
    QTest::addColumn<qint64>("id");
    QTest::addColumn<QString>("expected");
    QTest::newRow("of the application") << qint64(0x7f020005) << "@string/5";
    QTest::newRow("of the platform") << qint64(0x01010001) << "@android:attr/1";
    QTest::newRow("unknown type") << qint64(0x7f090005) << "@#7f090005";
    QTest::newRow("unknown package") << qint64(0x03010005) << "@?03010005";
    QTest::newRow("negative") << qint64(0xffffffff) << "@?ffffffffffffffff";
}

void TestXmlLoader::referencesAreRenderedByTheTable()
{
    QFETCH(qint64, id);
    QFETCH(QString, expected);
    for (const int dataType : {1, 2}) {
        const QByteArray bytes = documentOf({"e", "n"}, elementWith({attributeRecord(NoString, 1, -1, dataType, id)}));
        QCOMPARE(attributes(decoded(bytes, table()).root()), QStringList{"n=" + expected});
    }
}

void TestXmlLoader::otherValuesAreRenderedByThePool_data()
{
    QTest::addColumn<int>("dataType");
    QTest::addColumn<qint64>("data");
    QTest::addColumn<QString>("expected");
    QTest::newRow("null") << 0x00 << qint64(5) << "";
    QTest::newRow("string") << 0x03 << qint64(0) << "e";
    QTest::newRow("no string") << 0x03 << qint64(2) << "unknown string #2";
    QTest::newRow("negative string") << 0x03 << qint64(-1) << "unknown string #-1";
    QTest::newRow("dimension") << 0x05 << qint64(0xc01) << "3073";
    QTest::newRow("dynamic reference") << 0x07 << qint64(0x7f020005) << "?07/7f020005";
    QTest::newRow("decimal") << 0x10 << qint64(5) << "5";
    QTest::newRow("hexadecimal") << 0x11 << qint64(0xff) << "0xff";
    QTest::newRow("true") << 0x12 << qint64(-1) << "true";
    QTest::newRow("colour") << 0x1c << qint64(0xff000000) << "#ffffffffff000000";
    QTest::newRow("type with the top bit set") << 0x81 << qint64(1) << "?ffffffffffffff81/00000001";
}

void TestXmlLoader::otherValuesAreRenderedByThePool()
{
    QFETCH(int, dataType);
    QFETCH(qint64, data);
    QFETCH(QString, expected);
    const QByteArray element = elementWith({attributeRecord(NoString, 1, -1, dataType, data)});
    const Decoded result = decoded(documentOf({"e", "n"}, element), table());
    QVERIFY(result.ok);
    QVERIFY(result.root().hasAttribute("n"));
    QCOMPARE(attributes(result.root()), QStringList{"n=" + expected});
}

void TestXmlLoader::theSizeOfAValueIsIgnored()
{
    QByteArray record = attributeRecord(NoString, 1, -1, Decimal, 5);
    record.replace(12, 3, QByteArray(3, '\xff'));
    QCOMPARE(attributes(decoded(documentOf({"e", "n"}, elementWith({record}))).root()), QStringList{"n=5"});
}

void TestXmlLoader::knownAttributes_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("name");
    QTest::newRow("theme") << 0x01010000 << "theme";
    QTest::newRow("label") << 0x01010001 << "label";
    QTest::newRow("icon") << 0x01010002 << "icon";
    QTest::newRow("name") << 0x01010003 << "name";
    QTest::newRow("permission") << 0x01010006 << "permission";
    QTest::newRow("debuggable") << 0x0101000F << "debuggable";
    QTest::newRow("launchMode") << 0x0101001D << "launchMode";
    QTest::newRow("screenOrientation") << 0x0101001E << "screenOrientation";
    QTest::newRow("configChanges") << 0x0101001F << "configChanges";
    QTest::newRow("resource") << 0x01010025 << "resource";
    QTest::newRow("scheme") << 0x01010027 << "scheme";
    QTest::newRow("host") << 0x01010028 << "host";
    QTest::newRow("minSdkVersion") << 0x0101020C << "minSdkVersion";
    QTest::newRow("versionCode") << 0x0101021B << "versionCode";
    QTest::newRow("versionName") << 0x0101021C << "versionName";
    QTest::newRow("reqTouchScreen") << 0x01010227 << "reqTouchScreen";
    QTest::newRow("reqKeyboardType") << 0x01010228 << "reqKeyboardType";
    QTest::newRow("reqHardKeyboard") << 0x01010229 << "reqHardKeyboard";
    QTest::newRow("reqNavigation") << 0x0101022A << "reqNavigation";
    QTest::newRow("windowSoftInputMode") << 0x0101022B << "windowSoftInputMode";
    QTest::newRow("reqFiveWayNav") << 0x01010232 << "reqFiveWayNav";
    QTest::newRow("targetSdkVersion") << 0x01010270 << "targetSdkVersion";
    QTest::newRow("maxSdkVersion") << 0x01010271 << "maxSdkVersion";
    QTest::newRow("testOnly") << 0x01010272 << "testOnly";
    QTest::newRow("glEsVersion") << 0x01010281 << "glEsVersion";
    QTest::newRow("required") << 0x0101028E << "required";
    QTest::newRow("installLocation") << 0x010102B7 << "installLocation";
    QTest::newRow("hardwareAccelerated") << 0x010102D3 << "hardwareAccelerated";
    QTest::newRow("largeHeap") << 0x0101035A << "largeHeap";
    QTest::newRow("publicKey") << 0x010103A6 << "publicKey";
}

void TestXmlLoader::knownAttributes()
{
    QFETCH(int, id);
    QFETCH(QString, name);
    QCOMPARE(QString(XmlLoader::lookupAndroidAttribute(id)), name);

    const QByteArray chunks = resourceIdMap({0, id}) + namespaceNode(StartNamespaceType, 2, 3)
                              + elementWith({attributeRecord(NoString, 1, 0, 3, 0)});
    const Decoded result = decoded(documentOf({"e", "", "android", androidUri}, chunks));
    QVERIFY(result.ok);
    QVERIFY(result.log.isEmpty());
    QCOMPARE(attributes(result.root()), QStringList{"{" + androidUri + "}android:" + name + "=e"});
}

void TestXmlLoader::unknownIdsHaveNoName_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("zero") << 0;
    QTest::newRow("-1") << -1;
    QTest::newRow("before the first") << 0x0100ffff;
    QTest::newRow("between label and permission") << 0x01010004;
    QTest::newRow("enabled") << 0x0101000e;
    QTest::newRow("after the last") << 0x010103a7;
    QTest::newRow("of the application") << 0x7f010001;
    QTest::newRow("top bit") << int(0x81010001);
}

void TestXmlLoader::unknownIdsHaveNoName()
{
    QFETCH(int, id);
    QVERIFY(XmlLoader::lookupAndroidAttribute(id) == nullptr);

    const QByteArray chunks = resourceIdMap({0, id}) + namespaceNode(StartNamespaceType, 2, 3)
                              + elementWith({attributeRecord(3, 1, 0, 3, 0)});
    QCOMPARE(attributes(decoded(documentOf({"e", "n", "p", "urn:p"}, chunks)).root()), QStringList{"{urn:p}p:n=e"});
}

void TestXmlLoader::aKnownIdNeedsNoNameOrNamespace()
{
    // both indices are outside the pool, and neither string is read
    const QByteArray map = resourceIdMap({0, 0, 0, 0, 0, 0x0101020c});
    const QByteArray binding = namespaceNode(StartNamespaceType, 1, 2);
    const QByteArray element = elementWith({attributeRecord(99, 5, -1, Decimal, 21)});
    const Decoded result = decoded(documentOf({"e", "android", androidUri}, map + binding + element));
    QVERIFY(result.ok);
    QVERIFY(result.log.isEmpty());
    QCOMPARE(attributes(result.root()), QStringList{"{" + androidUri + "}android:minSdkVersion=21"});
}

void TestXmlLoader::aKnownIdTakesThePrefixThatIsBound()
{
    XmlBuilder builder;
    builder.attributeId("label", LabelId).startNamespace("a", androidUri).startNamespace("tools", "urn:tools");
    builder.start("e", {Attribute{"urn:tools", "label", "text", 3, 0}});
    const Decoded result = decoded(builder);
    QVERIFY(result.log.isEmpty());
    QCOMPARE(attributes(result.root()), QStringList{"{" + androidUri + "}a:label=text"});
}

void TestXmlLoader::aKnownIdWithoutTheAndroidNamespaceIsLogged()
{
    XmlBuilder builder;
    builder.attributeId("label", LabelId).attributeId("icon", 0x01010002).startNamespace("android", "urn:another");
    builder.start("e", {androidText("label", "text"), androidText("icon", "file")});
    const Decoded result = decoded(builder);
    QVERIFY(result.ok);
    // one line for each attribute
    QCOMPARE(result.log, (QStringList{"Android namespace not defined", "Android namespace not defined"}));
    QCOMPARE(attributes(result.root()),
             (QStringList{"{" + androidUri + "}icon=file", "{" + androidUri + "}label=text"}));
}

void TestXmlLoader::theIndexOfTheNameIsTheIndexOfTheId()
{
    const QByteArray records =
        elementWith({attributeRecord(NoString, 1, 0, 3, 0), attributeRecord(NoString, 2, 0, 3, 0)});
    const Decoded result = decoded(documentOf({"e", "a", "b"}, resourceIdMap({0x01010002, LabelId}) + records));
    // the map has no entry for the second attribute
    QCOMPARE(attributes(result.root()), (QStringList{"b=e", "{" + androidUri + "}label=e"}));
}

void TestXmlLoader::anAttributeWithoutNamespaceIsPlain()
{
    for (const qint64 ns : {qint64(-1), qint64(-2), qint64(0x80000000)}) {
        const QByteArray element = elementWith({attributeRecord(ns, 1, 0, 3, 0)});
        const Decoded result = decoded(documentOf({"e", "p:n"}, element));
        QVERIFY(result.ok);
        QVERIFY(result.log.isEmpty());
        QCOMPARE(attributes(result.root()), QStringList{"p:n=e"});
        QVERIFY(result.root().attributes().item(0).prefix().isEmpty());
    }
}

void TestXmlLoader::anAttributeHasThePrefixOfItsNamespace()
{
    XmlBuilder builder;
    builder.startNamespace("p", "urn:p").start("e", {Attribute{"urn:p", "n", "v", 3, 0}});
    const Decoded result = decoded(builder);
    QVERIFY(result.log.isEmpty());
    QCOMPARE(attributes(result.root()), QStringList{"{urn:p}p:n=v"});
    QCOMPARE(result.root().attributeNS("urn:p", "n"), QString("v"));
}

void TestXmlLoader::anUnboundAttributeNamespaceIsLoggedAndKept()
{
    XmlBuilder builder;
    builder.start("e", {Attribute{"urn:p", "n", "v", 3, 0}, Attribute{"urn:q", "m", "w", 3, 0}});
    const Decoded result = decoded(builder);
    QVERIFY(result.ok);
    QCOMPARE(result.log, (QStringList{"Unknown namespace urn:p", "Unknown namespace urn:q"}));
    QCOMPARE(attributes(result.root()), (QStringList{"{urn:p}n=v", "{urn:q}m=w"}));
}

// The qualified name is ":a:b", and it is split at its first colon.
void TestXmlLoader::keepsTheColonOfAnAttributeWithoutPrefix()
{
    XmlBuilder builder;
    const QDomElement root = decoded(builder.start("e", {Attribute{"urn:p", "a:b", "v", 3, 0}})).root();
    QCOMPARE(root.attributeNS("urn:p", "a:b"), QString("v"));
    QCOMPARE(root.attributes().item(0).prefix(), QString());
}

void TestXmlLoader::theNameOfAnAttributeMustExist()
{
    const Decoded result = decoded(documentOf({"e", "n"}, elementWith({attributeRecord(NoString, 2, 0, 3, 0)})));
    QVERIFY(!result.ok);
    QCOMPARE(result.fault(), badIndex);
    QCOMPARE(shape(result.document), QString("(e)"));
}

void TestXmlLoader::theNamespaceOfAnAttributeMustExist()
{
    const Decoded result = decoded(documentOf({"e", "n"}, elementWith({attributeRecord(2, 1, 0, 3, 0)})));
    QVERIFY(!result.ok);
    QCOMPARE(result.log, (QStringList{"Unknown namespace ", "XmlLoader error: " + badIndex + ": device"}));
    QCOMPARE(attributes(result.root()), QStringList{"n=e"});
}

void TestXmlLoader::anAttributeWithoutNameIsRefused()
{
    QCOMPARE(decoded(documentOf({"e"}, elementWith({attributeRecord(NoString, -1, 0, 3, 0)}))).fault(), badIndex);
}

void TestXmlLoader::theLaterAttributeOfANameWins()
{
    XmlBuilder plain;
    plain.start("e", {plainText("n", "first"), plainText("m", "other"), plainText("n", "second")});
    QCOMPARE(attributes(decoded(plain).root()), (QStringList{"m=other", "n=second"}));

    // two strings with one id make one attribute
    XmlBuilder known;
    known.attributeId("label", LabelId).attributeId("obscured", LabelId).startNamespace("android", androidUri);
    known.start("e", {androidText("obscured", "first"), androidText("label", "second")});
    QCOMPARE(attributes(decoded(known).root()), QStringList{"{" + androidUri + "}android:label=second"});
}

// The local name alone also finds an attribute, so a plain attribute replaces one with a namespace.
void TestXmlLoader::ofOneLocalNameTheLaterAttributeIsFound()
{
    const Attribute plain = plainText("label", "plain");
    const Attribute android = androidText("label", "android");
    XmlBuilder first;
    first.startNamespace("android", androidUri).start("e", {plain, android});
    QCOMPARE(decoded(first).root().attribute("label"), QString("android"));
    QCOMPARE(decoded(first).root().attributeNS(androidUri, "label"), QString("android"));
    XmlBuilder second;
    second.startNamespace("android", androidUri).start("e", {android, plain});
    QCOMPARE(attributes(decoded(second).root()), QStringList{"{" + androidUri + "}android:label=plain"});
}

void TestXmlLoader::everyPrefixIsRefused()
{
    const ApkResources resources = table();
    const QByteArray good = goodDocument().build();
    QVERIFY(decoded(good, resources).ok);
    for (int size = 0; size < good.size(); ++size) {
        const std::vector<char> block(good.cbegin(), good.cbegin() + size);
        for (const int atEnd : {0, -1}) {
            LogCapture log;
            SequentialDevice device(QByteArray::fromRawData(block.data(), size));
            device.setAnswerAtEnd(atEnd);
            bool ok = true;
            const QDomDocument document = resources.loadXml(&device, &ok);
            QVERIFY2(!ok, qPrintable(QString::number(size)));
            document.toString();
        }
    }
}

void TestXmlLoader::devicesThatDeliverLittleAreRefused()
{
    for (const int largestRead : {0, 1, 3, 100}) {
        LogCapture log;
        SequentialDevice device(goodDocument().build());
        device.setLargestRead(largestRead);
        bool ok = true;
        QVERIFY(ApkResources().loadXml(&device, &ok).isNull());
        QVERIFY(!ok);
        QCOMPARE(log.texts(), QStringList{"XmlLoader error: file too short: " + device.errorString()});
    }
}

// The device ends at the same byte, even after a fault in the middle of a chunk.
void TestXmlLoader::theBufferOfADeviceMakesNoDifference()
{
    const QByteArray rest(20, '\0');
    const QByteArray good = goodDocument().build() + rest;
    const auto loaded = [](const QByteArray &bytes, QIODevice::OpenMode mode) {
        const LogCapture log;
        SequentialDevice device(bytes, mode);
        const QDomDocument document = ApkResources().loadXml(&device, nullptr);
        return log.texts() << QString::number(device.taken()) << document.toString();
    };
    QVector<QByteArray> damaged;
    for (int at = 0; at < good.size() - 3; at += 2) {
        for (const qint64 value : {qint64(0), qint64(9), qint64(0x7fff), qint64(0x7fffffff), qint64(0xffffffff)}) {
            damaged.append(good);
            poke32(damaged.last(), at, value);
        }
    }
    // The header of the last chunk is cut off, and the enclosing chunk stays open.
    for (int more = 1; more < rest.size(); ++more) {
        damaged.append(good);
        poke32(damaged.last(), SizeAt, good.size() - rest.size() + more);
    }
    for (const QByteArray &bytes : std::as_const(damaged))
        QCOMPARE(loaded(bytes, QIODevice::ReadOnly), loaded(bytes, QIODevice::ReadOnly | QIODevice::Unbuffered));
}

// every error text

void TestXmlLoader::closingTagDoesNotMatchOpeningTag()
{
    XmlBuilder builder;
    QCOMPARE(decoded(builder.start("a").end("b")).fault(), QString("closing tag does not match opening tag"));
}

void TestXmlLoader::badAttrSizeInXmlElement()
{
    ElementFields fields;
    fields.attributeSize = 19;
    QCOMPARE(decoded(documentOf({"e"}, startElement(fields))).fault(), QString("bad attr size in XML element"));
}

void TestXmlLoader::elementsNestedTooDeeply()
{
    QCOMPARE(decoded(nested(XmlDecoder::MaxElementDepth + 1)).fault(), QString("elements nested too deeply"));
}

void TestXmlLoader::badIndexInPool()
{
    QCOMPARE(decoded(documentOf({}, startElement(0))).fault(), QString("bad index in  pool"));
}

void TestXmlLoader::badInput()
{
    for (int count = 1; count < 4; ++count) {
        const QByteArray map = chunk(ResourceIdMapType, QByteArray(), QByteArray(4 + count, '\0'));
        QCOMPARE(decoded(documentOf({"e"}, map)).fault(), QString("bad input"));
    }
}

void TestXmlLoader::chunkTooShort()
{
    QByteArray map = resourceIdMap({});
    poke16(map, HeaderSizeAt, 12);
    QCOMPARE(decoded(documentOf({"e"}, map)).fault(), QString("chunk too short"));
}

void TestXmlLoader::fileTooShort()
{
    QCOMPARE(decoded(goodDocument().build().chopped(1)).fault(), QString("file too short"));
}

void TestXmlLoader::boundaryOutOfBounds()
{
    QByteArray inner = startElement(0);
    poke32(inner, SizeAt, inner.size() + 1);
    const Decoded result = decoded(documentOf({"e"}, inner) + "rest");
    QCOMPARE(result.fault(), QString("boundary out of bounds"));
    QVERIFY(result.document.isNull());
}

void TestXmlLoader::tooManyStepsBack()
{
    const QByteArray none = Bytes().u16(UnknownType).u16(8).u32(0).data().repeated(Extractor::MaxStepsBack + 1);
    QCOMPARE(decoded(documentOf({"e"}, none) + none).fault(), QString("too many steps back"));
}

void TestXmlLoader::stringExtendsPastStringblockEnd()
{
    QByteArray pool = PoolBuilder().strings({"e"}).build();
    poke32(pool, PoolBuilder::OffsetsAt, 0x7fffffff);
    QCOMPARE(decoded(pool).fault(), QString("string extends past stringblock end"));
}

void TestXmlLoader::stringPoolContainsBadCount()
{
    QByteArray pool = PoolBuilder().strings({"e"}).build();
    poke32(pool, PoolBuilder::CountAt, -1);
    QCOMPARE(decoded(pool).fault(), QString("string pool contains bad count"));
}

void TestXmlLoader::everyFieldMayBeDamaged()
{
    const ApkResources resources = table();
    const QByteArray good = goodDocument().build();
    for (int at = 0; at < good.size() - 3; at += 2) {
        for (const qint64 value : {qint64(0), qint64(1), qint64(7), qint64(8), qint64(0x7fff), qint64(0x8000),
                                   qint64(0xffff), qint64(0x7fffffff), qint64(0x80000000), qint64(0xffffffff)}) {
            QByteArray damaged = good;
            poke32(damaged, at, value);
            decoded(damaged, resources).document.toString();
            if (value <= 0xffff) {
                damaged = good;
                poke16(damaged, at, value);
                decoded(damaged, resources).document.toString();
            }
        }
    }
}

QTEST_GUILESS_MAIN(TestXmlLoader)
#include "tst_xmlloader.moc"
