// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "PoolBuilder.h"
#include "format/StringPoolView.h"

#include <QtTest>

#include <cstring>
#include <memory>

using namespace fixture;

namespace {

StringPoolView viewOf(const QByteArray &bytes)
{
    return StringPoolView(ChunkView::at(ByteView(bytes), 0));
}

// A string of UTF-8 bytes with a length that counts them.
QByteArray utf8(const QByteArray &text)
{
    return Bytes().u8(text.size()).u8(text.size()).raw(text).u8(0).data();
}

} // namespace

Q_DECLARE_METATYPE(fixture::Encoding)

class TestStringPoolView : public QObject
{
    Q_OBJECT

private slots:
    void stringsInBothEncodings_data();
    void stringsInBothEncodings();
    void longStrings_data();
    void longStrings();
    void lengthsOfTwoUnitsAreReadWhateverTheyAre();
    void surrogatesInUtf8();
    void brokenSurrogatesInUtf8AreReplaced();
    void veryLongStringsAreCut();
    void stringsMayShareTheirBytes();
    void stringsThatDoNotEndInThePool();
    void offsetsAtTheEnd();
    void countBeyondTheChunk();
    void stylesAreNoStrings();
    void headerMayBeLonger();
    void whatIsNoPool();
    void everyPrefixIsAnswered();
};

void TestStringPoolView::stringsInBothEncodings_data()
{
    QTest::addColumn<Encoding>("encoding");
    QTest::newRow("UTF-8") << Encoding::Utf8;
    QTest::newRow("UTF-16") << Encoding::Utf16;
}

void TestStringPoolView::stringsInBothEncodings()
{
    QFETCH(Encoding, encoding);
    const QStringList strings{QStringLiteral("a"), QString(), QStringLiteral("Größe"), QString::fromUtf8("日本"),
                              QString::fromUtf8("😀!")};
    const QByteArray bytes = PoolBuilder(encoding).strings(strings).build();
    const StringPoolView pool = viewOf(bytes);
    QCOMPARE(pool.count(), qint64(strings.size()));
    for (int i = 0; i < strings.size(); ++i)
        QCOMPARE(pool.at(i), strings.at(i));
    QVERIFY(!pool.at(1).isNull());
    QVERIFY(pool.at(-1).isNull());
    QVERIFY(pool.at(strings.size()).isNull());
    QVERIFY(pool.at(0xffffffff).isNull());
}

void TestStringPoolView::longStrings_data()
{
    QTest::addColumn<Encoding>("encoding");
    QTest::addColumn<int>("length");
    for (const int length : {0x7f, 0x80, 0x81, 0x7ffe, 0x7fff})
        QTest::addRow("UTF-8, %d", length) << Encoding::Utf8 << length;
    for (const int length : {0x7fff, 0x8000, 0x8001, 0x12345})
        QTest::addRow("UTF-16, %d", length) << Encoding::Utf16 << length;
}

void TestStringPoolView::longStrings()
{
    QFETCH(Encoding, encoding);
    QFETCH(int, length);
    const QString text(length, QLatin1Char('x'));
    const QByteArray bytes = PoolBuilder(encoding).string(text).string(QStringLiteral("next")).build();
    QCOMPARE(viewOf(bytes).at(0), text);
    QCOMPARE(viewOf(bytes).at(1), QStringLiteral("next"));
}

// The two lengths of a UTF-8 string are encoded separately: each has one byte or two.
void TestStringPoolView::lengthsOfTwoUnitsAreReadWhateverTheyAre()
{
    const QByteArray bytes = PoolBuilder()
                                 .rawString(Bytes().u8(0x80).u8(2).u8(2).raw("ab").u8(0).data())
                                 .rawString(Bytes().u8(2).u8(0x80).u8(2).raw("cd").u8(0).data())
                                 .build();
    QCOMPARE(viewOf(bytes).at(0), QStringLiteral("ab"));
    QCOMPARE(viewOf(bytes).at(1), QStringLiteral("cd"));
    const QByteArray wide =
        PoolBuilder(Encoding::Utf16).rawString(Bytes().u16(0x8000).u16(1).u16('e').u16(0).data()).build();
    QCOMPARE(viewOf(wide).at(0), QStringLiteral("e"));
}

void TestStringPoolView::surrogatesInUtf8()
{
    // U+1F600 is D83D DE00, U+10FFFF is DBFF DFFF, U+10000 is D800 DC00.
    const QByteArray bytes = PoolBuilder()
                                 .rawString(utf8("<\xed\xa0\xbd\xed\xb8\x80>"))
                                 .rawString(utf8("\xed\xaf\xbf\xed\xbf\xbf\xed\xa0\x80\xed\xb0\x80"))
                                 .build();
    QCOMPARE(viewOf(bytes).at(0), QString::fromUtf8("<😀>"));
    const char32_t characters[] = {0x10ffff, 0x10000};
    QCOMPARE(viewOf(bytes).at(1), QString::fromUcs4(characters, 2));
}

void TestStringPoolView::brokenSurrogatesInUtf8AreReplaced()
{
    const QByteArray texts[] = {
        "a\xed\xa0\xbdz",             // only the high half
        "a\xed\xb8\x80z",             // only the low half
        "a\xed\xb8\x80\xed\xa0\xbdz", // low, high
        "a\xed\xa0\xbd\xed\xb8z",     // cut
    };
    for (const QByteArray &text : texts) {
        const QByteArray bytes = PoolBuilder().rawString(utf8(text)).build();
        const QString string = viewOf(bytes).at(0);
        QVERIFY(string.startsWith(QLatin1Char('a')) && string.endsWith(QLatin1Char('z')));
        QVERIFY(string.contains(QChar(QChar::ReplacementCharacter)));
        QVERIFY(string.isValidUtf16());
    }
    // A Hangul syllable starts with the same byte as a surrogate, but is decoded as usual.
    const QByteArray hangul = PoolBuilder().rawString(utf8("\xed\x95\x9c\xed\x95\x9c")).build();
    QCOMPARE(viewOf(hangul).at(0), QString(2, QChar(0xd55c)));
}

