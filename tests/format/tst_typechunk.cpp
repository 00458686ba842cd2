// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/TypeChunk.h"

#include "Bytes.h"
#include "TableBuilder.h"

#include <QtTest>

#include <cstring>
#include <memory>

using namespace fixture;

Q_DECLARE_METATYPE(fixture::TableEncoding)

namespace {

constexpr int Decimal = 0x10;
constexpr int HeaderSizeAt = 2;

/// A type chunk and its bytes.
struct Type {
    explicit Type(const QByteArray &chunk) : bytes(chunk), view(ChunkView::at(ByteView(bytes), 0)) {}

    QByteArray bytes;
    TypeChunk view;
};

/// Values at 1, 2 and 5, and a map at 3.
TypeBuilder someValues(TableEncoding encoding)
{
    return TypeBuilder(4, ConfigBuilder(36).locale("de", "AT").build())
        .encoding(encoding)
        .value(1, Decimal, 10)
        .value(2, Decimal, 20)
        .map(3, 2)
        .value(5, Decimal, 50);
}

/// Calls every query of @p type. Returns the number of entries that lie within @p bytes.
int visit(const TypeChunk &type, const ByteView &bytes)
{
    const auto isWithin = [&bytes](const ByteView &part) {
        return part.isEmpty()
               || (part.data() >= bytes.data() && part.data() + part.size() <= bytes.data() + bytes.size());
    };
    int count = 0;
    if (!type.isValid() || !isWithin(type.configurationBytes()))
        return count;
    for (int number = 0; number < type.slotCount(); ++number) {
        const TypeChunk::Slot slot = type.slot(number);
        for (const qint64 offset : {slot.offset, type.offset(slot.index)}) {
            const EntryView entry = type.entryAt(offset);
            count += int(entry.isValid() && isWithin(entry.bytes()));
            if (entry.isValid() && !entry.isMap())
                count += int(entry.value().isNull());
        }
    }
    return count;
}

/// visit() of a copy of @p chunk in a heap block of its exact size, so that a sanitizer reports each read beyond it.
int visitCopy(const QByteArray &chunk)
{
    const auto copy = std::make_unique<uchar[]>(size_t(chunk.size()));
    std::memcpy(copy.get(), chunk.constData(), size_t(chunk.size()));
    const ByteView bytes(copy.get(), chunk.size());
    return visit(TypeChunk(ChunkView::at(bytes, 0)), bytes);
}

void addEncodings()
{
    QTest::addColumn<TableEncoding>("encoding");
    QTest::newRow("dense") << TableEncoding::Dense;
    QTest::newRow("short offsets") << TableEncoding::ShortOffsets;
    QTest::newRow("sparse") << TableEncoding::Sparse;
}

} // namespace

class TestTypeChunk : public QObject
{
    Q_OBJECT

private slots:
    void findsEntriesByIndex_data() { addEncodings(); }
    void findsEntriesByIndex();
    void tellsSlots();
    void tellsTypeAndConfiguration();
    void cutsAConfigurationWhereTheHeaderEnds();

    void readsSimpleEntries();
    void readsMaps();
    void readsCompactEntries();
    void simpleEntriesMayHaveAFurtherHeader();
    void entriesThatDoNotFitAreNotValid_data();
    void entriesThatDoNotFitAreNotValid();

    void sparseFlagCountsBeforeShortOffsets();
    void ofSparseDuplicatesTheFirstCounts();
    void sparseIndicesOutOfOrderMayNotBeFound();
    void sharedEntriesAreFoundByEach();
    void offsetsMayBeAnything();
    void entriesStartBehindTheOffsets();

    void isNotValidWithoutItsOffsets();
    void isNotValidWithAShortHeader();
    void entriesUpToTheCeiling();

    void everyPrefixStaysWithinItsBytes_data() { addEncodings(); }
    void everyPrefixStaysWithinItsBytes();
    void everyByteMayBeDamaged_data() { addEncodings(); }
    void everyByteMayBeDamaged();
};

