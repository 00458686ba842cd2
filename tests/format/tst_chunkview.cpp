// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "format/ChunkView.h"

#include <QtTest>

#include <limits>

using namespace fixture;

namespace {

constexpr int PoolType = 1;
constexpr int OtherType = 0x0180;

QVector<qint64> sizesOf(ChunkList &list)
{
    QVector<qint64> sizes;
    while (list.hasNext())
        sizes.append(list.next().size());
    return sizes;
}

} // namespace

class TestChunkView : public QObject
{
    Q_OBJECT

private slots:
    void integersAreLittleEndian();
    void whatLiesBeyondTheEndIsZero();
    void hasIsAskedInAnyRange();
    void partsAreCutWhereTheBytesEnd();
    void chunkWithItsHeader();
    void damagedChunks_data();
    void damagedChunks();
    void listOfChunks();
    void listEndsAheadOfADamagedChunk();
    void firstChunkMustNotBeCut();
    void listOfNothingIsNotDamaged();
};

void TestChunkView::integersAreLittleEndian()
{
    const QByteArray bytes("\x01\x82\x03\x84", 4);
    const ByteView view(bytes);
    QCOMPARE(view.u8(1), quint8(0x82));
    QCOMPARE(view.u16(1), quint16(0x0382));
    QCOMPARE(view.u32(0), 0x84038201);
}

void TestChunkView::whatLiesBeyondTheEndIsZero()
{
    const QByteArray bytes(4, '\xff');
    const ByteView view(bytes);
    QCOMPARE(view.u8(3), quint8(0xff));
    QCOMPARE(view.u8(4), quint8(0));
    QCOMPARE(view.u8(-1), quint8(0));
    QCOMPARE(view.u16(2), quint16(0xffff));
    QCOMPARE(view.u16(3), quint16(0));
    QCOMPARE(view.u32(0), 0xffffffff);
    QCOMPARE(view.u32(1), quint32(0));
    QCOMPARE(view.u32(std::numeric_limits<qint64>::max()), quint32(0));
    QCOMPARE(view.u32(std::numeric_limits<qint64>::min()), quint32(0));
    QCOMPARE(ByteView().u32(0), quint32(0));
}

void TestChunkView::hasIsAskedInAnyRange()
{
    const QByteArray bytes(4, 'x');
    const ByteView view(bytes);
    QVERIFY(view.has(0, 4));
    QVERIFY(view.has(4, 0));
    QVERIFY(!view.has(5, 0));
    QVERIFY(!view.has(1, 4));
    QVERIFY(!view.has(-1, 1));
    QVERIFY(!view.has(0, -1));
    QVERIFY(!view.has(1, std::numeric_limits<qint64>::max()));
    QVERIFY(!view.has(std::numeric_limits<qint64>::max(), 1));
}

void TestChunkView::partsAreCutWhereTheBytesEnd()
{
    const QByteArray bytes("abcd");
    const ByteView view(bytes);
    QCOMPARE(view.part(1, 2).toByteArray(), QByteArray("bc"));
    QCOMPARE(view.part(2, 9).toByteArray(), QByteArray("cd"));
    QCOMPARE(view.part(9, 1).toByteArray(), QByteArray());
    QCOMPARE(view.part(-1, 1).toByteArray(), QByteArray("a"));
    QCOMPARE(view.part(1, -1).size(), qint64(0));
    QCOMPARE(view.from(3).toByteArray(), QByteArray("d"));
    QVERIFY(view.from(4).isEmpty());
    // A part cannot be read beyond its end.
    QCOMPARE(view.part(0, 1).u16(0), quint16(0));
}

void TestChunkView::chunkWithItsHeader()
{
    const QByteArray bytes = "junk" + fixture::chunk(OtherType, QByteArray(4, 'h'), QByteArray(8, 'b')) + "junk";
    const ChunkView chunk = ChunkView::at(ByteView(bytes), 4);
    QVERIFY(chunk.isValid());
    QCOMPARE(chunk.type(), ChunkType::XmlResourceMap);
    QCOMPARE(chunk.headerSize(), 12);
    QCOMPARE(chunk.size(), qint64(20));
    QCOMPARE(chunk.bytes().from(chunk.headerSize()).toByteArray(), QByteArray(8, 'b'));
}

void TestChunkView::damagedChunks_data()
{
    QTest::addColumn<int>("headerSize");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("isValid");
    QTest::newRow("least") << 8 << qint64(8) << true;
    QTest::newRow("all") << 16 << qint64(16) << true;
    QTest::newRow("short header") << 7 << qint64(16) << false;
    QTest::newRow("no header") << 0 << qint64(16) << false;
    QTest::newRow("header longer than the chunk") << 12 << qint64(11) << false;
    QTest::newRow("longer than the bytes") << 8 << qint64(17) << false;
    QTest::newRow("longest") << 8 << qint64(0xffffffff) << false;
    QTest::newRow("empty") << 8 << qint64(0) << false;
}

void TestChunkView::damagedChunks()
{
    QFETCH(int, headerSize);
    QFETCH(qint64, size);
    QFETCH(bool, isValid);
    const QByteArray bytes = Bytes().u16(PoolType).u16(headerSize).u32(size).zeros(8).data();
    QCOMPARE(ChunkView::at(ByteView(bytes), 0).isValid(), isValid);
    QVERIFY(!ChunkView::at(ByteView(bytes), 9).isValid());
    QVERIFY(!ChunkView::at(ByteView(bytes), -1).isValid());
}

void TestChunkView::listOfChunks()
{
    const QByteArray bytes = "head" + fixture::chunk(PoolType) + fixture::chunk(OtherType, {}, QByteArray(4, 'b'));
    ChunkList list(ByteView(bytes), 4);
    QCOMPARE(sizesOf(list), (QVector<qint64>{8, 12}));
    QVERIFY(!list.isDamaged());
}

void TestChunkView::listEndsAheadOfADamagedChunk()
{
    const auto isDamaged = [](const QByteArray &rest) {
        const QByteArray bytes = fixture::chunk(PoolType) + rest;
        ChunkList list(ByteView(bytes), 0);
        const bool hasOne = sizesOf(list) == QVector<qint64>{8};
        return hasOne && list.rest() == rest.size() && list.isDamaged();
    };
    QVERIFY(isDamaged(Bytes().u16(OtherType).u16(8).u32(4).data()));
    QVERIFY(isDamaged(Bytes().u16(OtherType).u16(10).u32(12).u32(0).data()));
    QVERIFY(isDamaged(Bytes().u16(OtherType).u16(4).u32(8).data()));
    // Android takes a chunk that is cut.
    QVERIFY(!isDamaged(QByteArray(3, 'x')));
    QVERIFY(!isDamaged(Bytes().u16(OtherType).u16(8).u32(12).data()));
    QVERIFY(!isDamaged(QByteArray()));
}

void TestChunkView::firstChunkMustNotBeCut()
{
    const QByteArray bytes(3, 'x');
    QVERIFY(ChunkList(ByteView(bytes), 0).isDamaged());
}

void TestChunkView::listOfNothingIsNotDamaged()
{
    const QByteArray bytes = fixture::chunk(PoolType);
    const ChunkList list(ByteView(bytes), 8);
    QVERIFY(!list.hasNext());
    QVERIFY(!list.isDamaged());
}

QTEST_GUILESS_MAIN(TestChunkView)
#include "tst_chunkview.moc"
