// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Devices.h"
#include "PoolBuilder.h"
#include "stream/Extractor.h"
#include "stream/StringPool.h"

#include <QtTest>

#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <random>

using namespace fixture;

Q_DECLARE_METATYPE(fixture::Encoding)

namespace {

constexpr int HeaderSizeAt = 2;
constexpr int SizeAt = 4;
constexpr int ChunkHeaderSize = 8;
constexpr int OffsetsAt = PoolBuilder::OffsetsAt;

const QString badIndexError = QStringLiteral("string pool contains bad index");
const QString badCountError = QStringLiteral("string pool contains bad count");
const QString extendsError = QStringLiteral("string extends past stringblock end");
const QString chunkError = QStringLiteral("chunk too short");
const QString fileError = QStringLiteral("file too short");
const QString inputError = QStringLiteral("bad input");
const QString earlierError = QStringLiteral("earlier");

/// A pool's chunk on a device of its own, and a reader that has read the chunk's header.
class Chunk
{
public:
    explicit Chunk(const QByteArray &bytes) : device(bytes), reader(&device)
    {
        reader.get16();
        m_headerSize = reader.get16();
        reader.pushBoundary64(qint64(reader.get32()) - ChunkHeaderSize);
    }

    void loadInto(StringPool &pool) { pool.load(&reader, m_headerSize); }

    /// The fault's text without the device's own text, or an empty string.
    QString fault() const { return *reader.errorSink().toStrongRef(); }

    SequentialDevice device;
    Extractor reader;

private:
    int m_headerSize = 0;
};

StringPool tablePool()
{
    return StringPool(QStringLiteral("table"));
}

/// The strings of a pool, read one by one.
QStringList strings(const StringPool &pool)
{
    QStringList strings;
    for (int index = 0; index < pool.count(); ++index)
        strings.append(pool.get(index));
    return strings;
}

/// The pool in these bytes.
StringPool loaded(const QByteArray &bytes)
{
    Chunk chunk(bytes);
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    if (chunk.reader.failed())
        qFatal("%s", qPrintable(chunk.fault()));
    return pool;
}

StringPool loaded(const PoolBuilder &builder)
{
    return loaded(builder.build());
}

/// The fault at the end of loading. @p prepare changes the chunk first. The pool must keep its earlier strings.
QString faultOf(
    const QByteArray &bytes, const std::function<void(Chunk &)> &prepare = [](Chunk &) {})
{
    const QStringList before = {QStringLiteral("kept"), QString(), QStringLiteral("for long")};
    QStringList faults;
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        StringPool pool = loaded(PoolBuilder(encoding).strings(before));
        Chunk chunk(bytes);
        prepare(chunk);
        chunk.loadInto(pool);
        faults.append(chunk.fault());
        if (strings(pool) != before)
            return QStringLiteral("the pool has changed");
    }
    faults.removeDuplicates();
    return faults.join(QLatin1String(" or "));
}

QString faultOf(const PoolBuilder &builder)
{
    return faultOf(builder.build());
}

/// The fault at the end of loading when the reader had a fault before.
QString faultAfterAnother(const QByteArray &bytes)
{
    return faultOf(bytes, [](Chunk &chunk) { chunk.reader.setError(earlierError); });
}

QByteArray poked(QByteArray bytes, int at, qint64 value)
{
    poke32(bytes, at, value);
    return bytes;
}

/// A length in units, as encoded in the data.
Bytes unitLength(int length)
{
    Bytes bytes;
    if (length > 0x7fff)
        bytes.u16(0x8000 | (length >> 16));
    bytes.u16(length & 0xffff);
    return bytes;
}

void encodings()
{
    QTest::addColumn<Encoding>("encoding");
    QTest::newRow("UTF-8") << Encoding::Utf8;
    QTest::newRow("UTF-16") << Encoding::Utf16;
}

/// Strings that are difficult for an encoding or a pool.
QStringList someStrings()
{
    return {QStringLiteral("string"),      QString(),
            QStringLiteral("Grüße"),       QStringLiteral("日本語"),
            QStringLiteral("🂡 of spades"), QString(QStringLiteral("a zero") + QChar(0) + QStringLiteral("within")),
            QStringLiteral("string"),      QString(200, QLatin1Char('x'))};
}

} // namespace

class TestStringPool : public QObject
{
    Q_OBJECT

private slots:
    // the pool
    void aNewPoolIsEmpty();
    void stringsAreFoundByIndex_data() { encodings(); }
    void stringsAreFoundByIndex();
    void emptyStringsAreNotNull_data() { encodings(); }
    void emptyStringsAreNotNull();
    void stringsAreFoundByText_data() { encodings(); }
    void stringsAreFoundByText();
    void aGoodIndexIsNoFault();
    void aPoolMayBeEmpty_data() { encodings(); }
    void aPoolMayBeEmpty();
    void aPoolMayStandAnywhere_data() { encodings(); }
    void aPoolMayStandAnywhere();
    void clearingDropsTheStrings();
    void clearingKeepsNameAndReader();
    void copiesAreIndependent();

    // asking past the end
    void aPoolThatWasNeverLoadedHasNoReaderToTell();
    void aPoolOutlivesItsReader();
    void theReaderOfTheLastLoadIsTold();
    void anEarlierFaultIsReplaced();
    void aNegativeIndexIsBad();

    // the header
    void theStyleCountIsIgnored_data();
    void theStyleCountIsIgnored();
    void otherFlagsAreIgnored_data() { encodings(); }
    void otherFlagsAreIgnored();
    void furtherHeaderFieldsAreSkipped_data();
    void furtherHeaderFieldsAreSkipped();
    void keepsShortHeadersAsStepsBack();
    void headersBeyondTheChunkAreAFault();
    void aGapBeforeTheStringsIsSkipped_data() { encodings(); }
    void aGapBeforeTheStringsIsSkipped();
    void keepsAStringsStartTooLowAsAStepBack();
    void stylesEndTheStringData_data() { encodings(); }
    void stylesEndTheStringData();
    void withoutStylesTheStringDataEndsWithTheChunk_data();
    void withoutStylesTheStringDataEndsWithTheChunk();
    void stylesRightAtTheStringsLeaveNoData();
    void stylesBeforeTheStringsAreAFault_data() { encodings(); }
    void stylesBeforeTheStringsAreAFault();
    void stylesBeyondTheChunkAreAFault_data() { encodings(); }
    void stylesBeyondTheChunkAreAFault();

    // the offsets
    void offsetsMayBeInAnyOrder_data() { encodings(); }
    void offsetsMayBeInAnyOrder();
    void stringsMayOverlap();
    void stringDataNeedNotBeReferred_data() { encodings(); }
    void stringDataNeedNotBeReferred();
    void oddOffsetsMeanTheUnitTheyAreIn();
    void aBadOffsetEndsAsAStringOutsideTheData_data();
    void aBadOffsetEndsAsAStringOutsideTheData();
    void offsetsWithinTheDataAreNotBad_data();
    void offsetsWithinTheDataAreNotBad();
    void ofABadOffsetAndAFaultOfReadsTheLastIsTold();

    // strings in UTF-8
    void onlyTheWidthOfTheLengthInUnitsMatters();
    void lengthsInBytes_data();
    void lengthsInBytes();
    void brokenUtf8IsReplaced();
    void keepsSurrogatesInUtf8AsReplacements();

    // strings in UTF-16
    void lengthsInUnits_data();
    void lengthsInUnits();
    void loneSurrogatesAreKept();
    void anOddDataSizeIsAFault();

    // the end of a string
    void terminatorsAreNotChecked();
    void roomForTheTerminatorIsNeeded_data() { encodings(); }
    void roomForTheTerminatorIsNeeded();
    void lengthsBeyondTheDataAreZero_data();
    void lengthsBeyondTheDataAreZero();
    void theLargestLengthsAreOutsideTheData();
    void everyBitOfALengthCounts();