void TestTypeChunk::findsEntriesByIndex()
{
    QFETCH(TableEncoding, encoding);
    const Type type(someValues(encoding).build());
    QVERIFY(type.view.isValid());
    const QMap<int, quint32> expected{{1, 10}, {2, 20}, {5, 50}};
    for (int index = -1; index < 8; ++index) {
        const EntryView entry = type.view.entryAt(type.view.offset(index));
        QCOMPARE(entry.isValid(), expected.contains(index) || index == 3);
        if (!entry.isValid()) {
            QCOMPARE(type.view.offset(index), qint64(TypeChunk::NoEntry));
            continue;
        }
        QCOMPARE(entry.isMap(), index == 3);
        if (!entry.isMap())
            QCOMPARE(entry.value().data, expected.value(index));
    }
    QCOMPARE(type.view.offset(1 << 16), qint64(TypeChunk::NoEntry));
}

void TestTypeChunk::tellsSlots()
{
    const Type dense(someValues(TableEncoding::Dense).build());
    const Type shortOffsets(someValues(TableEncoding::ShortOffsets).build());
    for (const TypeChunk &type : {dense.view, shortOffsets.view}) {
        QCOMPARE(type.slotCount(), 6);
        QCOMPARE(type.slot(0).offset, qint64(TypeChunk::NoEntry));
        QCOMPARE(type.slot(3).index, 3);
        QCOMPARE(type.slot(3).offset, qint64(32));
    }
    QVERIFY(!dense.view.isSparse() && !dense.view.hasShortOffsets());
    QVERIFY(!shortOffsets.view.isSparse() && shortOffsets.view.hasShortOffsets());

    const Type sparse(someValues(TableEncoding::Sparse).build());
    QVERIFY(sparse.view.isSparse() && !sparse.view.hasShortOffsets());
    QCOMPARE(sparse.view.slotCount(), 4);
    QCOMPARE(sparse.view.slot(0).index, 1);
    QCOMPARE(sparse.view.slot(3).index, 5);
    QCOMPARE(sparse.view.slot(3).offset, qint64(72));
}

void TestTypeChunk::tellsTypeAndConfiguration()
{
    const QByteArray config = ConfigBuilder(36).locale("de", "AT").build();
    const Type type(TypeBuilder(0xfe, config).build());
    QVERIFY(type.view.isValid());
    QCOMPARE(type.view.typeId(), quint8(0xfe));
    QCOMPARE(type.view.configuration().language.toString(), QStringLiteral("de"));
    QCOMPARE(type.view.configuration().region.toString(), QStringLiteral("AT"));
    QCOMPARE(type.view.configurationBytes().toByteArray(), config);
}

void TestTypeChunk::cutsAConfigurationWhereTheHeaderEnds()
{
    QByteArray chunk = TypeBuilder(1, ConfigBuilder(36).build()).value(0, Decimal, 1).build();
    poke32(chunk, TypeBuilder::ConfigAt, 0xffffffff);
    const Type type(chunk);
    QVERIFY(type.view.isValid());
    QCOMPARE(type.view.configurationBytes().size(), qint64(36));
}

void TestTypeChunk::readsSimpleEntries()
{
    const QByteArray bytes = simpleEntry(Decimal, 0x80000001, 2, 0x12345) + "more";
    const EntryView entry{ByteView(bytes)};
    QVERIFY(entry.isValid());
    QVERIFY(!entry.isMap() && !entry.isCompact());
    QCOMPARE(entry.flags(), quint16(2));
    QCOMPARE(entry.key(), 0x12345u);
    QCOMPARE(entry.value().type, ValueType(Decimal));
    QCOMPARE(entry.value().data, 0x80000001u);
    QCOMPARE(entry.bytes().size(), qint64(16));
}

void TestTypeChunk::readsMaps()
{
    const QByteArray bytes = mapEntry(3, 7) + "more";
    const EntryView entry{ByteView(bytes)};
    QVERIFY(entry.isValid());
    QVERIFY(entry.isMap() && !entry.isCompact());
    QCOMPARE(entry.key(), 7u);
    QCOMPARE(entry.bytes().size(), qint64(16 + 3 * EntryView::ItemSize));
}

void TestTypeChunk::readsCompactEntries()
{
    const QByteArray bytes = compactEntry(0x1d, 0xff112233, 2, 0xfffe) + "more";
    const EntryView entry{ByteView(bytes)};
    QVERIFY(entry.isValid());
    QVERIFY(entry.isCompact() && !entry.isMap());
    QCOMPARE(entry.key(), 0xfffeu);
    QCOMPARE(entry.value().type, ValueType(0x1d));
    QCOMPARE(entry.value().data, 0xff112233u);
    QCOMPARE(entry.bytes().size(), qint64(8));

    // The map flag has no meaning in a compact entry.
    const QByteArray mapToo = compactEntry(Decimal, 1, EntryView::MapFlag);
    QVERIFY(!EntryView(ByteView(mapToo)).isMap());
}

