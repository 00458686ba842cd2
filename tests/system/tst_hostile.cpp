// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "Bounds.h"
#include "Bytes.h"
#include "Devices.h"
#include "LogCapture.h"
#include "Walker.h"
#include "document/XmlLoader.h"
#include "format/ChunkView.h"
#include "stream/Extractor.h"

#include <QtTest>

#include <functional>

using namespace fixture;

/*
 * Files made to overflow the stack, to take gigabytes, or to take minutes. Each is loaded and visited in a process of
 * its own, within the bounds for any input.
 */

namespace {

constexpr unsigned SmallStack = 512 << 10;

using Load = std::function<void(const QByteArray &)>;

void loadTable(const QByteArray &bytes)
{
    SequentialDevice device(bytes, QIODevice::ReadOnly);
    ApkResources resources;
    resources.load(&device);
    visit(resources);
}

void loadDocument(const QByteArray &bytes)
{
    SequentialDevice device(bytes, QIODevice::ReadOnly);
    const ApkResources resources;
    visit(resources.loadXml(&device, nullptr), resources);
}

void loadAndPrintDocument(const QByteArray &bytes)
{
    SequentialDevice device(bytes, QIODevice::ReadOnly);
    const QDomDocument document = ApkResources().loadXml(&device, nullptr);
    // Hosts copy a document, print it, and free both.
    const QDomNode copy = document.cloneNode(true);
    document.toByteArray();
}

void loadPackage(const QByteArray &bytes)
{
    PackageDevice device(bytes);
    ApkFile apk(&device);
    visit(apk);
}

QString documentFault(const QByteArray &bytes)
{
    const LogCapture log;
    SequentialDevice device(bytes, QIODevice::ReadOnly);
    bool ok = false;
    const QDomDocument document = ApkResources().loadXml(&device, &ok);
    const QStringList lines = log.texts().filter(QStringLiteral("XmlLoader error: "));
    return ok ? QString() : lines.value(0).section(QStringLiteral(": "), 1, 1);
}

QByteArray nested(ChunkType type, const QByteArray &header, int depth, const QByteArray &innermost = QByteArray())
{
    QByteArray headers;
    const int own = ChunkView::HeaderSize + int(header.size());
    for (int i = depth; i > 0; --i)
        headers += Bytes().u16(int(type)).u16(own).u32(qint64(own) * i + innermost.size()).raw(header).data();
    return headers + innermost;
}

QByteArray nestedElements(int depth)
{
    XmlBuilder builder;
    const QString name = QStringLiteral("a");
    builder.start(name).end(name);
    const QByteArray all = builder.build();
    // The builder's start node @p depth times, then its end node @p depth times.
    const int poolEnd = ChunkView::HeaderSize + int(builder.pool().size());
    const int startSize = int(peek32(all, poolEnd + 4));
    const QByteArray body = all.mid(ChunkView::HeaderSize, builder.pool().size())
                            + all.mid(poolEnd, startSize).repeated(depth)
                            + all.mid(poolEnd + startSize).repeated(depth);
    return chunk(ChunkType::Xml, QByteArray(), body);
}

// An element with @p count attributes. All have different names in one namespace.
QByteArray manyAttributes(int count)
{
    const QString ns = QStringLiteral("urn:x");
    XmlBuilder builder;
    builder.startNamespace(QStringLiteral("x"), ns);
    QVector<Attribute> attributes;
    PoolBuilder pool(Encoding::Utf8);
    pool.strings({QStringLiteral("x"), ns, QStringLiteral("e")});
    Bytes records;
    for (int i = 0; i < count; ++i) {
        pool.string(QString::number(i));
        records.raw(attributeRecord(1, 3 + i, -1, Integer, i));
    }
    ElementFields fields;
    fields.name = 2;
    fields.attributeCount = count;
    return chunk(ChunkType::Xml, QByteArray(),
                 pool.build() + nodeChunk(ChunkType::XmlStartNamespace, Bytes().u32(0).u32(1).data())
                     + nodeChunk(ChunkType::XmlStartElement, elementBody(fields, records.data()))
                     + nodeChunk(ChunkType::XmlEndElement, Bytes().u32(-1).u32(2).data()));
}

// Elements with the maximum number of attributes. Their names have the maximum length, differ only at their ends, and
// are in an undeclared namespace.
QByteArray longNames()
{
    PoolBuilder pool(Encoding::Utf8);
    pool.string(QStringLiteral("e")).string(QString(XmlDecoder::MaxNameLength, QLatin1Char('u')));
    ElementFields fields;
    fields.attributeCount = XmlDecoder::MaxAttributes;
    Bytes records;
    for (int i = 0; i < fields.attributeCount; ++i) {
        pool.string(QStringLiteral("%1").arg(i, XmlDecoder::MaxNameLength - 1, 10, QLatin1Char('n')));
        records.raw(attributeRecord(1, 2 + i, -1, Integer, i));
    }
    const QByteArray element = nodeChunk(ChunkType::XmlStartElement, elementBody(fields, records.data()))
                               + nodeChunk(ChunkType::XmlEndElement, Bytes().u32(-1).u32(0).data());
    return chunk(ChunkType::Xml, QByteArray(),
                 pool.build() + element.repeated(XmlDecoder::MaxNodes / (1 + XmlDecoder::MaxAttributes)));
}

// Elements with equal start and end names from two places of the pool.
QByteArray equalNames(int length, int elements)
{
    const QString name(length, QLatin1Char('n'));
    ElementFields fields;
    const QByteArray element = nodeChunk(ChunkType::XmlStartElement, elementBody(fields))
                               + nodeChunk(ChunkType::XmlEndElement, Bytes().u32(-1).u32(1).data());
    return chunk(ChunkType::Xml, QByteArray(),
                 PoolBuilder(Encoding::Utf16).string(name).string(name).build() + element.repeated(elements));
}

// As many attributes as allowed in total, each with its own value.
QByteArray distinctValues()
{
    constexpr int Count = XmlDecoder::MaxNodes / 201 * 200;
    PoolBuilder pool(Encoding::Utf8);
    Bytes nodes;
    for (int i = 0; i < Count; i += 200) {
        ElementFields fields;
        fields.attributeCount = 200;
        Bytes records;
        for (int j = i; j < i + 200; ++j) {
            pool.string(QString::number(j, 36));
            records.raw(attributeRecord(-1, j, j, String, 0));
        }
        nodes.raw(nodeChunk(ChunkType::XmlStartElement, elementBody(fields, records.data())));
        nodes.raw(nodeChunk(ChunkType::XmlEndElement, Bytes().u32(-1).u32(0).data()));
    }
    return chunk(ChunkType::Xml, QByteArray(), pool.build() + nodes.data());
}

// Namespaces that all differ and are never released.
QByteArray distinctNamespaces(int count)
{
    PoolBuilder pool(Encoding::Utf8);
    Bytes nodes;
    for (int i = 0; i < count; ++i) {
        pool.string(QString::number(i, 36));
        nodes.raw(nodeChunk(ChunkType::XmlStartNamespace, Bytes().u32(i).u32(i).data()));
    }
    return chunk(ChunkType::Xml, QByteArray(), pool.build() + nodes.data());
}

// Namespace starts of one URI, then as many ends. Start i binds prefix @p boundAt(i), end i releases prefix @p
// releasedAt(i).
QByteArray manyBindings(int count, const std::function<int(int)> &boundAt, const std::function<int(int)> &releasedAt)
{
    PoolBuilder pool(Encoding::Utf8);
    pool.string(QStringLiteral("urn:x"));
    for (int i = 0; i < count; ++i)
        pool.string(QString::number(i));
    Bytes nodes;
    for (int i = 0; i < count; ++i)
        nodes.raw(nodeChunk(ChunkType::XmlStartNamespace, Bytes().u32(1 + boundAt(i)).u32(0).data()));
    for (int i = 0; i < count; ++i)
        nodes.raw(nodeChunk(ChunkType::XmlEndNamespace, Bytes().u32(1 + releasedAt(i)).u32(0).data()));
    return chunk(ChunkType::Xml, QByteArray(), pool.build() + nodes.data());
}

// A pool with @p count offsets, @p distance bytes apart, into one long string.
QByteArray overlappingPool(Encoding encoding, int count, int distance, int length)
{
    const int repeats = length + count * distance;
    // Each byte can start a length of 0x7f7f bytes or units, and that much data follows.
    const QByteArray data(2 * repeats + 0x10000, encoding == Encoding::Utf8 ? '\xff' : '\x7f');
    PoolBuilder pool(encoding);
    pool.rawString(data);
    for (int i = 1; i < count; ++i)
        pool.offset(i * distance);
    return pool.build();
}

// Elements with @p count attributes. The raw value of each is the string @p valueOf(index) of the pool.
QByteArray elementsWithValue(const QByteArray &pool, int count, const std::function<int(int)> &valueOf)
{
    constexpr int PerElement = 500;
    ElementFields fields;
    fields.attributeCount = PerElement;
    Bytes nodes;
    for (int i = 0; i < count; i += PerElement) {
        Bytes records;
        for (int j = 0; j < PerElement; ++j)
            records.raw(attributeRecord(-1, j, valueOf(i + j), String, 0));
        nodes.raw(nodeChunk(ChunkType::XmlStartElement, elementBody(fields, records.data())));
        nodes.raw(nodeChunk(ChunkType::XmlEndElement, Bytes().u32(-1).u32(0).data()));
    }
    return chunk(ChunkType::Xml, QByteArray(), pool + nodes.data());
}

QByteArray localeOf(int number)
{
    const char language[] = {char('a' + number % 26), char('a' + number / 26 % 26), 0};
    return ConfigBuilder(16).locale(language).mcc(number / 676).build();
}

// A string with a value in each of @p locales locales. All values have @p dataType and @p data.
QByteArray stringInLocales(int locales, int dataType, qint64 data, const QStringList &strings = {})
{
    PackageBuilder package;
    package.types({QStringLiteral("string")});
    for (int i = 0; i < locales; ++i)
        package.type(TypeBuilder(1, localeOf(i)).value(0, dataType, data));
    return TableBuilder().strings(strings).package(package).build();
}

QByteArray launcherManifest(int filters, qint64 label)
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest")).start(QStringLiteral("application"));
    builder.start(QStringLiteral("activity"),
                  {androidReference(QStringLiteral("label"), label), androidReference(QStringLiteral("icon"), label)});
    for (int i = 0; i < filters; ++i)
        builder.launcherFilter();
    return builder.end(QStringLiteral("activity"))
        .end(QStringLiteral("application"))
        .end(QStringLiteral("manifest"))
        .build();
}

