// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bounds.h"
#include "ResourcesFixture.h"
#include "resources/ResourceIndex.h"
#include "resources/ResourcesData.h"

#include <QtTest>

using namespace fixture;
using namespace SorrelKit;

/*
 * The ceilings of resources: the last size that passes, the result one above, and the cost of hostile tables.
 */

namespace {

constexpr int AllEntries = TypeChunk::MaxSlots;
constexpr int ShortOffsets = 2;
constexpr int TypeChunkType = 0x0201;

QByteArray tableOf(const PackageBuilder &package, const QStringList &strings = {QStringLiteral("text")},
                   Encoding encoding = Encoding::Utf8)
{
    return TableBuilder().strings(strings, encoding).package(package).build();
}

PackageBuilder integers(const QStringList &keys = {QStringLiteral("key")})
{
    return PackageBuilder().types(names({"integer"})).keys(keys);
}

// A type chunk of @p count resources that share the entry @p entry. An empty @p entry means no values.
QByteArray sharedEntry(int typeId, int count, const QByteArray &entry,
                       const QByteArray &config = ConfigBuilder(4).build())
{
    const int start = 20 + int(config.size()) + 2 * count + 2 * (count % 2);
    Bytes header;
    header.u8(typeId).u8(ShortOffsets).zeros(2).u32(count).u32(start).raw(config);
    return chunk(TypeChunkType, header.data(),
                 QByteArray(2 * count, entry.isEmpty() ? '\xff' : '\0') + QByteArray(2 * (count % 2), '\0') + entry);
}

QByteArray emptyTypes(int count)
{
    return TypeBuilder(1, ConfigBuilder(4).build()).build().repeated(count);
}

// @p count values in full types; only the last type may have fewer.
PackageBuilder valuesOf(int count)
{
    PackageBuilder package = integers();
    for (int typeId = 1; count > 0; ++typeId) {
        package.chunk(sharedEntry(typeId, qMin(count, AllEntries), simpleEntry(Integer, 1)));
        count -= qMin(count, AllEntries);
    }
    return package;
}

// @p count values of one resource, all equal.
PackageBuilder valuesOfOne(int count, const QByteArray &entry)
{
    PackageBuilder package = integers();
    for (int i = 0; i < count; ++i)
        package.type(TypeBuilder(1, ConfigBuilder(4).build()).entry(0, entry));
    return package;
}

QByteArray mapOfItems(int count, int type = Integer, qint64 data = 1)
{
    return Bytes().u16(16).u16(1).u32(0).u32(0).u32(count).raw(mapItem(0x02000000, type, data).repeated(count)).data();
}

ResourceIndex indexOf(const PackageBuilder &package)
{
    return ResourceIndex({QSharedPointer<const ResourceTable>(new ResourceTable(tableOf(package)))});
}

// Calls every query. Millions of resources have the same value, so an instrumented build asks for each eighth of them.
void askAll(const QByteArray &bytes)
{
    PackageDevice device(bytes);
    const Resources resources{Package(&device)};
    const QList<quint32> ids = resources.ids();
    constexpr int Many = 1 << 16;
    for (int i = 0; i < int(ids.size()); i += isInstrumented() && ids.size() > Many ? 8 : 1) {
        resources.name(ids.at(i));
        resources.defaultValue(ids.at(i));
        resources.values(ids.at(i));
    }
    resources.find(QStringLiteral("integer/none"));
}

} // namespace

class TestResourceLimits : public QObject
{
    Q_OBJECT

private slots:
    void valuesUpToTheCeiling();
    void offsetsUpToTheCeiling();
    void workUpToTheBudget();
    void itemsUpToTheBudget();
    void charactersUpToTheBudget();
    void charactersOfAText();
    void sparseTypesOutOfOrder();
    void boundsHold_data();
    void boundsHold();
};

void TestResourceLimits::valuesUpToTheCeiling()
{
    const ResourceIndex most = indexOf(valuesOf(ResourceIndex::MaxValues));
    QCOMPARE(most.ids().size(), int(ResourceIndex::MaxValues));
    QVERIFY(most.isComplete());
    const ResourceIndex more = indexOf(valuesOf(ResourceIndex::MaxValues + 1));
    QCOMPARE(more.ids().size(), int(ResourceIndex::MaxValues));
    QVERIFY(!more.isComplete());
}