    // loading as a whole
    void loadingReplacesTheWholeList();
    void anyStringThatFailsLeavesTheWholeListOfBefore_data() { encodings(); }
    void anyStringThatFailsLeavesTheWholeListOfBefore();
    void loadingEndsAtTheEndOfTheData_data() { encodings(); }
    void loadingEndsAtTheEndOfTheData();
    void anEarlierFaultEndsTheLoadBeforeTheData_data() { encodings(); }
    void anEarlierFaultEndsTheLoadBeforeTheData();
    void everyPrefixIsRefused_data();
    void everyPrefixIsRefused();
    void everyCutIsRefusedOrLosesNoString_data() { encodings(); }
    void everyCutIsRefusedOrLosesNoString();
    void devicesThatDeliverLittleAreAFault_data();
    void devicesThatDeliverLittleAreAFault();
    void fourBytesAtATimeAreEnoughForTheOffsets_data() { encodings(); }
    void fourBytesAtATimeAreEnoughForTheOffsets();
    void damagedPoolsLoadOrStayAsTheyWere_data() { encodings(); }
    void damagedPoolsLoadOrStayAsTheyWere();

    // every error text
    void stringPoolContainsBadCount_data() { encodings(); }
    void stringPoolContainsBadCount();
    void stringPoolContainsBadIndex_data() { encodings(); }
    void stringPoolContainsBadIndex();
    void stringExtendsPastStringblockEnd_data() { encodings(); }
    void stringExtendsPastStringblockEnd();
    void stringsOverlapInStringPool();
    void stringsAtOnePlaceDoNotOverlap();
    void badIndexInPool();
    void chunkTooShort();
    void fileTooShort();
    void badInput();

    // the text of a typed value
    void valueToString_data();
    void valueToString();
    void keepsDimensionsAndFractionsAsTheirData_data();
    void keepsDimensionsAndFractionsAsTheirData();
    void keepsTheTopBitAsEightDigitsMore_data();
    void keepsTheTopBitAsEightDigitsMore();
    void theNullValueIsANullString();
    void stringValuesAreThePools();
    void stringValuesOutOfRangeAreNoFault();
    void theNameInAnUnknownStringIsTakenAsItStands();

    // claims that no file can hold
    void hugeCountsAreAFault_data();
    void hugeCountsAreAFault();
    void hugeDataSizesAreAFault_data() { encodings(); }
    void hugeDataSizesAreAFault();
    void aDataSizeBeyond32BitsIsOutOfBounds_data() { encodings(); }
    void aDataSizeBeyond32BitsIsOutOfBounds();
    void aStringsStartOutOfRangeIsOutOfBounds_data();
    void aStringsStartOutOfRangeIsOutOfBounds();
};

void TestStringPool::aNewPoolIsEmpty()
{
    const StringPool pool = tablePool();
    QCOMPARE(pool.count(), 0);
    QCOMPARE(pool.find(QStringLiteral("string")), -1);
    QCOMPARE(pool.find(QString()), -1);
}

void TestStringPool::stringsAreFoundByIndex()
{
    QFETCH(Encoding, encoding);
    const StringPool pool = loaded(PoolBuilder(encoding).strings(someStrings()));
    QCOMPARE(pool.count(), someStrings().size());
    QCOMPARE(strings(pool), someStrings());
}

void TestStringPool::emptyStringsAreNotNull()
{
    QFETCH(Encoding, encoding);
    const StringPool pool = loaded(PoolBuilder(encoding).string(QString()));
    QVERIFY(pool.get(0).isEmpty());
    QVERIFY(!pool.get(0).isNull());
}

void TestStringPool::stringsAreFoundByText()
{
    QFETCH(Encoding, encoding);
    const StringPool pool = loaded(PoolBuilder(encoding).strings(someStrings()));
    for (const QString &text : someStrings())
        QCOMPARE(pool.find(text), someStrings().indexOf(text));
    for (const char *missing : {"String", "strin", "strings", "a zero", "x", " "})
        QCOMPARE(pool.find(QString::fromLatin1(missing)), -1);
}

void TestStringPool::aGoodIndexIsNoFault()
{
    Chunk chunk(PoolBuilder().strings(someStrings()).build());
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    pool.get(0);
    pool.get(pool.count() - 1);
    pool.find(QStringLiteral("missing"));
    QCOMPARE(chunk.fault(), QString());
}

void TestStringPool::aPoolMayBeEmpty()
{
    QFETCH(Encoding, encoding);
    const StringPool pool = loaded(PoolBuilder(encoding));
    QCOMPARE(pool.count(), 0);
    QCOMPARE(pool.find(QString()), -1);
    QCOMPARE(loaded(PoolBuilder(encoding).styles(1, Bytes().zeros(8).data())).count(), 0);
}

void TestStringPool::aPoolMayStandAnywhere()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).strings(someStrings()).build();
    SequentialDevice device(QByteArray(50, 'x') + bytes + QByteArray(50, 'x'));
    Extractor reader(&device);
    reader.skip(50);
    reader.pushBoundary(int(bytes.size()) + 20);
    reader.skip(ChunkHeaderSize);
    reader.pushBoundary(int(bytes.size()) - ChunkHeaderSize);
    StringPool pool = tablePool();
    pool.load(&reader, OffsetsAt);
    QVERIFY(!reader.failed());
    QCOMPARE(strings(pool), someStrings());
    QCOMPARE(reader.position, 50 + bytes.size());
}

void TestStringPool::clearingDropsTheStrings()
{
    StringPool pool = loaded(PoolBuilder().strings(someStrings()));
    pool.clear();
    QCOMPARE(pool.count(), 0);
    QCOMPARE(pool.find(QStringLiteral("string")), -1);
    QCOMPARE(pool.valueToString(3, 0), QStringLiteral("unknown string table#0"));
}

void TestStringPool::clearingKeepsNameAndReader()
{
    Chunk chunk(PoolBuilder().strings(someStrings()).build());
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    pool.clear();
    QVERIFY(pool.get(0).isNull());
    QCOMPARE(chunk.fault(), QStringLiteral("bad index in table pool"));
}

void TestStringPool::copiesAreIndependent()
{
    StringPool pool = loaded(PoolBuilder().strings(someStrings()));
    const StringPool copy(pool);
    Chunk(PoolBuilder(Encoding::Utf16).string(QStringLiteral("another")).build()).loadInto(pool);
    pool.setName(QStringLiteral("other"));
    QCOMPARE(strings(copy), someStrings());
    QCOMPARE(copy.valueToString(3, -1), QStringLiteral("unknown string table#-1"));
    QCOMPARE(strings(pool), QStringList({QStringLiteral("another")}));
}

void TestStringPool::aPoolThatWasNeverLoadedHasNoReaderToTell()
{
    QVERIFY(tablePool().get(0).isNull());
    QVERIFY(tablePool().get(std::numeric_limits<int>::max()).isNull());
}

void TestStringPool::aPoolOutlivesItsReader()
{
    const StringPool pool = loaded(PoolBuilder().strings(someStrings()));
    QVERIFY(pool.get(pool.count()).isNull());
    QCOMPARE(strings(pool), someStrings());
}

void TestStringPool::theReaderOfTheLastLoadIsTold()
{
    Chunk first(PoolBuilder().strings(someStrings()).build());
    Chunk second(PoolBuilder().string(QStringLiteral("one")).build());
    StringPool pool = tablePool();
    first.loadInto(pool);
    second.loadInto(pool);
    pool.get(1);
    QCOMPARE(first.fault(), QString());
    QCOMPARE(second.fault(), QStringLiteral("bad index in table pool"));

    // A failed load also counts as a load, at whatever step it fails.
    const QByteArray good = PoolBuilder().string(QStringLiteral("one")).build();
    for (const QByteArray &bytes : {poked(good, PoolBuilder::CountAt, -1), poked(good, PoolBuilder::CountAt, 100),
                                    poked(good, OffsetsAt, 100), good.left(good.size() - 1)}) {
        Chunk failing(bytes);
        failing.loadInto(pool);
        QVERIFY(failing.reader.failed());
        second.reader.setError(QString());
        pool.get(1);
        QCOMPARE(second.fault(), QString());
        QCOMPARE(failing.fault(), QStringLiteral("bad index in table pool"));
        second.loadInto(pool);
    }
}