void addRow(const char *name, const QByteArray &bytes, const Load &load)
{
    QTest::newRow(name) << bytes << load;
}

} // namespace

Q_DECLARE_METATYPE(Load)

class TestHostile : public QObject
{
    Q_OBJECT

private slots:
    void smallStackIsEnough_data();
    void smallStackIsEnough();
    void boundsHold_data();
    void boundsHold();

    void elementsAreNestedUpToTheCeiling();
    void attributesUpToTheCeiling();
    void nodesUpToTheCeiling();
    void namesUpToTheCeiling();
    void androidNamesUpToTheCeiling();
    void referencesUpToTheCeiling();
    void nameUpToTheCeiling_data();
    void nameUpToTheCeiling();
    void logIsShort_data();
    void logIsShort();
    void valuesOfOneStringShareIt();
    void labelsOfOneReferenceAreShared();
};

void TestHostile::smallStackIsEnough_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Load>("load");
    addRow("elements nested in elements", nestedElements(100000), loadAndPrintDocument);
    addRow("elements nested up to the ceiling", nestedElements(XmlDecoder::MaxElementDepth), loadAndPrintDocument);
    addRow("documents nested in documents", nested(ChunkType::Xml, QByteArray(), 400000), loadDocument);
    addRow("tables nested in tables", nested(ChunkType::Table, Bytes().u32(1).data(), 100000), loadTable);
    addRow("references that lead to themselves", stringInLocales(1, Reference, 0x7f010000), [](const QByteArray &b) {
        SequentialDevice device(b);
        ApkResources resources;
        resources.load(&device);
        resources.lookupByLocale(QStringLiteral("@string/0"), 0x7fffffff);
    });
}