void TestTypeChunk::simpleEntriesMayHaveAFurtherHeader()
{
    const QByteArray bytes = Bytes().u16(12).u16(0).u32(1).u32(0x77777777).u16(8).u8(0).u8(Decimal).u32(5).data();
    const EntryView entry{ByteView(bytes)};
    QVERIFY(entry.isValid());
    QCOMPARE(entry.value().type, ValueType(Decimal));
    QCOMPARE(entry.value().data, 5u);
    QCOMPARE(entry.bytes().size(), qint64(20));
}

void TestTypeChunk::entriesThatDoNotFitAreNotValid_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("half a compact entry") << compactEntry(Decimal, 1).left(7);
    QTest::newRow("no value") << simpleEntry(Decimal, 1).left(15);
    QTest::newRow("no last item") << mapEntry(2).left(16 + 2 * EntryView::ItemSize - 1);
    QTest::newRow("no number of items") << mapEntry(0).left(15);
    QByteArray bytes = simpleEntry(Decimal, 1) + QByteArray(64, '\0');
    poke16(bytes, 0, 7);
    QTest::newRow("short simple header") << bytes;
    bytes = mapEntry(0) + QByteArray(64, '\0');
    poke16(bytes, 0, 15);
    QTest::newRow("short map header") << bytes;
    bytes = mapEntry(0) + QByteArray(64, '\0');
    poke32(bytes, 12, 0xffffffff);
    QTest::newRow("too many items") << bytes;
}

void TestTypeChunk::entriesThatDoNotFitAreNotValid()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!EntryView(ByteView(bytes)).isValid());
}

void TestTypeChunk::sparseFlagCountsBeforeShortOffsets()
{
    QByteArray chunk = someValues(TableEncoding::Sparse).build();
    poke8(chunk, TypeBuilder::FlagsAt, TypeChunk::SparseFlag | TypeChunk::ShortOffsetsFlag);
    const Type type(chunk);
    QVERIFY(type.view.isValid());
    QCOMPARE(type.view.entryAt(type.view.offset(5)).value().data, 50u);
}

void TestTypeChunk::ofSparseDuplicatesTheFirstCounts()
{
    const TypeBuilder builder = someValues(TableEncoding::Sparse);
    QByteArray chunk = builder.build();
    // The second and the third slot get the index of the first.
    poke16(chunk, builder.offsetsAt() + 4, 1);
    poke16(chunk, builder.offsetsAt() + 8, 1);
    const Type type(chunk);
    QCOMPARE(type.view.entryAt(type.view.offset(1)).value().data, 10u);
    QCOMPARE(type.view.offset(2), qint64(TypeChunk::NoEntry));
}

void TestTypeChunk::sparseIndicesOutOfOrderMayNotBeFound()
{
    const TypeBuilder builder = someValues(TableEncoding::Sparse);
    const auto found = [&builder](const QVector<int> &indices) {
        QByteArray chunk = builder.build();
        for (int i = 0; i < indices.size(); ++i)
            poke16(chunk, builder.offsetsAt() + 4 * i, indices.at(i));
        const Type type(chunk);
        QVector<int> result;
        for (int index = 0; index < 16; ++index) {
            if (type.view.offset(index) != TypeChunk::NoEntry)
                result.append(index);
        }
        return result;
    };
    QCOMPARE(found({1, 5, 7, 9}), (QVector<int>{1, 5, 7, 9}));
    QCOMPARE(found({1, 9, 5, 7}), (QVector<int>{1, 7})); // the search skips the others
    QCOMPARE(found({9, 7, 5, 1}), QVector<int>());
}

void TestTypeChunk::sharedEntriesAreFoundByEach()
{
    for (const TableEncoding encoding : {TableEncoding::Dense, TableEncoding::ShortOffsets, TableEncoding::Sparse}) {
        const Type type(someValues(encoding).offset(4, 16).offset(9, 16).build());
        for (const int index : {2, 4, 9})
            QCOMPARE(type.view.entryAt(type.view.offset(index)).value().data, 20u);
    }
}