void TestStringPool::anEarlierFaultIsReplaced()
{
    Chunk chunk(PoolBuilder().strings(someStrings()).build());
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    chunk.reader.setError(earlierError);
    pool.get(100);
    QCOMPARE(chunk.fault(), QStringLiteral("bad index in table pool"));
}

void TestStringPool::aNegativeIndexIsBad()
{
    for (const int index : {-1, std::numeric_limits<int>::min()}) {
        Chunk chunk(PoolBuilder().strings(someStrings()).build());
        StringPool pool = tablePool();
        QVERIFY(pool.get(index).isNull());
        chunk.loadInto(pool);
        QVERIFY(pool.get(index).isNull());
        QCOMPARE(chunk.fault(), QStringLiteral("bad index in table pool"));
    }
}

void TestStringPool::theStyleCountIsIgnored_data()
{
    QTest::addColumn<qint64>("styleCount");
    for (const qint64 count :
         {Q_INT64_C(1), Q_INT64_C(1000), Q_INT64_C(0x7fffffff), Q_INT64_C(0x80000000), Q_INT64_C(-1)})
        QTest::newRow(qPrintable(QString::number(count))) << count;
}

void TestStringPool::theStyleCountIsIgnored()
{
    QFETCH(qint64, styleCount);
    const QByteArray bytes = PoolBuilder().strings(someStrings()).build();
    QCOMPARE(strings(loaded(poked(bytes, PoolBuilder::StyleCountAt, styleCount))), someStrings());
}

void TestStringPool::otherFlagsAreIgnored()
{
    QFETCH(Encoding, encoding);
    constexpr quint32 Utf8Flag = 0x100;
    for (int bit = 0; bit < 32; ++bit) {
        const quint32 others = (1u << bit) & ~Utf8Flag;
        QCOMPARE(strings(loaded(PoolBuilder(encoding).flags(int(others)).strings(someStrings()))), someStrings());
    }
    QCOMPARE(strings(loaded(PoolBuilder(encoding).flags(int(~Utf8Flag)).strings(someStrings()))), someStrings());
}

void TestStringPool::furtherHeaderFieldsAreSkipped_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {1, 4, 8, 100, 5000})
        QTest::newRow(qPrintable(QString::number(count))) << count;
}

void TestStringPool::furtherHeaderFieldsAreSkipped()
{
    QFETCH(int, count);
    QCOMPARE(strings(loaded(PoolBuilder().extraHeader(count).strings(someStrings()))), someStrings());
    QCOMPARE(
        strings(loaded(PoolBuilder().extraHeader(count).strings(someStrings()).styles(2, Bytes().zeros(8).data()))),
        someStrings());
}

void TestStringPool::keepsShortHeadersAsStepsBack()
{
    // The position steps back eight bytes but the device does not, so the device is eight bytes ahead from here on.
    constexpr int back = 8;
    const QByteArray good = PoolBuilder().strings(someStrings()).build();
    const int stringsAt = OffsetsAt + 4 * int(someStrings().size());
    QByteArray bytes = good.left(stringsAt) + QByteArray(back, 'x') + good.mid(stringsAt);
    poke16(bytes, HeaderSizeAt, OffsetsAt - back);
    Chunk chunk(bytes);
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    QCOMPARE(chunk.fault(), QString());
    QCOMPARE(strings(pool), someStrings());
    QCOMPARE(chunk.reader.position, good.size());
    QCOMPARE(chunk.device.delivered(), bytes.size());
}

void TestStringPool::headersBeyondTheChunkAreAFault()
{
    QByteArray bytes = PoolBuilder().build();
    poke16(bytes, HeaderSizeAt, OffsetsAt + 1);
    // The string data then also end before the chunk.
    poke32(bytes, PoolBuilder::StylesStartAt, OffsetsAt + 1);
    poke32(bytes, PoolBuilder::StringsStartAt, OffsetsAt + 1);
    QCOMPARE(faultOf(bytes), chunkError);
}

void TestStringPool::aGapBeforeTheStringsIsSkipped()
{
    QFETCH(Encoding, encoding);
    const QByteArray good = PoolBuilder(encoding).strings(someStrings()).build();
    const int stringsAt = OffsetsAt + 4 * int(someStrings().size());
    for (const int gap : {1, 4, 5000}) {
        QByteArray bytes = good.left(stringsAt) + QByteArray(gap, 'x') + good.mid(stringsAt);
        poke32(bytes, SizeAt, bytes.size());
        poke32(bytes, PoolBuilder::StringsStartAt, stringsAt + gap);
        QCOMPARE(strings(loaded(bytes)), someStrings());
    }
    // The offsets of styles are such a gap.
    QCOMPARE(strings(loaded(PoolBuilder(encoding).strings(someStrings()).styles(3, Bytes().zeros(12).data()))),
             someStrings());
}

void TestStringPool::keepsAStringsStartTooLowAsAStepBack()
{
    const QByteArray good = PoolBuilder().strings(someStrings()).build();
    QByteArray bytes = good;
    poke32(bytes, PoolBuilder::StringsStartAt, OffsetsAt);
    // The chunk is shorter by the distance that its data move towards its start.
    poke32(bytes, SizeAt, good.size() - 4 * someStrings().size());
    Chunk chunk(bytes);
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    QCOMPARE(chunk.fault(), QString());
    QCOMPARE(strings(pool), someStrings());
    QCOMPARE(chunk.reader.remaining(), 0);
    QCOMPARE(chunk.device.delivered(), good.size());
}

void TestStringPool::stylesEndTheStringData()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).strings(someStrings()).styles(1, QByteArray(40, 'x')).build();
    Chunk chunk(bytes);
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    QCOMPARE(strings(pool), someStrings());
    QCOMPARE(chunk.reader.position, bytes.size() - 40);

    // The data have no room for a string that extends into the styles.
    const QByteArray reaching =
        PoolBuilder(encoding).string(QStringLiteral("abc")).unpadded().styles(0, QByteArray(40, '\0')).build();
    QCOMPARE(strings(loaded(reaching)), QStringList({QStringLiteral("abc")}));
    const int unit = encoding == Encoding::Utf8 ? 1 : 2;
    const int stylesStart = int(peek32(reaching, PoolBuilder::StylesStartAt));
    QCOMPARE(faultOf(poked(reaching, PoolBuilder::StylesStartAt, stylesStart - unit)), extendsError);
    QCOMPARE(strings(loaded(poked(reaching, PoolBuilder::StylesStartAt, stylesStart + unit))),
             QStringList({QStringLiteral("abc")}));
}

void TestStringPool::withoutStylesTheStringDataEndsWithTheChunk_data()
{
    QTest::addColumn<qint64>("stylesStart");
    QTest::newRow("0") << Q_INT64_C(0);
    QTest::newRow("-1") << Q_INT64_C(-1);
    QTest::newRow("lowest") << Q_INT64_C(0x80000000);
}

void TestStringPool::withoutStylesTheStringDataEndsWithTheChunk()
{
    QFETCH(qint64, stylesStart);
    for (const int extraHeader : {0, 4, 20}) {
        const PoolBuilder builder = PoolBuilder().extraHeader(extraHeader).strings(someStrings());
        const QByteArray bytes = poked(builder.build(), PoolBuilder::StylesStartAt, stylesStart);
        Chunk chunk(bytes + QByteArray(40, '\0'));
        StringPool pool = tablePool();
        chunk.loadInto(pool);
        QCOMPARE(strings(pool), someStrings());
        QCOMPARE(chunk.device.delivered(), bytes.size());
        QCOMPARE(chunk.reader.remaining(), 0);
    }
}