void TestHostile::smallStackIsEnough()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Load, load);
    // With a sanitizer, the same functions need several times the stack.
    const Cost taken = costInThread([&] { load(bytes); }, isInstrumented() ? 8 * SmallStack : SmallStack);
    QVERIFY(taken.ended);
}

void TestHostile::boundsHold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Load>("load");
    const auto itself = [](int i) { return i; };
    const auto nothing = [](int) { return 0; };

    QByteArray pool = PoolBuilder().string(QStringLiteral("x")).build();
    poke32(pool, PoolBuilder::CountAt, 20000000);
    addRow("pool that claims 20 million strings", pool, loadTable);
    poke32(pool, PoolBuilder::CountAt, 0x7fffffff);
    addRow("pool that claims 0x7fffffff strings", pool, loadTable);
    QByteArray map = chunk(ChunkType::XmlResourceMap);
    poke32(map, 4, 0x7ffffffc);
    addRow("resource-id map that claims 2 GB", map, loadDocument);

    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const bool isUtf8 = encoding == Encoding::Utf8;
        const QByteArray equal = overlappingPool(encoding, 20000, 0, 0x7000);
        addRow(isUtf8 ? "equal strings, UTF-8" : "equal strings, UTF-16", elementsWithValue(equal, 20000, itself),
               loadDocument);
        const QByteArray shifted = overlappingPool(encoding, 100000, 2, 0x7000);
        addRow(isUtf8 ? "strings in each other, UTF-8" : "strings in each other, UTF-16",
               elementsWithValue(shifted, 20000, itself), loadDocument);
    }
    addRow("comments that name a long string",
           chunk(ChunkType::Xml, QByteArray(),
                 PoolBuilder(Encoding::Utf16).string(QString(30000, QLatin1Char('x'))).build()
                     + nodeChunk(ChunkType::XmlLastNode, QByteArray(), 0).repeated(50000)),
           loadDocument);

    addRow("attributes of one element", manyAttributes(32767), loadDocument);
    addRow(
        "attributes up to the ceiling, in many elements",
        [] {
            const QByteArray one = manyAttributes(XmlDecoder::MaxAttributes);
            const int poolSize = int(peek32(one, ChunkView::HeaderSize + 4));
            return chunk(ChunkType::Xml, QByteArray(),
                         one.mid(ChunkView::HeaderSize, poolSize)
                             + one.mid(ChunkView::HeaderSize + poolSize).repeated(45));
        }(),
        loadDocument);
    addRow("attributes with long names", longNames(), loadDocument);
    addRow("equal names at two places", equalNames(XmlDecoder::MaxNameLength, 50000), loadDocument);
    addRow("long names of elements", equalNames(1 << 20, 50000), loadDocument);
    addRow("values that are all different", distinctValues(), loadDocument);
    addRow("namespaces that are all different", distinctNamespaces(XmlDecoder::MaxNodes), loadDocument);
    addRow("bindings of one URI, released from the first", manyBindings(20000, itself, itself), loadDocument);
    addRow("bindings of one URI, released from the last", manyBindings(20000, itself, [](int i) { return 19999 - i; }),
           loadDocument);
    addRow("bindings of one URI, none released", manyBindings(20000, nothing, [](int) { return 1; }), loadDocument);

    addRow("locales that refer to themselves", stringInLocales(300, Reference, 0x7f010000), loadTable);
    PackageBuilder configs;
    configs.types({QStringLiteral("string")});
    QByteArray chunks;
    for (int i = 0; i < 40000; ++i)
        chunks += TypeBuilder(1, ConfigBuilder(8).mcc(i & 0x7f).mnc(i >> 7).build()).build();
    addRow("distinct configurations", TableBuilder().package(configs.chunk(chunks)).build(), loadTable);
    addRow("one long string as the value of many configurations",
           stringInLocales(5000, String, 0, {QString(30000, QLatin1Char('x'))}), loadTable);

    QByteArray still = chunk(0x7777);
    poke32(still, 4, 0);
    // A seek back leads to the chunk before it, and reading reaches it again.
    const QByteArray restless = chunk(ChunkType::Xml, QByteArray(), chunk(0x7777) + still + QByteArray(1 << 20, '\0'));
    addRow("document of a chunk that moves nothing", restless, loadDocument);
    addRow("table of a chunk that moves nothing",
           chunk(ChunkType::Table, Bytes().u32(1).data(), still + QByteArray(1 << 20, '\0')), loadTable);
    addRow("the same on a random-access device", restless, [](const QByteArray &b) {
        QBuffer device;
        device.setData(b);
        device.open(QIODevice::ReadOnly);
        ApkResources().loadXml(&device, nullptr);
    });

    QByteArray bag = mapEntry(0);
    poke32(bag, 12, 0x15555556);
    addRow("map whose size wraps",
           TableBuilder()
               .package(PackageBuilder().types({QStringLiteral("style")}).type(TypeBuilder(1).entry(0, bag)))
               .build(),
           loadTable);

    addRow("launchers that share a label of 300 locales",
           package(stringInLocales(300, String, 0, {QStringLiteral("label")}), launcherManifest(2000, 0x7f010000)),
           loadPackage);
    addRow("launchers whose label refers to itself in 300 locales",
           package(stringInLocales(300, Reference, 0x7f010000), launcherManifest(2000, 0x7f010000)), loadPackage);
}