void TestTypeChunk::offsetsMayBeAnything()
{
    const Type type(someValues(TableEncoding::Dense).offset(0, 0xfffffffe).offset(4, 88).offset(6, 87).build());
    QVERIFY(type.view.isValid());
    QCOMPARE(type.view.offset(0), qint64(0xfffffffe));
    for (const int index : {0, 4, 6})
        QVERIFY(!type.view.entryAt(type.view.offset(index)).isValid());
    QVERIFY(!type.view.entryAt(TypeChunk::NoEntry).isValid());
}

void TestTypeChunk::entriesStartBehindTheOffsets()
{
    QByteArray chunk = someValues(TableEncoding::Dense).build();
    const qint64 start = peek32(chunk, TypeBuilder::EntriesStartAt);
    poke32(chunk, TypeBuilder::EntriesStartAt, chunk.size());
    const Type type(chunk);
    QVERIFY(type.view.isValid());
    QVERIFY(type.view.entries().isEmpty());
    QVERIFY(!type.view.entryAt(type.view.offset(1)).isValid());
    for (const qint64 other : {qint64(chunk.size()) + 4, qint64(0xfffffffc), start + 2, start - 4, qint64(0)}) {
        poke32(chunk, TypeBuilder::EntriesStartAt, other);
        QVERIFY(!Type(chunk).view.isValid());
    }
}

void TestTypeChunk::isNotValidWithoutItsOffsets()
{
    for (const TableEncoding encoding : {TableEncoding::Dense, TableEncoding::ShortOffsets, TableEncoding::Sparse}) {
        QByteArray chunk = TypeBuilder(1).encoding(encoding).offset(1, 0).offset(0, 0).build();
        QVERIFY(Type(chunk).view.isValid());
        poke32(chunk, TypeBuilder::EntryCountAt, 3);
        QVERIFY(!Type(chunk).view.isValid());
        poke32(chunk, TypeBuilder::EntryCountAt, 0xffffffff);
        QVERIFY(!Type(chunk).view.isValid());
    }
}

void TestTypeChunk::isNotValidWithAShortHeader()
{
    QByteArray chunk = TypeBuilder(1).build();
    poke16(chunk, HeaderSizeAt, TypeChunk::ConfigurationAt);
    QVERIFY(!Type(chunk).view.isValid());
    poke16(chunk, HeaderSizeAt, TypeChunk::ConfigurationAt + 4);
    QVERIFY(Type(chunk).view.isValid());
    QVERIFY(!TypeChunk().isValid());
    QVERIFY(!TypeChunk(ChunkView()).isValid());
}

void TestTypeChunk::entriesUpToTheCeiling()
{
    const int last = TypeChunk::MaxSlots - 1;
    const Type most(TypeBuilder(1).value(last, Decimal, 1).build());
    QVERIFY(most.view.isValid());
    QVERIFY(most.view.entryAt(most.view.offset(last)).isValid());
    QVERIFY(!Type(TypeBuilder(1).value(last + 1, Decimal, 1).build()).view.isValid());
}

void TestTypeChunk::everyPrefixStaysWithinItsBytes()
{
    QFETCH(TableEncoding, encoding);
    const QByteArray whole = someValues(encoding).entry(6, compactEntry(Decimal, 0)).build();
    QVERIFY(visitCopy(whole) > 0);
    int validPrefixes = 0;
    for (int size = 0; size < whole.size(); ++size) {
        QByteArray prefix = whole.left(size);
        QCOMPARE(visitCopy(prefix), 0); // the chunk's size exceeds its bytes
        if (size < ChunkView::HeaderSize)
            continue;
        poke32(prefix, ChunkView::HeaderSize / 2, size);
        validPrefixes += int(Type(prefix).view.isValid());
        QVERIFY(visitCopy(prefix) < visitCopy(whole));
    }
    QVERIFY(validPrefixes > 0);
}

void TestTypeChunk::everyByteMayBeDamaged()
{
    QFETCH(TableEncoding, encoding);
    const QByteArray whole = someValues(encoding).entry(6, compactEntry(Decimal, 0)).build();
    const int most = visitCopy(whole);
    int lower = 0;
    for (int at = 0; at < whole.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x7f, 0x80, 0xff}) {
            QByteArray damaged = whole;
            poke8(damaged, at, value);
            lower += int(visitCopy(damaged) < most);
        }
    }
    QVERIFY(lower > 0);
}

QTEST_GUILESS_MAIN(TestTypeChunk)
#include "tst_typechunk.moc"