void TestStringPool::stylesRightAtTheStringsLeaveNoData()
{
    const QByteArray none = PoolBuilder().build();
    QCOMPARE(loaded(poked(none, PoolBuilder::StylesStartAt, OffsetsAt)).count(), 0);
    const QByteArray one = PoolBuilder().string(QStringLiteral("one")).build();
    QCOMPARE(faultOf(poked(one, PoolBuilder::StylesStartAt, OffsetsAt + 4)), extendsError);
    QCOMPARE(faultAfterAnother(poked(one, PoolBuilder::StylesStartAt, OffsetsAt + 4)), badIndexError);
}

void TestStringPool::stylesBeforeTheStringsAreAFault()
{
    QFETCH(Encoding, encoding);
    const QByteArray none = PoolBuilder(encoding).build();
    for (const int before : {1, 2, OffsetsAt - 1})
        QCOMPARE(faultOf(poked(none, PoolBuilder::StylesStartAt, OffsetsAt - before)), inputError);
}

void TestStringPool::stylesBeyondTheChunkAreAFault()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).strings(someStrings()).build();
    QCOMPARE(strings(loaded(poked(bytes, PoolBuilder::StylesStartAt, bytes.size()))), someStrings());
    // 0x7ffffffe minus the start of the strings is even, as UTF-16 data require.
    for (const qint64 stylesStart : {qint64(bytes.size()) + 2, Q_INT64_C(0x7ffffffe)})
        QCOMPARE(faultOf(poked(bytes, PoolBuilder::StylesStartAt, stylesStart)), chunkError);
}