void TestStringPoolView::veryLongStringsAreCut()
{
    const QString text(StringPoolView::MaxLength + 1, QLatin1Char('x'));
    const QByteArray bytes = PoolBuilder(Encoding::Utf16).string(text).build();
    QCOMPARE(viewOf(bytes).at(0).size(), int(StringPoolView::MaxLength));
}

void TestStringPoolView::stringsMayShareTheirBytes()
{
    const QByteArray bytes = PoolBuilder().string(QStringLiteral("one")).offset(0).build();
    QCOMPARE(viewOf(bytes).at(1), QStringLiteral("one"));
}

void TestStringPoolView::stringsThatDoNotEndInThePool()
{
    const QByteArray narrow =
        PoolBuilder().rawString(utf8("abc")).rawString(Bytes().u8(9).u8(9).raw("abc").data()).build();
    QCOMPARE(viewOf(narrow).at(0), QStringLiteral("abc"));
    QVERIFY(viewOf(narrow).at(1).isNull());
    const QByteArray wide =
        PoolBuilder(Encoding::Utf16).rawString(Bytes().u16(3).u16('a').u16('b').u16('c').data()).build();
    QVERIFY(viewOf(wide).at(0).isNull());
    // 2 GiB of units.
    const QByteArray huge =
        PoolBuilder(Encoding::Utf16).rawString(Bytes().u16(0xffff).u16(0xffff).u16('b').u16(0).data()).build();
    QVERIFY(viewOf(huge).at(0).isNull());
}

void TestStringPoolView::offsetsAtTheEnd()
{
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const int dataSize = int(Bytes().raw(encodedString(QStringLiteral("abc"), encoding)).align().size());
        const QByteArray bytes = PoolBuilder(encoding)
                                     .string(QStringLiteral("abc"))
                                     .offset(dataSize - 1)
                                     .offset(dataSize)
                                     .offset(dataSize + 1)
                                     .offset(0x7fffffff)
                                     .offset(0xffffffff)
                                     .build();
        QCOMPARE(viewOf(bytes).count(), qint64(6));
        QCOMPARE(viewOf(bytes).at(0), QStringLiteral("abc"));
        for (int i = 1; i < 6; ++i)
            QVERIFY(viewOf(bytes).at(i).isNull());
    }
}

void TestStringPoolView::countBeyondTheChunk()
{
    QByteArray bytes = PoolBuilder().strings({QStringLiteral("a"), QStringLiteral("b")}).build();
    poke32(bytes, PoolBuilder::CountAt, 0xffffffff);
    const StringPoolView pool = viewOf(bytes);
    QCOMPARE(pool.count(), qint64((bytes.size() - PoolBuilder::OffsetsAt) / 4));
    QCOMPARE(pool.at(1), QStringLiteral("b"));
    poke32(bytes, PoolBuilder::CountAt, 1);
    QCOMPARE(viewOf(bytes).count(), qint64(1));
    QVERIFY(viewOf(bytes).at(1).isNull());
}

void TestStringPoolView::stylesAreNoStrings()
{
    const QByteArray bytes =
        PoolBuilder().strings({QStringLiteral("a"), QStringLiteral("b")}).styles(1, QByteArray(8, '\xff')).build();
    QCOMPARE(viewOf(bytes).count(), qint64(2));
    QCOMPARE(viewOf(bytes).at(0), QStringLiteral("a"));
    QCOMPARE(viewOf(bytes).at(1), QStringLiteral("b"));
}

void TestStringPoolView::headerMayBeLonger()
{
    const QByteArray bytes = PoolBuilder().strings({QStringLiteral("a")}).extraHeader(8).build();
    QCOMPARE(viewOf(bytes).at(0), QStringLiteral("a"));
}

void TestStringPoolView::whatIsNoPool()
{
    QCOMPARE(StringPoolView().count(), qint64(0));
    QVERIFY(StringPoolView().at(0).isNull());
    QByteArray bytes = PoolBuilder().strings({QStringLiteral("a")}).build();
    poke16(bytes, 0, 2);
    QCOMPARE(viewOf(bytes).count(), qint64(0));
    QCOMPARE(StringPoolView(ChunkView()).count(), qint64(0));
}

// Each prefix is in a heap block of its exact size, so that sanitizers report a read beyond it.
void TestStringPoolView::everyPrefixIsAnswered()
{
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const QByteArray whole = PoolBuilder(encoding).strings({QStringLiteral("abc"), QString::fromUtf8("😀")}).build();
        int read = 0;
        for (int length = 1; length <= whole.size(); ++length) {
            const std::unique_ptr<uchar[]> block(new uchar[size_t(length)]);
            std::memcpy(block.get(), whole.constData(), size_t(length));
            // The chunk's size is set to the prefix, because a chunk cannot exceed its bytes.
            if (length >= ChunkView::HeaderSize)
                qToLittleEndian(quint32(length), block.get() + 4);
            const StringPoolView pool(ChunkView::at(ByteView(block.get(), length), 0));
            QVERIFY(pool.count() <= 2);
            read += int(pool.at(0) == QStringLiteral("abc")) + int(pool.at(1) == QString::fromUtf8("😀"));
        }
        QVERIFY(read > 2);
    }
}

QTEST_GUILESS_MAIN(TestStringPoolView)
#include "tst_stringpoolview.moc"