void TestResourceLimits::offsetsUpToTheCeiling()
{
    // Only the last offset has a value.
    const auto index = [](qint64 count) {
        const int fullCount = int((count - 1) / AllEntries);
        const int rest = int(count - 1 - qint64(fullCount) * AllEntries);
        return indexOf(integers()
                           .chunk(sharedEntry(1, AllEntries, QByteArray()).repeated(fullCount))
                           .chunk(sharedEntry(1, rest, QByteArray()))
                           .type(TypeBuilder(1).value(0, Integer, 1)));
    };
    const ResourceIndex most = index(ResourceIndex::MaxSlots);
    QCOMPARE(most.ids().size(), 1);
    QVERIFY(most.isComplete());
    const ResourceIndex more = index(ResourceIndex::MaxSlots + 1);
    QCOMPARE(more.ids().size(), 0);
    QVERIFY(!more.isComplete());
}

void TestResourceLimits::workUpToTheBudget()
{
    // Values of 4096 characters that share one string.
    constexpr int Length = 4096;
    constexpr qint64 PerValue = Length + Budget::ValueWork;
    constexpr int Most = int(ResourcesData::MaxWork / PerValue);
    const ResourcesFixture fixture(tableOf(integers().chunk(sharedEntry(1, AllEntries, simpleEntry(String, 0))),
                                           {QString(Length, QLatin1Char('x'))}));
    for (int i = 0; i < Most; ++i)
        QCOMPARE(fixture.resources.values(0x7f010000 + quint32(i)).size(), 1);
    QVERIFY(fixture.resources.isComplete());
    QVERIFY(fixture.resources.values(0x7f010000).isEmpty());
    QVERIFY(!fixture.resources.isComplete());
    QVERIFY(fixture.resources.values(0x7f010001).isEmpty());
    QCOMPARE(fixture.resources.defaultValue(0x7f010001).typeName(), QString());
    QCOMPARE(fixture.resources.name(0x7f010001), QStringLiteral("integer/key"));
}

void TestResourceLimits::itemsUpToTheBudget()
{
    // The name and the text of each item have one character.
    constexpr int Most = int(ResourcesData::MaxBytes / (ResourcesData::ItemBytes + 2 * 2));
    const ResourcesFixture most(tableOf(integers().type(TypeBuilder(1).entry(0, mapOfItems(Most)))));
    QCOMPARE(most.resources.values(0x7f010000).value(0).items().size(), Most);
    QVERIFY(most.resources.isComplete());
    const ResourcesFixture more(
        tableOf(integers().type(TypeBuilder(1).entry(0, mapOfItems(Most + 1)).value(1, Integer, 5))));
    QVERIFY(more.resources.values(0x7f010000).isEmpty());
    QVERIFY(!more.resources.isComplete());
    // Values over the limit are left out, and each call has its own limit.
    const ResourcesFixture several(tableOf(valuesOfOne(3, mapOfItems(Most / 2))));
    QCOMPARE(several.resources.values(0x7f010000).size(), 2);
    QVERIFY(!several.resources.isComplete());
    QCOMPARE(several.resources.values(0x7f010000).size(), 2);
}

void TestResourceLimits::charactersUpToTheBudget()
{
    constexpr int Length = 1 << 14;
    constexpr int Most = int(ResourcesData::MaxBytes / (2 * Length));
    const QStringList text{QString(Length, QLatin1Char('x'))};
    const ResourcesFixture most(tableOf(valuesOfOne(Most, simpleEntry(String, 0)), text, Encoding::Utf16));
    QCOMPARE(most.resources.values(0x7f010000).size(), Most);
    QVERIFY(most.resources.isComplete());
    const ResourcesFixture more(tableOf(valuesOfOne(Most + 1, simpleEntry(String, 0)), text, Encoding::Utf16));
    QCOMPARE(more.resources.values(0x7f010000).size(), Most);
    QVERIFY(!more.resources.isComplete());
    QCOMPARE(more.resources.defaultValue(0x7f010000).text().size(), Length);
}

void TestResourceLimits::charactersOfAText()
{
    for (const int extra : {0, 1}) {
        const int length = ResourceTable::MaxStringLength + extra;
        const ResourcesFixture fixture(tableOf(integers().type(TypeBuilder(1).value(0, String, 0)),
                                               {QString(length, QLatin1Char('x'))}, Encoding::Utf16));
        QCOMPARE(fixture.resources.values(0x7f010000).value(0).text().size(), int(ResourceTable::MaxStringLength));
        QCOMPARE(fixture.resources.isComplete(), extra == 0);
    }
}