void TestStringPool::offsetsMayBeInAnyOrder()
{
    QFETCH(Encoding, encoding);
    const int width = int(encodedString(QStringLiteral("a"), encoding).size());
    const StringPool pool = loaded(PoolBuilder(encoding)
                                       .offset(2 * width)
                                       .offset(0)
                                       .strings({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")})
                                       .offset(width)
                                       .offset(width));
    QCOMPARE(strings(pool).join(QString()), QStringLiteral("caabcbb"));
}

void TestStringPool::stringsMayOverlap()
{
    // The end of the first string is a string as well.
    const QByteArray inner = encodedString(QStringLiteral("in"), Encoding::Utf8);
    const QByteArray outer = Bytes().u8(6).u8(6).raw("on").raw(inner.left(4)).u8(0).data();
    const StringPool pool = loaded(PoolBuilder().rawString(outer).offset(4));
    QCOMPARE(pool.get(0), QString(QStringLiteral("on") + QChar(2) + QChar(2) + QStringLiteral("in")));
    QCOMPARE(pool.get(1), QStringLiteral("in"));
}

void TestStringPool::stringDataNeedNotBeReferred()
{
    QFETCH(Encoding, encoding);
    const QByteArray unused = QByteArray(8, char(0xff));
    const StringPool pool =
        loaded(PoolBuilder(encoding).rawString(encodedString(QStringLiteral("used"), encoding) + unused));
    QCOMPARE(strings(pool), QStringList({QStringLiteral("used")}));
}

void TestStringPool::oddOffsetsMeanTheUnitTheyAreIn()
{
    const int width = int(encodedString(QStringLiteral("a"), Encoding::Utf16).size());
    const StringPool pool = loaded(
        PoolBuilder(Encoding::Utf16).strings({QStringLiteral("a"), QStringLiteral("b")}).offset(1).offset(width + 1));
    QCOMPARE(strings(pool).join(QString()), QStringLiteral("abab"));
}

void TestStringPool::aBadOffsetEndsAsAStringOutsideTheData_data()
{
    QTest::addColumn<Encoding>("encoding");
    QTest::addColumn<qint64>("offset");
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const char *name = encoding == Encoding::Utf8 ? "UTF-8" : "UTF-16";
        for (const qint64 offset :
             {Q_INT64_C(8), Q_INT64_C(9), Q_INT64_C(10), Q_INT64_C(0x7fffffff), Q_INT64_C(0x80000000),
              Q_INT64_C(0x80000008), Q_INT64_C(0xfffffffe), Q_INT64_C(0xffffffff)})
            QTest::addRow("%s, %llx", name, offset) << encoding << offset;
    }
}

void TestStringPool::aBadOffsetEndsAsAStringOutsideTheData()
{
    QFETCH(Encoding, encoding);
    QFETCH(qint64, offset);
    // The data have eight bytes. Loading continues after the bad offset and fails at the string.
    const QString text = QStringLiteral("ab");
    QCOMPARE(faultOf(PoolBuilder(encoding).string(text).offset(offset)), extendsError);
    QCOMPARE(faultOf(PoolBuilder(encoding).offset(offset).string(text)), extendsError);
    // When loading ends before the strings, the text for the offset remains.
    QCOMPARE(faultAfterAnother(PoolBuilder(encoding).string(text).offset(offset).build()), badIndexError);
    QCOMPARE(faultAfterAnother(PoolBuilder(encoding).offset(offset).string(text).build()), badIndexError);
}

void TestStringPool::offsetsWithinTheDataAreNotBad_data()
{
    QTest::addColumn<Encoding>("encoding");
    QTest::addColumn<int>("offset");
    for (int offset = 0; offset < 8; ++offset) {
        QTest::addRow("UTF-8, %d", offset) << Encoding::Utf8 << offset;
        QTest::addRow("UTF-16, %d", offset) << Encoding::Utf16 << offset;
    }
}

void TestStringPool::offsetsWithinTheDataAreNotBad()
{
    QFETCH(Encoding, encoding);
    QFETCH(int, offset);
    const QByteArray bytes = PoolBuilder(encoding).string(QStringLiteral("ab")).offset(offset).build();
    QCOMPARE(faultAfterAnother(bytes), earlierError);
    const QByteArray styled =
        PoolBuilder(encoding).string(QStringLiteral("ab")).offset(offset).styles(0, QByteArray(8, '\0')).build();
    QCOMPARE(faultAfterAnother(styled), earlierError);
}

void TestStringPool::ofABadOffsetAndAFaultOfReadsTheLastIsTold()
{
    const QByteArray bytes = PoolBuilder().string(QStringLiteral("ab")).offset(1000).build();
    const int stringsAt = OffsetsAt + 8;
    // The skip to the data follows the offsets.
    QCOMPARE(faultOf(poked(bytes, PoolBuilder::StringsStartAt, bytes.size() + 1)), chunkError);

    // The chunk ends within the offsets, after a bad one. Missing offsets count as 0, and 0 is a bad offset when there
    // are no data.
    QByteArray cut = poked(bytes, SizeAt, stringsAt - 4);
    poke32(cut, OffsetsAt, 1000);
    QCOMPARE(faultOf(cut), badIndexError);
    poke32(cut, PoolBuilder::StringsStartAt, OffsetsAt);
    QCOMPARE(faultOf(cut), chunkError);

    // The same for a device that ends within the offsets, in the middle of one and between two.
    for (const int missing : {2, 4}) {
        QByteArray ended = poked(bytes, OffsetsAt, 1000).left(stringsAt - missing);
        QCOMPARE(faultOf(ended), fileError);
        poke32(ended, PoolBuilder::StylesStartAt, stringsAt);
        QCOMPARE(faultOf(ended), badIndexError);
    }
}

void TestStringPool::onlyTheWidthOfTheLengthInUnitsMatters()
{
    const QByteArray text = Bytes().u8(2).raw("hi").u8(0).data();
    for (const int length : {0, 1, 2, 0x7f})
        QCOMPARE(loaded(PoolBuilder().rawString(Bytes().u8(length).raw(text).data())).get(0), QStringLiteral("hi"));
    for (const int first : {0x80, 0x81, 0xff}) {
        for (const int second : {0, 2, 0x7f, 0x80, 0xff}) {
            QCOMPARE(loaded(PoolBuilder().rawString(Bytes().u8(first).u8(second).raw(text).data())).get(0),
                     QStringLiteral("hi"));
        }
    }
}

void TestStringPool::lengthsInBytes_data()
{
    QTest::addColumn<QByteArray>("length");
    QTest::addColumn<int>("bytes");
    QTest::newRow("0") << Bytes().u8(0).data() << 0;
    QTest::newRow("0x7f") << Bytes().u8(0x7f).data() << 0x7f;
    QTest::newRow("0x80") << Bytes().u8(0x80).u8(0x80).data() << 0x80;
    QTest::newRow("0xff") << Bytes().u8(0x80).u8(0xff).data() << 0xff;
    QTest::newRow("0x123") << Bytes().u8(0x81).u8(0x23).data() << 0x123;
    QTest::newRow("0x7fff") << Bytes().u8(0xff).u8(0xff).data() << 0x7fff;
    QTest::newRow("more bytes than needed") << Bytes().u8(0x80).u8(0x03).data() << 3;
}

void TestStringPool::lengthsInBytes()
{
    QFETCH(QByteArray, length);
    QFETCH(int, bytes);
    const QByteArray text(bytes, 'x');
    const QByteArray string = Bytes().u8(0).raw(length).raw(text).u8(0).data();
    const StringPool pool = loaded(PoolBuilder().rawString(string).string(QStringLiteral("next")));
    QCOMPARE(pool.get(0), QString::fromLatin1(text));
    QCOMPARE(pool.get(1), QStringLiteral("next"));
    QCOMPARE(faultOf(PoolBuilder().rawString(string.chopped(1)).unpadded()), extendsError);
}

void TestStringPool::brokenUtf8IsReplaced()
{
    const QByteArray text = QByteArray("a\xff") + "b\xc3";
    const StringPool pool = loaded(
        PoolBuilder().rawString(Bytes().u8(0).u8(text.size()).raw(text).u8(0).data()).string(QStringLiteral("c")));
    QCOMPARE(pool.get(0), QString::fromUtf8(text));
    QVERIFY(pool.get(0).contains(QChar(QChar::ReplacementCharacter)));
    QCOMPARE(pool.find(QString::fromUtf8(text)), 0);
}

void TestStringPool::keepsSurrogatesInUtf8AsReplacements()
{
    // U+1F4DD as two surrogates of three bytes each, as aapt2 writes it, and as valid UTF-8.
    const auto text = [](const QByteArray &bytes) {
        return loaded(PoolBuilder().rawString(Bytes().u8(2).u8(bytes.size()).raw(bytes).u8(0).data())).get(0);
    };
    QCOMPARE(text("\xed\xa0\xbd\xed\xb3\x9d"), QString(6, QChar(QChar::ReplacementCharacter)));
    QCOMPARE(text("\xf0\x9f\x93\x9d"), QStringLiteral("📝"));
}

void TestStringPool::lengthsInUnits_data()
{
    QTest::addColumn<QByteArray>("length");
    QTest::addColumn<int>("units");
    QTest::newRow("0") << Bytes().u16(0).data() << 0;
    QTest::newRow("0x80") << Bytes().u16(0x80).data() << 0x80;
    QTest::newRow("0x7fff") << Bytes().u16(0x7fff).data() << 0x7fff;
    QTest::newRow("0x8000") << Bytes().u16(0x8000).u16(0x8000).data() << 0x8000;
    QTest::newRow("0xffff") << Bytes().u16(0x8000).u16(0xffff).data() << 0xffff;
    QTest::newRow("0x10002") << Bytes().u16(0x8001).u16(0x0002).data() << 0x10002;
    QTest::newRow("more units than needed") << Bytes().u16(0x8000).u16(3).data() << 3;
}

void TestStringPool::lengthsInUnits()
{
    QFETCH(QByteArray, length);
    QFETCH(int, units);
    const QString text(units, QChar(0x3042));
    Bytes string;
    string.raw(length);
    for (int i = 0; i < units; ++i)
        string.u16(0x3042);
    string.u16(0);
    const StringPool pool =
        loaded(PoolBuilder(Encoding::Utf16).rawString(string.data()).string(QStringLiteral("next")));
    QCOMPARE(pool.get(0).size(), units);
    QCOMPARE(pool.get(0), text);
    QCOMPARE(pool.get(1), QStringLiteral("next"));
    QCOMPARE(faultOf(PoolBuilder(Encoding::Utf16).rawString(string.data().chopped(2)).unpadded()), extendsError);
}

void TestStringPool::loneSurrogatesAreKept()
{
    const QString text = QString(QChar(0xdc00)) + QLatin1Char('a') + QChar(0xd83c);
    const StringPool pool = loaded(PoolBuilder(Encoding::Utf16).string(text));
    QCOMPARE(pool.get(0), text);
    QCOMPARE(pool.find(text), 0);
}

void TestStringPool::anOddDataSizeIsAFault()
{
    QByteArray bytes = PoolBuilder(Encoding::Utf16).string(QStringLiteral("ab")).build() + 'x';
    poke32(bytes, SizeAt, bytes.size());
    QCOMPARE(faultOf(bytes), inputError);
    // When the styles end the data, the data end at the start of the styles.
    QCOMPARE(strings(loaded(poked(bytes, PoolBuilder::StylesStartAt, bytes.size() - 1))),
             QStringList({QStringLiteral("ab")}));
    QCOMPARE(faultOf(poked(bytes, PoolBuilder::StylesStartAt, bytes.size() - 2)), inputError);
}

void TestStringPool::terminatorsAreNotChecked()
{
    QCOMPARE(loaded(PoolBuilder().rawString(Bytes().u8(2).u8(2).raw("hi!").data())).get(0), QStringLiteral("hi"));
    QCOMPARE(loaded(PoolBuilder(Encoding::Utf16).rawString(unitLength(2).u16('h').u16('i').u16('!').data())).get(0),
             QStringLiteral("hi"));
}

void TestStringPool::roomForTheTerminatorIsNeeded()
{
    QFETCH(Encoding, encoding);
    const int unit = encoding == Encoding::Utf8 ? 1 : 2;
    for (const QString &text : someStrings()) {
        const QByteArray string = encodedString(text, encoding);
        QCOMPARE(loaded(PoolBuilder(encoding).rawString(string).unpadded()).get(0), text);
        for (int missing = unit; missing <= string.size(); missing += unit)
            QCOMPARE(faultOf(PoolBuilder(encoding).rawString(string.chopped(missing)).unpadded()), extendsError);
    }
}

void TestStringPool::lengthsBeyondTheDataAreZero_data()
{
    QTest::addColumn<Encoding>("encoding");
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("UTF-8, after the length in units") << Encoding::Utf8 << Bytes().u8(1).data();
    QTest::newRow("UTF-8, within the length in units") << Encoding::Utf8 << Bytes().u8(0x80).data();
    QTest::newRow("UTF-8, after the long length in units") << Encoding::Utf8 << Bytes().u8(0x80).u8(1).data();
    QTest::newRow("UTF-8, within the length in bytes") << Encoding::Utf8 << Bytes().u8(0).u8(0x80).data();
    QTest::newRow("UTF-8, after the length in bytes") << Encoding::Utf8 << Bytes().u8(0).u8(0).data();
    QTest::newRow("UTF-16, within the length") << Encoding::Utf16 << Bytes().u16(0x8000).data();
    QTest::newRow("UTF-16, after the length") << Encoding::Utf16 << Bytes().u16(0).data();
    QTest::newRow("UTF-16, after the long length") << Encoding::Utf16 << Bytes().u16(0x8000).u16(0).data();
}

void TestStringPool::lengthsBeyondTheDataAreZero()
{
    QFETCH(Encoding, encoding);
    QFETCH(QByteArray, end);
    QCOMPARE(faultOf(PoolBuilder(encoding).rawString(end).unpadded()), extendsError);
    QCOMPARE(faultOf(PoolBuilder(encoding).string(QStringLiteral("before")).rawString(end).unpadded()), extendsError);
}

void TestStringPool::theLargestLengthsAreOutsideTheData()
{
    const QByteArray data(100, '\0');
    QCOMPARE(faultOf(PoolBuilder().rawString(Bytes().u8(0).u8(0xff).u8(0xff).raw(data).data())), extendsError);
    QCOMPARE(faultOf(PoolBuilder(Encoding::Utf16).rawString(Bytes().u16(0xffff).u16(0xffff).raw(data).data())),
             extendsError);
}

// The upper part of a length in two parts has 15 bits in UTF-16, and 7 in UTF-8.
void TestStringPool::everyBitOfALengthCounts()
{
    const QByteArray data(100, '\0');
    const auto ofUnits = [&](int upper) { return Bytes().u16(0x8000 | upper).u16(1).raw(data).data(); };
    const auto ofBytes = [&](int upper) { return Bytes().u8(0).u8(0x80 | upper).u8(1).raw(data).data(); };
    QCOMPARE(loaded(PoolBuilder(Encoding::Utf16).rawString(ofUnits(0))).get(0).size(), 1);
    for (int bit = 1; bit < 0x8000; bit *= 2)
        QCOMPARE(faultOf(PoolBuilder(Encoding::Utf16).rawString(ofUnits(bit))), extendsError);
    QCOMPARE(loaded(PoolBuilder().rawString(ofBytes(0))).get(0).size(), 1);
    for (int bit = 1; bit < 0x80; bit *= 2)
        QCOMPARE(faultOf(PoolBuilder().rawString(ofBytes(bit))), extendsError);
}

void TestStringPool::loadingReplacesTheWholeList()
{
    for (const Encoding first : {Encoding::Utf8, Encoding::Utf16}) {
        for (const Encoding second : {Encoding::Utf8, Encoding::Utf16}) {
            StringPool pool = loaded(PoolBuilder(first).strings(someStrings()));
            Chunk(PoolBuilder(second).string(QStringLiteral("one")).build()).loadInto(pool);
            QCOMPARE(strings(pool), QStringList({QStringLiteral("one")}));
            QCOMPARE(pool.find(QStringLiteral("string")), -1);
            Chunk(PoolBuilder(first).build()).loadInto(pool);
            QCOMPARE(pool.count(), 0);
            QCOMPARE(pool.valueToString(3, 0), QStringLiteral("unknown string table#0"));
        }
    }
}

void TestStringPool::anyStringThatFailsLeavesTheWholeListOfBefore()
{
    QFETCH(Encoding, encoding);
    const QByteArray good = PoolBuilder(encoding).strings(someStrings()).build();
    for (int index = 0; index < someStrings().size(); ++index)
        QCOMPARE(faultOf(poked(good, OffsetsAt + 4 * index, 0x10000)), extendsError);
}

void TestStringPool::loadingEndsAtTheEndOfTheData()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).strings(someStrings()).styles(2, QByteArray(24, 'x')).build();
    Chunk chunk(bytes + QByteArray(30, 'x'));
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    QCOMPARE(chunk.reader.position, bytes.size() - 24);
    QVERIFY(chunk.device.delivered() <= bytes.size());
    chunk.reader.popBoundary();
    QCOMPARE(chunk.reader.position, bytes.size());
    QCOMPARE(chunk.device.delivered(), bytes.size());
    QCOMPARE(chunk.fault(), QString());
}