void TestHostile::boundsHold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Load, load);
    const QString excess = Bounds::excess(cost([&] { load(bytes); }), bytes.size(), bytes.size());
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestHostile::elementsAreNestedUpToTheCeiling()
{
    QCOMPARE(documentFault(nestedElements(XmlDecoder::MaxElementDepth)), QString());
    QCOMPARE(documentFault(nestedElements(XmlDecoder::MaxElementDepth + 1)),
             QStringLiteral("elements nested too deeply"));
}

void TestHostile::attributesUpToTheCeiling()
{
    QCOMPARE(documentFault(manyAttributes(XmlDecoder::MaxAttributes)), QString());
    QCOMPARE(documentFault(manyAttributes(XmlDecoder::MaxAttributes + 1)),
             QStringLiteral("too many attributes in XML element"));
}

void TestHostile::nodesUpToTheCeiling()
{
    const auto document = [](int elements) {
        const QString name = QStringLiteral("a");
        XmlBuilder one;
        one.empty(name);
        const QByteArray nodes = one.build().mid(ChunkView::HeaderSize + one.pool().size());
        return chunk(ChunkType::Xml, QByteArray(), one.pool() + nodes.repeated(elements));
    };
    QCOMPARE(documentFault(document(XmlDecoder::MaxNodes)), QString());
    QCOMPARE(documentFault(document(XmlDecoder::MaxNodes + 1)), QStringLiteral("too many nodes in XML document"));
    QCOMPARE(documentFault(distinctNamespaces(XmlDecoder::MaxNodes)), QString());
    QCOMPARE(documentFault(distinctNamespaces(XmlDecoder::MaxNodes + 1)),
             QStringLiteral("too many nodes in XML document"));
}