void TestResourceLimits::sparseTypesOutOfOrder()
{
    TypeBuilder type(1);
    type.value(3, Integer, 3).value(5, Integer, 5).value(9, Integer, 9).encoding(TableEncoding::Sparse);
    QByteArray bytes = type.build();
    poke16(bytes, type.offsetsAt() + 4, 2); // the second of 3, 5, 9
    const ResourcesFixture fixture(tableOf(integers().chunk(bytes)));
    QCOMPARE(fixture.resources.ids(), (QList<quint32>{0x7f010003, 0x7f010009}));
}

void TestResourceLimits::boundsHold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("inflated");
    const auto row = [](const char *name, const QByteArray &table) {
        const QByteArray manifest = smallManifest();
        QTest::newRow(name) << package(table, manifest) << qint64(table.size() + manifest.size());
    };
    constexpr int Chunks = ResourceTable::MaxTypeChunks;
    const QString longest(ResourceIndex::MaxNameLength, QLatin1Char('n'));
    const QString text(ResourceTable::MaxStringLength, QLatin1Char('t'));
    row("as many values as there may be", tableOf(valuesOf(ResourceIndex::MaxValues + 1)));
    row("references, each to a resource",
        tableOf(integers().chunk(sharedEntry(1, AllEntries, simpleEntry(Reference, 0x7f010000)).repeated(40))));
    PackageBuilder named = PackageBuilder().types({longest}).keys({longest});
    for (int typeId = 1; typeId <= 32; ++typeId)
        named.chunk(sharedEntry(1, AllEntries, simpleEntry(Reference, 0x7f010000)));
    row("references to long names", tableOf(named));
    row("offsets of nothing", tableOf(integers().chunk(sharedEntry(1, AllEntries, QByteArray()).repeated(600))));
    row("offsets to nowhere", tableOf(integers().chunk(sharedEntry(1, AllEntries, "x").repeated(600))));
    row("chunks of nothing ahead of values",
        tableOf(integers().chunk(emptyTypes(Chunks - 1)).chunk(sharedEntry(1, AllEntries, simpleEntry(Integer, 1)))));
    row("one resource in every chunk", tableOf(valuesOfOne(Chunks - 1, simpleEntry(String, 0)), {text}));
    row("one text of everything",
        tableOf(integers().chunk(sharedEntry(1, AllEntries, simpleEntry(String, 0))), {text}));
    row("one map of everything", tableOf(integers().chunk(sharedEntry(1, AllEntries, mapOfItems(60000)))));
    row("one map of references",
        tableOf(integers({longest}).chunk(sharedEntry(1, AllEntries, mapOfItems(60000, Reference, 0x7f010000)))));
    row("maps that claim items", tableOf(integers().chunk(sharedEntry(
                                     1, AllEntries, Bytes().u16(16).u16(1).u32(0).u32(0).u32(0xffffffff).data()))));
    TableBuilder packages;
    packages.strings({});
    QByteArray types;
    for (int typeId = 1; typeId < 256; ++typeId)
        types += sharedEntry(typeId, 1, simpleEntry(Integer, 1));
    for (int id = 0; id < ResourceTable::MaxPackages; ++id) {
        PackageBuilder package(id, QString(128, QLatin1Char('p')));
        QStringList typeNames;
        for (int typeId = 1; typeId < 256; ++typeId)
            typeNames.append(longest);
        packages.package(package.types(typeNames).keys({longest}).chunk(types));
    }
    row("types of long names", packages.build());
    QByteArray record = ConfigBuilder().locale("sr", "RS").build();
    for (int at = 12; at < 64; ++at)
        poke8(record, at, at == 52 ? 0 : 'z');
    row("long configurations",
        tableOf(integers().chunk(sharedEntry(1, 1, simpleEntry(Integer, 1), record).repeated(Chunks - 1))));
    row("keys of noise", tableOf(integers().chunk(sharedEntry(
                             1, AllEntries, Bytes().u16(8).u16(0).u32(0xfffffffe).u32(0x10000008).u32(1).data()))));
}

void TestResourceLimits::boundsHold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, inflated);
    const QString excess = Bounds::excess(cost([&] { askAll(bytes); }), bytes.size(), inflated);
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

QTEST_GUILESS_MAIN(TestResourceLimits)
#include "tst_resourcelimits.moc"