void TestStringPool::anEarlierFaultEndsTheLoadBeforeTheData()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).strings(someStrings()).styles(2, QByteArray(24, 'x')).build();
    QCOMPARE(faultAfterAnother(bytes), earlierError);
    Chunk chunk(bytes);
    chunk.reader.setError(earlierError);
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    QCOMPARE(pool.count(), 0);
    // The fields before the data were read all the same.
    const int stringsStart = int(peek32(bytes, PoolBuilder::StringsStartAt));
    QCOMPARE(chunk.reader.position, stringsStart);
}

void TestStringPool::everyPrefixIsRefused_data()
{
    QTest::addColumn<Encoding>("encoding");
    QTest::addColumn<bool>("styles");
    QTest::addColumn<int>("answerAtEnd");
    for (const int answer : {0, -1}) {
        QTest::addRow("UTF-8, %d", answer) << Encoding::Utf8 << false << answer;
        QTest::addRow("UTF-16, %d", answer) << Encoding::Utf16 << false << answer;
        QTest::addRow("UTF-8, styles, %d", answer) << Encoding::Utf8 << true << answer;
        QTest::addRow("UTF-16, styles, %d", answer) << Encoding::Utf16 << true << answer;
    }
}

void TestStringPool::everyPrefixIsRefused()
{
    QFETCH(Encoding, encoding);
    QFETCH(bool, styles);
    QFETCH(int, answerAtEnd);
    PoolBuilder builder = PoolBuilder(encoding).strings(someStrings());
    if (styles)
        builder.styles(2, QByteArray(24, 'x'));
    const QByteArray bytes = builder.build();
    const int dataEnd = styles ? int(peek32(bytes, PoolBuilder::StylesStartAt)) : int(bytes.size());
    const int stringsStart = int(peek32(bytes, PoolBuilder::StringsStartAt));
    for (int size = 0; size <= bytes.size(); ++size) {
        const std::unique_ptr<char[]> block(new char[size_t(size)]);
        std::memcpy(block.get(), bytes.constData(), size_t(size));
        const QByteArray prefix = QByteArray::fromRawData(block.get(), size);
        if (size >= dataEnd) {
            // Styles are not read.
            QCOMPARE(strings(loaded(prefix)), someStrings());
            continue;
        }
        const QString fault =
            faultOf(prefix, [answerAtEnd](Chunk &chunk) { chunk.device.setAnswerAtEnd(answerAtEnd); });
        QVERIFY(!fault.isEmpty());
        if (size >= stringsStart)
            QCOMPARE(fault, fileError);
    }
}

void TestStringPool::everyCutIsRefusedOrLosesNoString()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).strings(someStrings()).build();
    const QByteArray unpadded = PoolBuilder(encoding).strings(someStrings()).unpadded().build();
    const int stringsStart = int(peek32(bytes, PoolBuilder::StringsStartAt));
    for (int size = ChunkHeaderSize; size <= bytes.size(); ++size) {
        const std::unique_ptr<char[]> block(new char[size_t(size)]);
        std::memcpy(block.get(), poked(bytes, SizeAt, size).constData(), size_t(size));
        const QByteArray cut = QByteArray::fromRawData(block.get(), size);
        const bool isHalfAUnit = encoding == Encoding::Utf16 && (size - stringsStart) % 2 != 0;
        if (size >= unpadded.size() && !isHalfAUnit) {
            QCOMPARE(strings(loaded(cut)), someStrings());
            continue;
        }
        const QString fault = faultOf(cut);
        QVERIFY(!fault.isEmpty());
        if (size >= stringsStart)
            QCOMPARE(fault, isHalfAUnit ? inputError : extendsError);
    }
}

void TestStringPool::devicesThatDeliverLittleAreAFault_data()
{
    QTest::addColumn<Encoding>("encoding");
    QTest::addColumn<int>("largestRead");
    QTest::addColumn<int>("answerAtEnd");
    for (const int largestRead : {1, 2, 3, 4, 5, 100}) {
        for (const int answer : {0, -1}) {
            QTest::addRow("UTF-8, %d, %d", largestRead, answer) << Encoding::Utf8 << largestRead << answer;
            QTest::addRow("UTF-16, %d, %d", largestRead, answer) << Encoding::Utf16 << largestRead << answer;
        }
    }
}

void TestStringPool::devicesThatDeliverLittleAreAFault()
{
    QFETCH(Encoding, encoding);
    QFETCH(int, largestRead);
    QFETCH(int, answerAtEnd);
    const QByteArray bytes = PoolBuilder(encoding).strings(someStrings()).build();
    const auto limit = [=](Chunk &chunk) {
        chunk.device.setLargestRead(largestRead);
        chunk.device.setAnswerAtEnd(answerAtEnd);
    };
    QCOMPARE(faultOf(bytes, limit), fileError);
    QCOMPARE(faultOf(bytes.left(OffsetsAt), limit), faultOf(bytes.left(OffsetsAt)));
}