void TestHostile::namesUpToTheCeiling()
{
    // Elements of a namespace. Their qualified names together have as many characters as allowed.
    const auto document = [](int length, int elements) {
        const QString name(length - 2, QLatin1Char('n'));
        const QString ns = QStringLiteral("urn:x");
        XmlBuilder one;
        one.startNamespace(QStringLiteral("p"), ns).start(name, {}, ns).end(name, ns);
        const int poolSize = int(one.pool().size());
        const QByteArray all = one.build().mid(ChunkView::HeaderSize + poolSize);
        const int bindingSize = int(peek32(all, 4));
        return chunk(ChunkType::Xml, QByteArray(),
                     one.pool() + all.left(bindingSize) + all.mid(bindingSize).repeated(elements));
    };
    constexpr int Length = XmlDecoder::MaxNameLength;
    constexpr int Elements = XmlDecoder::MaxNameCharacters / Length;
    QCOMPARE(documentFault(document(Length, Elements)), QString());
    QCOMPARE(documentFault(document(Length, Elements + 1)), QStringLiteral("too long names in XML document"));
}

void TestHostile::androidNamesUpToTheCeiling()
{
    // Elements with one of Android's own attributes and a long prefix.
    constexpr int NameId = 0x01010003;
    constexpr int Length = 512; // of prefix, ":" and "name"
    const auto document = [](int elements) {
        const QString element = QStringLiteral("e");
        XmlBuilder one;
        one.attributeId(QStringLiteral("name"), NameId)
            .startNamespace(QString(Length - 5, QLatin1Char('p')), androidUri)
            .start(element, {androidText(QStringLiteral("name"), element)})
            .end(element);
        const QByteArray before = one.pool() + one.resourceIdMap();
        const QByteArray nodes = one.build().mid(ChunkView::HeaderSize + before.size());
        const int bindingSize = int(peek32(nodes, 4));
        return chunk(ChunkType::Xml, QByteArray(),
                     before + nodes.left(bindingSize) + nodes.mid(bindingSize).repeated(elements));
    };
    constexpr int Elements = XmlDecoder::MaxNameCharacters / Length;
    QCOMPARE(documentFault(document(Elements)), QString());
    QCOMPARE(documentFault(document(Elements + 1)), QStringLiteral("too long names in XML document"));
}

