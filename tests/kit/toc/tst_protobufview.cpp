// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ProtobufWriter.h"
#include "toc/ProtobufView.h"

#include <QtTest>

using namespace fixture;
using SorrelKit::ProtobufView;

namespace {

constexpr qint64 Much = 1 << 20;

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

} // namespace

class TestProtobufView : public QObject
{
    Q_OBJECT

private slots:
    void everyWireType();
    void emptyMessage();
    void largestVarint();
    void damage_data();
    void damage();
    void smallNumbers();
    void cutAtEveryByte();
    void fieldsCostWork();
};

void TestProtobufView::everyWireType()
{
    Budget budget(Much, 0);
    const QByteArray bytes = ProtobufWriter().number(1, 300).text(2, "de").data() + hex("1d01020304")
                             + hex("210102030405060708") + hex("8280804005") + QByteArray("hello");
    ProtobufView view(ByteView(bytes), &budget);
    QVERIFY(view.next());
    QCOMPARE(view.field(), 1);
    QCOMPARE(view.number(), quint64(300));
    QVERIFY(view.bytes().isEmpty());
    QVERIFY(view.next());
    QCOMPARE(view.field(), 2);
    QCOMPARE(view.text(), QStringLiteral("de"));
    QCOMPARE(view.number(), quint64(0));
    QVERIFY(view.next());
    QCOMPARE(view.field(), 3);
    QCOMPARE(view.number(), quint64(0x04030201));
    QVERIFY(view.next());
    QCOMPARE(view.field(), 4);
    QCOMPARE(view.number(), quint64(0x0807060504030201));
    QVERIFY(view.next());
    QCOMPARE(view.field(), 1 << 24);
    QCOMPARE(view.text(), QStringLiteral("hello"));
    QVERIFY(!view.next());
    QVERIFY(!view.isDamaged());
}

void TestProtobufView::emptyMessage()
{
    Budget budget(0, 0);
    ProtobufView view(ByteView(), &budget);
    QVERIFY(!view.next());
    QVERIFY(!view.isDamaged());
}

void TestProtobufView::largestVarint()
{
    Budget budget(Much, 0);
    const QByteArray bytes = hex("08ffffffffffffffffff01");
    ProtobufView view(ByteView(bytes), &budget);
    QVERIFY(view.next());
    QCOMPARE(view.number(), ~quint64(0));
    QVERIFY(!view.next());
    QVERIFY(!view.isDamaged());
}

void TestProtobufView::damage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a tag that goes on") << hex("88");
    QTest::newRow("no value") << hex("08");
    QTest::newRow("a varint that goes on") << hex("0880");
    QTest::newRow("a varint of 65 bits") << hex("08ffffffffffffffffff02");
    QTest::newRow("a varint of 11 bytes") << hex("088080808080808080808001");
    QTest::newRow("field 0") << hex("0001");
    QTest::newRow("a tag of 33 bits") << hex("808080801001");
    QTest::newRow("a group") << hex("0b0c");
    QTest::newRow("the end of a group") << hex("0c");
    QTest::newRow("wire type 6") << hex("0e00");
    QTest::newRow("wire type 7") << hex("0f00");
    QTest::newRow("3 of 4 bytes") << hex("0d010203");
    QTest::newRow("7 of 8 bytes") << hex("0901020304050607");
    QTest::newRow("a length past the end") << hex("0a0361");
    QTest::newRow("a length of 2^31") << hex("0a8080808008") + QByteArray(16, 'a');
    QTest::newRow("a length of 2^63") << hex("0a80808080808080808001") + QByteArray(16, 'a');
    QTest::newRow("a length of 2^64 - 1") << hex("0affffffffffffffffff01") + QByteArray(16, 'a');
}

void TestProtobufView::damage()
{
    QFETCH(QByteArray, bytes);
    Budget budget(Much, 0);
    const QByteArray withField = ProtobufWriter().number(1, 7).data() + bytes;
    ProtobufView view(ByteView(withField), &budget);
    QVERIFY(view.next());
    QCOMPARE(view.number(), quint64(7));
    QVERIFY(!view.next());
    QVERIFY(view.isDamaged());
    QCOMPARE(view.number(), quint64(0));
    QVERIFY(view.bytes().isEmpty());
    QVERIFY(!view.next());
}

void TestProtobufView::smallNumbers()
{
    const auto small = [](quint64 value) {
        Budget budget(Much, 0);
        const QByteArray bytes = ProtobufWriter().number(1, value).data();
        ProtobufView view(ByteView(bytes), &budget);
        return view.next() ? view.smallNumber() : -1;
    };
    QCOMPARE(small(0x7fffffff), 0x7fffffff);
    QCOMPARE(small(0x80000000), 0);
    QCOMPARE(small(~quint64(0)), 0);
}

void TestProtobufView::cutAtEveryByte()
{
    const QByteArray bytes = ProtobufWriter().number(1, 300).text(2, "text").number(3, 1).data();
    for (int size = 0; size <= bytes.size(); ++size) {
        Budget budget(Much, 0);
        const QByteArray cut = bytes.left(size);
        ProtobufView view(ByteView(cut), &budget);
        int fields = 0;
        while (view.next())
            ++fields;
        const int whole = size == bytes.size() ? 3 : size >= 9 ? 2 : size >= 3 ? 1 : 0;
        QCOMPARE(fields, whole);
        QCOMPARE(view.isDamaged(), size != 0 && size != 3 && size != 9 && size != bytes.size());
    }
}

void TestProtobufView::fieldsCostWork()
{
    const QByteArray bytes = ProtobufWriter().number(1, 1).number(1, 2).data();
    for (const int fields : {1, 2}) {
        Budget budget(Budget::ValueWork * fields, 0);
        ProtobufView view(ByteView(bytes), &budget);
        int count = 0;
        while (view.next())
            ++count;
        QCOMPARE(count, fields);
        QCOMPARE(view.isDamaged(), fields == 1);
    }
}

QTEST_GUILESS_MAIN(TestProtobufView)
#include "tst_protobufview.moc"