void TestStringPool::fourBytesAtATimeAreEnoughForTheOffsets()
{
    QFETCH(Encoding, encoding);
    // The offsets are read as integers. The data have four bytes.
    QByteArray bytes = PoolBuilder(encoding).string(QString()).offset(0).offset(0).build();
    const int stringsStart = int(peek32(bytes, PoolBuilder::StringsStartAt));
    QCOMPARE(bytes.size(), stringsStart + 4);
    Chunk chunk(bytes);
    chunk.device.setLargestRead(4);
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    QCOMPARE(chunk.fault(), QString());
    QCOMPARE(pool.count(), 3);
}

void TestStringPool::damagedPoolsLoadOrStayAsTheyWere()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).strings(someStrings()).styles(2, QByteArray(24, 'x')).build();
    const int headerEnd = OffsetsAt + 4 * int(someStrings().size());
    const QStringList before = {QStringLiteral("before")};
    const QByteArray another = PoolBuilder().strings(before).build();
    std::mt19937 random(22);
    const auto below = [&random](int limit) { return int(random() % unsigned(limit)); };
    for (int round = 0; round < 500; ++round) {
        QByteArray damaged = bytes;
        for (int damage = below(4); damage >= 0; --damage)
            poke8(damaged, below(2) == 0 ? below(int(damaged.size())) : below(headerEnd),
                  below(3) == 0 ? 0xff : below(256));
        StringPool pool = loaded(another);
        Chunk chunk(damaged);
        chunk.loadInto(pool);
        const QString fault = chunk.fault();
        const QStringList after = strings(pool);
        if (!fault.isEmpty())
            QCOMPARE(after, before);
        for (const QString &text : after)
            QVERIFY(pool.find(text) <= after.indexOf(text));
        QCOMPARE(chunk.fault(), fault);
    }
}

void TestStringPool::stringPoolContainsBadCount()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).strings(someStrings()).build();
    for (const qint64 count : {Q_INT64_C(-1), Q_INT64_C(0x80000000), Q_INT64_C(0xc0000000)})
        QCOMPARE(faultOf(poked(bytes, PoolBuilder::CountAt, count)), badCountError);
}

void TestStringPool::stringPoolContainsBadIndex()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).string(QStringLiteral("ab")).offset(8).build();
    QCOMPARE(faultAfterAnother(bytes), badIndexError);
}

void TestStringPool::stringExtendsPastStringblockEnd()
{
    QFETCH(Encoding, encoding);
    const QByteArray string = encodedString(QStringLiteral("abc"), encoding);
    const int unit = encoding == Encoding::Utf8 ? 1 : 2;
    QCOMPARE(faultOf(PoolBuilder(encoding).rawString(string.chopped(unit)).unpadded()), extendsError);
}

void TestStringPool::stringsOverlapInStringPool()
{
    // A string of 127 bytes starts at each position of the data.
    constexpr int Length = 127;
    constexpr int LeastData = 1 << 14;
    constexpr int Most = StringPool::MaxOverlap * LeastData / Length;
    const auto pool = [](int strings) {
        PoolBuilder builder;
        builder.rawString(QByteArray(LeastData, char(Length)));
        for (int i = 1; i < strings; ++i)
            builder.offset(i);
        return builder;
    };
    QCOMPARE(loaded(pool(Most)).count(), Most);
    QCOMPARE(faultOf(pool(Most + 1)), QStringLiteral("strings overlap in string pool"));
}

void TestStringPool::stringsAtOnePlaceDoNotOverlap()
{
    PoolBuilder builder;
    builder.string(QString(100, QLatin1Char('x')));
    constexpr int Count = 10000;
    for (int i = 1; i < Count; ++i)
        builder.offset(0);
    const StringPool pool = loaded(builder);
    QCOMPARE(pool.count(), Count);
    QCOMPARE(pool.get(Count - 1), QString(100, QLatin1Char('x')));
}

void TestStringPool::badIndexInPool()
{
    for (const char *name : {"table", "org.x keys", "", "%1"}) {
        Chunk chunk(PoolBuilder().strings(someStrings()).build());
        StringPool pool(QStringLiteral("another"));
        pool.setName(QString::fromLatin1(name));
        chunk.loadInto(pool);
        QVERIFY(pool.get(pool.count()).isNull());
        QCOMPARE(chunk.fault(), QStringLiteral("bad index in ") + QLatin1String(name) + QStringLiteral(" pool"));
        chunk.reader.setError(QString());
        QVERIFY(pool.get(std::numeric_limits<int>::max()).isNull());
        QVERIFY(chunk.reader.failed());
    }
}

void TestStringPool::chunkTooShort()
{
    const QByteArray bytes = PoolBuilder().string(QStringLiteral("ab")).build();
    // The chunk ends in the header, in the offsets, and in the data.
    QCOMPARE(faultOf(poked(PoolBuilder().build(), SizeAt, OffsetsAt - 1)), chunkError);
    QCOMPARE(faultOf(poked(bytes, PoolBuilder::CountAt, 4)), chunkError);
    QCOMPARE(faultOf(poked(bytes, PoolBuilder::StylesStartAt, bytes.size() + 1)), chunkError);
}

void TestStringPool::fileTooShort()
{
    const QByteArray bytes = PoolBuilder().string(QStringLiteral("ab")).build();
    for (const int size : {ChunkHeaderSize, OffsetsAt - 1, OffsetsAt, OffsetsAt + 4, int(bytes.size()) - 1})
        QCOMPARE(faultOf(bytes.left(size)), fileError);
}

void TestStringPool::badInput()
{
    QByteArray bytes = PoolBuilder(Encoding::Utf16).build() + 'x';
    poke32(bytes, SizeAt, bytes.size());
    QCOMPARE(faultOf(bytes), inputError);
    QCOMPARE(faultOf(poked(PoolBuilder().build(), PoolBuilder::StylesStartAt, 1)), inputError);
}

void TestStringPool::valueToString_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<quint32>("data");
    QTest::addColumn<QString>("text");
    const auto row = [](int type, quint32 data, const char *text) {
        QTest::addRow("%d, %x", type, data) << type << data << QString::fromLatin1(text);
    };
    row(0x00, 0, "");
    row(0x00, 0x7f010001, "");
    row(0x01, 0, "@?");
    row(0x01, 0x7f010001, "@?");
    row(0x02, 0, "@attr?");
    row(0x02, 0x01010003, "@attr?");
    row(0x03, 0, "zero");
    row(0x03, 2, "two");
    row(0x03, 3, "unknown string table#3");
    row(0x03, 17, "unknown string table#17");
    row(0x03, 0x7fffffff, "unknown string table#2147483647");
    row(0x03, 0xffffffff, "unknown string table#-1");
    row(0x03, 0x80000000, "unknown string table#-2147483648");
    row(0x04, 0, "0");
    row(0x04, 0x3f800000, "1");
    row(0x04, 0xbf800000, "-1");
    row(0x04, 0x3fc00000, "1.5");
    row(0x04, 0x3dcccccd, "0.1");
    row(0x04, 0x40490fdb, "3.14159");
    row(0x04, 0x4996b438, "1.23457e+06");
    row(0x04, 0x7f800000, "inf");
    row(0x04, 0xff800000, "-inf");
    row(0x04, 0x7fc00000, "nan");
    row(0x10, 0, "0");
    row(0x10, 42, "42");
    row(0x10, 0x7fffffff, "2147483647");
    row(0x10, 0x80000000, "-2147483648");
    row(0x10, 0xffffffff, "-1");
    row(0x11, 0, "0x0");
    row(0x11, 255, "0xff");
    row(0x11, 0x7fabcdef, "0x7fabcdef");
    row(0x12, 0, "false");
    row(0x12, 1, "true");
    row(0x12, 2, "true");
    row(0x12, 0xffffffff, "true");
    row(0x12, 0x80000000, "true");
    row(0x1c, 0, "#00000000");
    row(0x1c, 0xff, "#000000ff");
    row(0x1c, 0x7f00abcd, "#7f00abcd");
    row(0x1d, 0, "#000000");
    row(0x1d, 0xff00ff00, "#00ff00");
    row(0x1d, 0x00abcdef, "#abcdef");
    row(0x1d, 0x80000001, "#000001");
    row(0x1e, 0, "#0000");
    row(0x1e, 0xff112233, "#f123");
    row(0x1e, 0x12345678, "#2468");
    row(0x1e, 0xfeabcdef, "#ebdf");
    row(0x1f, 0, "#000");
    row(0x1f, 0x00aabbcc, "#abc");
    row(0x1f, 0xff345678, "#468");
    row(0x07, 0, "?07/00000000");
    row(0x08, 5, "?08/00000005");
    row(0x0f, 0x7fabcdef, "?0f/7fabcdef");
    row(0x13, 1, "?13/00000001");
    row(0x1b, 1, "?1b/00000001");
    row(0x20, 1, "?20/00000001");
    row(0x7f, 1, "?7f/00000001");
    row(0x100, 1, "?100/00000001");
}