void TestHostile::referencesUpToTheCeiling()
{
    constexpr int Length = 128; // of "@", the type's name, "/7"
    constexpr int Most = XmlDecoder::MaxNameCharacters / Length;
    SequentialDevice tableDevice(
        TableBuilder().package(PackageBuilder().types({QString(Length - 3, QLatin1Char('t'))})).build());
    ApkResources resources;
    QVERIFY(resources.load(&tableDevice));
    const auto lastReference = [&resources](int count, bool *ok) {
        constexpr int PerElement = 128;
        XmlBuilder names;
        QVector<Attribute> attributes;
        for (int i = 0; i < PerElement; ++i)
            attributes.append({QString(), QString::number(i), QString(), Reference, 0x7f010007});
        const QString name = QStringLiteral("e");
        for (int i = 0; i < count; i += PerElement)
            names.empty(name, attributes.mid(0, count - i));
        const LogCapture log;
        SequentialDevice device(names.build());
        const QDomElement last = resources.loadXml(&device, ok).lastChildElement();
        return last.attribute(QString::number((count - 1) % PerElement));
    };
    bool ok = false;
    QCOMPARE(lastReference(Most, &ok).size(), Length);
    QVERIFY(ok);
    QCOMPARE(lastReference(Most + 1, &ok), QString());
    QVERIFY(!ok);
}

void TestHostile::nameUpToTheCeiling_data()
{
    QTest::addColumn<QString>("place");
    for (const char *place : {"element", "attribute", "prefix", "URI", "URI of an element", "URI of an attribute"})
        QTest::newRow(place) << QString::fromLatin1(place);
}

void TestHostile::nameUpToTheCeiling()
{
    QFETCH(QString, place);
    const auto document = [&place](int length) {
        const QString name(length, QLatin1Char('n'));
        const QString e = QStringLiteral("e");
        XmlBuilder builder;
        if (place == QLatin1String("element"))
            builder.empty(name);
        else if (place == QLatin1String("attribute"))
            builder.empty(e, {plainText(name, e)});
        else if (place == QLatin1String("prefix"))
            builder.startNamespace(name, e);
        else if (place == QLatin1String("URI"))
            builder.startNamespace(e, name);
        else if (place == QLatin1String("URI of an element"))
            builder.start(e, {}, name).end(e, name);
        else
            builder.empty(e, {{name, e, e, String, 0}});
        return builder.build();
    };
    QCOMPARE(documentFault(document(XmlDecoder::MaxNameLength)), QString());
    QCOMPARE(documentFault(document(XmlDecoder::MaxNameLength + 1)), QStringLiteral("too long name in XML document"));
}

void TestHostile::logIsShort_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Load>("load");
    const QByteArray unknown = chunk(0x7777).repeated(1000);
    addRow("unknown chunks in a document", chunk(ChunkType::Xml, QByteArray(), unknown), loadDocument);
    addRow("unknown chunks in a table", chunk(ChunkType::Table, Bytes().u32(1).data(), unknown), loadTable);
    addRow("unknown chunks in a package", TableBuilder().package(PackageBuilder().chunk(unknown)).build(), loadTable);
    addRow("unknown pools in a package",
           TableBuilder().package(PackageBuilder().chunk(PoolBuilder().build().repeated(1000))).build(), loadTable);
    XmlBuilder elements;
    XmlBuilder attributes;
    XmlBuilder androidAttributes;
    const QString name = QStringLiteral("name");
    androidAttributes.attributeId(name, 0x01010003);
    for (int i = 0; i < 1000; ++i) {
        elements.start(name, {}, androidUri).end(name, androidUri);
        attributes.empty(name, {androidText(name, name)});
        androidAttributes.empty(name, {androidText(name, name)});
    }
    addRow("unknown namespace of elements", elements.build(), loadDocument);
    addRow("unknown namespace of attributes", attributes.build(), loadDocument);
    addRow("no Android namespace", androidAttributes.build(), loadDocument);
}

void TestHostile::logIsShort()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Load, load);
    const LogCapture log;
    load(bytes);
    QCOMPARE(log.lines().size(), int(Diagnostics::MaxItems));
}

void TestHostile::valuesOfOneStringShareIt()
{
    XmlBuilder builder;
    const QString text(1000, QLatin1Char('x'));
    const QString name = QStringLiteral("e");
    builder.start(name, {plainText(QStringLiteral("a"), text), plainText(QStringLiteral("b"), text)}).end(name);
    SequentialDevice device(builder.build());
    const QDomElement element = ApkResources().loadXml(&device, nullptr).documentElement();
    QCOMPARE(element.attribute(QStringLiteral("a")), text);
    QVERIFY(element.attribute(QStringLiteral("a")).isSharedWith(element.attribute(QStringLiteral("b"))));

    SequentialDevice table(stringInLocales(2, String, 0, {text}));
    ApkResources resources;
    QVERIFY(resources.load(&table));
    const QString reference = QStringLiteral("@string/0");
    const QStringList all = resources.lookupAll(reference);
    QVERIFY(all.at(0).isSharedWith(all.at(1)));
    const QMap<QString, QString> byConfig = resources.lookupAllByConfig(reference);
    QVERIFY(byConfig.first().isSharedWith(byConfig.last()));
    const QMap<QString, QString> byLocale = resources.lookupByLocale(reference, 5);
    QVERIFY(byLocale.first().isSharedWith(byLocale.last()));
}

void TestHostile::labelsOfOneReferenceAreShared()
{
    PackageDevice device(stringInLocales(2, String, 0, {QStringLiteral("label")}), launcherManifest(2, 0x7f010000));
    ApkFile apk(&device);
    const QList<ApkLauncherInfo> launchers = apk.getLauncherInfo(false);
    QCOMPARE(launchers.size(), 2);
    QVERIFY(launchers.at(0).labels().isSharedWith(launchers.at(1).labels()));
}

QTEST_GUILESS_MAIN(TestHostile)
#include "tst_hostile.moc"