void TestStringPool::valueToString()
{
    QFETCH(int, type);
    QFETCH(quint32, data);
    const QStringList strings = {QStringLiteral("zero"), QStringLiteral("one"), QStringLiteral("two")};
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16})
        QTEST(loaded(PoolBuilder(encoding).strings(strings)).valueToString(type, int(data)), "text");
}

void TestStringPool::keepsDimensionsAndFractionsAsTheirData_data()
{
    QTest::addColumn<quint32>("data");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0u << QStringLiteral("0");
    QTest::newRow("12dp") << 0x00000c01u << QStringLiteral("3073");
    QTest::newRow("highest") << 0x7fffffffu << QStringLiteral("2147483647");
    QTest::newRow("lowest") << 0x80000000u << QStringLiteral("-2147483648");
    QTest::newRow("all bits") << 0xffffffffu << QStringLiteral("-1");
}

void TestStringPool::keepsDimensionsAndFractionsAsTheirData()
{
    QFETCH(quint32, data);
    QTEST(tablePool().valueToString(0x05, int(data)), "text");
    QTEST(tablePool().valueToString(0x06, int(data)), "text");
}

void TestStringPool::keepsTheTopBitAsEightDigitsMore_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<quint32>("data");
    QTest::addColumn<QString>("text");
    const auto row = [](int type, quint32 data, const char *text) {
        QTest::addRow("%d, %x", type, data) << type << data << QString::fromLatin1(text);
    };
    row(0x11, 0xffffffff, "0xffffffffffffffff");
    row(0x11, 0x80000000, "0xffffffff80000000");
    row(0x1c, 0xff000000, "#ffffffffff000000");
    row(0x1c, 0x80123456, "#ffffffff80123456");
    row(0x08, 0x80000005, "?08/ffffffff80000005");
    row(-1, 5, "?ffffffffffffffff/00000005");
    row(-0x80, 0xffffffff, "?ffffffffffffff80/ffffffffffffffff");
    row(std::numeric_limits<int>::min(), 0, "?ffffffff80000000/00000000");
}

void TestStringPool::keepsTheTopBitAsEightDigitsMore()
{
    QFETCH(int, type);
    QFETCH(quint32, data);
    QTEST(tablePool().valueToString(type, int(data)), "text");
}

void TestStringPool::theNullValueIsANullString()
{
    QVERIFY(tablePool().valueToString(0x00, 0).isNull());
    QVERIFY(loaded(PoolBuilder().strings(someStrings())).valueToString(0x00, 1).isNull());
}

void TestStringPool::stringValuesAreThePools()
{
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const StringPool pool = loaded(PoolBuilder(encoding).strings(someStrings()));
        for (int index = 0; index < someStrings().size(); ++index)
            QCOMPARE(pool.valueToString(0x03, index), someStrings().at(index));
    }
    QCOMPARE(tablePool().valueToString(0x03, 0), QStringLiteral("unknown string table#0"));
}

void TestStringPool::stringValuesOutOfRangeAreNoFault()
{
    Chunk chunk(PoolBuilder().string(QStringLiteral("one")).build());
    StringPool pool = tablePool();
    chunk.loadInto(pool);
    for (const int index : {1, 17, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        QVERIFY(pool.valueToString(0x03, index).startsWith(QStringLiteral("unknown string table#")));
        QCOMPARE(chunk.fault(), QString());
    }
}

void TestStringPool::theNameInAnUnknownStringIsTakenAsItStands()
{
    for (const char *name : {"", "org.x type", "100%1", "%2"}) {
        StringPool pool(QStringLiteral("another"));
        pool.setName(QString::fromLatin1(name));
        QCOMPARE(pool.valueToString(0x03, 5),
                 QStringLiteral("unknown string ") + QLatin1String(name) + QStringLiteral("#5"));
    }
}

void TestStringPool::hugeCountsAreAFault_data()
{
    QTest::addColumn<qint64>("count");
    for (const qint64 count :
         {Q_INT64_C(3), Q_INT64_C(20000000), Q_INT64_C(0x1fffffff), Q_INT64_C(0x20000000), Q_INT64_C(0x3fffffff),
          Q_INT64_C(0x40000000), Q_INT64_C(0x40000001), Q_INT64_C(0x7fffffff)})
        QTest::newRow(qPrintable(QString::number(count))) << count;
}

void TestStringPool::hugeCountsAreAFault()
{
    QFETCH(qint64, count);
    const QByteArray bytes = poked(PoolBuilder().string(QString()).build(), PoolBuilder::CountAt, count);
    QCOMPARE(faultOf(bytes), chunkError);

    // The same for a chunk that also claims to be large. The device ends first. When the step back from the offsets to
    // the data exceeds 32 bits, that skip is the last to fail.
    QCOMPARE(faultOf(poked(bytes, SizeAt, 0x7fffffff)), count <= 0x20000000 ? fileError : chunkError);
}

void TestStringPool::hugeDataSizesAreAFault()
{
    QFETCH(Encoding, encoding);
    const QByteArray bytes = PoolBuilder(encoding).string(QStringLiteral("ab")).build();
    StringPool pool = tablePool();
    Chunk bySizeOfChunk(poked(bytes, SizeAt, 0x20000000));
    bySizeOfChunk.loadInto(pool);
    QCOMPARE(bySizeOfChunk.fault(), fileError);
    QByteArray styled = poked(bytes, SizeAt, 0x7fffffff);
    poke32(styled, PoolBuilder::StylesStartAt, 0x20000000);
    Chunk byStylesStart(styled);
    byStylesStart.loadInto(pool);
    QCOMPARE(byStylesStart.fault(), fileError);
    QCOMPARE(pool.count(), 0);
}

void TestStringPool::aDataSizeBeyond32BitsIsOutOfBounds()
{
    QFETCH(Encoding, encoding);
    QByteArray bytes = PoolBuilder(encoding).build();
    poke32(bytes, PoolBuilder::StylesStartAt, 0x7fffffff);
    for (const int stringsStart : {-1, -3, -27}) {
        poke32(bytes, PoolBuilder::StringsStartAt, stringsStart);
        QCOMPARE(faultOf(bytes), chunkError);
    }
}

void TestStringPool::aStringsStartOutOfRangeIsOutOfBounds_data()
{
    QTest::addColumn<qint64>("stringsStart");
    QTest::newRow("lowest") << Q_INT64_C(0x80000000);
    QTest::newRow("nearly lowest") << Q_INT64_C(0x80000003);
    QTest::newRow("lowest that the skip reaches") << Q_INT64_C(0x80000020);
    QTest::newRow("highest") << Q_INT64_C(0x7fffffff);
    QTest::newRow("beyond the chunk") << qint64(OffsetsAt + 4 + 4 + 1);
}

void TestStringPool::aStringsStartOutOfRangeIsOutOfBounds()
{
    QFETCH(qint64, stringsStart);
    const QByteArray bytes = PoolBuilder().string(QString()).build();
    QCOMPARE(bytes.size(), OffsetsAt + 4 + 4);
    QCOMPARE(faultOf(poked(bytes, PoolBuilder::StringsStartAt, stringsStart)), chunkError);
}

QTEST_GUILESS_MAIN(TestStringPool)
#include "tst_stringpool.moc"
