// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/EntryOffsets.h"

#include "Devices.h"
#include "stream/Extractor.h"

#include <QMap>
#include <QtEndian>
#include <QtTest>

#include <limits>
#include <random>

namespace {

constexpr qint32 NoEntry = -1;

/// The expected answers for an offset array: the entry of every offset in it.
QMap<qint64, int> model(const QVector<qint32> &offsets)
{
    QMap<qint64, int> entries;
    for (int entry = 0; entry < offsets.size(); ++entry) {
        if (offsets.at(entry) != NoEntry)
            entries.insert(offsets.at(entry), entry);
    }
    return entries;
}

/// The offsets as a type chunk reads them.
EntryOffsets entryOffsets(const QVector<qint32> &offsets)
{
    QByteArray bytes(offsets.size() * 4, '\0');
    if (!offsets.isEmpty())
        qToLittleEndian<qint32>(offsets.constData(), offsets.size(), bytes.data());
    fixture::SequentialDevice device(bytes, QIODevice::ReadOnly);
    Extractor reader(&device);
    reader.pushBoundary(int(bytes.size()));
    return EntryOffsets(&reader, int(offsets.size()));
}

/// The answers for these offsets, asked one after another.
QVector<int> answers(const QVector<qint32> &offsets, const QVector<qint64> &questions)
{
    EntryOffsets entries = entryOffsets(offsets);
    QVector<int> answers;
    for (const qint64 question : questions)
        answers.append(entries.entryAt(question));
    return answers;
}

} // namespace

class TestEntryOffsets : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyArrayHasNoEntry();
    void ascendingOffsetsAreFound();
    void offsetsMayBeInAnyOrder();
    void offsetsMayStartAboveZero();
    void gapsBetweenOffsetsAreNotFound();
    void entriesWithoutAnOffsetAreNotFound();
    void theOffsetOfNoEntryIsNeverFound();
    void theLastOfEqualOffsetsWins_data();
    void theLastOfEqualOffsetsWins();
    void questionsMayBeRepeated();
    void questionsMayGoBackwards();
    void questionsMayGoOnAfterOneThatWasNotFound();
    void offsetsAreSigned();
    void questionsAreNotCutToTheirLowBits();
    void copiesAreAskedIndependently();
    void randomArraysAnswerAsAMap_data();
    void randomArraysAnswerAsAMap();
};

void TestEntryOffsets::anEmptyArrayHasNoEntry()
{
    QCOMPARE(answers({}, {0, 1, -1, 0}), QVector<int>({-1, -1, -1, -1}));
}

void TestEntryOffsets::ascendingOffsetsAreFound()
{
    QCOMPARE(answers({0, 16, 32}, {0, 16, 32, 48}), QVector<int>({0, 1, 2, -1}));
}

void TestEntryOffsets::offsetsMayBeInAnyOrder()
{
    QCOMPARE(answers({32, 0, 48, 16}, {0, 16, 32, 48}), QVector<int>({1, 3, 0, 2}));
    QCOMPARE(answers({48, 32, 16, 0}, {0, 16, 32, 48}), QVector<int>({3, 2, 1, 0}));
}

void TestEntryOffsets::offsetsMayStartAboveZero()
{
    QCOMPARE(answers({8, 24}, {0, 8, 24}), QVector<int>({-1, 0, 1}));
}

void TestEntryOffsets::gapsBetweenOffsetsAreNotFound()
{
    QCOMPARE(answers({0, 16, 64}, {1, 15, 17, 32, 63, 65}), QVector<int>(6, -1));
}

void TestEntryOffsets::entriesWithoutAnOffsetAreNotFound()
{
    QCOMPARE(answers({NoEntry, 0, NoEntry, NoEntry, 16, NoEntry}, {0, 16}), QVector<int>({1, 4}));
}

void TestEntryOffsets::theOffsetOfNoEntryIsNeverFound()
{
    for (const QVector<qint32> &offsets :
         {QVector<qint32>{NoEntry}, QVector<qint32>{0, NoEntry, 16}, QVector<qint32>{16, NoEntry, 0, NoEntry}})
        QCOMPARE(answers(offsets, {-1, 0xffffffff, -1}), QVector<int>({-1, -1, -1}));
}

void TestEntryOffsets::theLastOfEqualOffsetsWins_data()
{
    QTest::addColumn<QVector<qint32>>("offsets");
    QTest::addColumn<int>("entryAtZero");
    QTest::addColumn<int>("entryAtSixteen");
    QTest::newRow("ascending") << QVector<qint32>{0, 0, 16, 16, 16} << 1 << 4;
    QTest::newRow("in disorder") << QVector<qint32>{16, 0, 16, 0} << 3 << 2;
    QTest::newRow("apart") << QVector<qint32>{0, 16, NoEntry, 32, 0} << 4 << 1;
    QTest::newRow("all") << QVector<qint32>(40, 0) << 39 << -1;
}

void TestEntryOffsets::theLastOfEqualOffsetsWins()
{
    QFETCH(QVector<qint32>, offsets);
    QFETCH(int, entryAtZero);
    QFETCH(int, entryAtSixteen);
    QCOMPARE(answers(offsets, {0, 16, 0, 16}),
             QVector<int>({entryAtZero, entryAtSixteen, entryAtZero, entryAtSixteen}));
    QCOMPARE(answers(offsets, {16, 0}), QVector<int>({entryAtSixteen, entryAtZero}));
}

void TestEntryOffsets::questionsMayBeRepeated()
{
    QCOMPARE(answers({0, 16, 16, 32}, {16, 16, 16, 32, 32, 0, 0}), QVector<int>({2, 2, 2, 3, 3, 0, 0}));
}

void TestEntryOffsets::questionsMayGoBackwards()
{
    QCOMPARE(answers({0, 16, 32}, {32, 16, 0, 32}), QVector<int>({2, 1, 0, 2}));
}

void TestEntryOffsets::questionsMayGoOnAfterOneThatWasNotFound()
{
    QCOMPARE(answers({0, 16, 32}, {0, 8, 16, 24, 8, 0, 99, 32, 16}), QVector<int>({0, -1, 1, -1, -1, 0, -1, 2, 1}));
}

void TestEntryOffsets::offsetsAreSigned()
{
    constexpr qint32 lowest = std::numeric_limits<qint32>::min();
    constexpr qint32 highest = std::numeric_limits<qint32>::max();
    QCOMPARE(answers({0, -5, lowest, highest}, {lowest, -5, 0, highest}), QVector<int>({2, 1, 0, 3}));
    QCOMPARE(answers({-5, lowest}, {0xfffffffb, 0x80000000}), QVector<int>({-1, -1}));
}

void TestEntryOffsets::questionsAreNotCutToTheirLowBits()
{
    constexpr qint64 beyond = Q_INT64_C(1) << 32;
    QCOMPARE(answers({0, 16}, {beyond, beyond + 16, -beyond, 16}), QVector<int>({-1, -1, -1, 1}));
}

void TestEntryOffsets::copiesAreAskedIndependently()
{
    EntryOffsets entries = entryOffsets({0, 16, 32});
    QCOMPARE(entries.entryAt(0), 0);
    EntryOffsets copy(entries);
    QCOMPARE(copy.entryAt(16), 1);
    QCOMPARE(copy.entryAt(32), 2);
    QCOMPARE(entries.entryAt(16), 1);
}

void TestEntryOffsets::randomArraysAnswerAsAMap_data()
{
    QTest::addColumn<bool>("sorted");
    QTest::addColumn<int>("highest");
    QTest::newRow("ascending, sparse") << true << 100000;
    QTest::newRow("ascending, with equal offsets") << true << 40;
    QTest::newRow("in disorder, sparse") << false << 100000;
    QTest::newRow("in disorder, with equal offsets") << false << 40;
}

void TestEntryOffsets::randomArraysAnswerAsAMap()
{
    QFETCH(bool, sorted);
    QFETCH(int, highest);
    std::mt19937 random(20);
    const auto below = [&random](int limit) { return int(random() % unsigned(limit)); };
    for (int round = 0; round < 200; ++round) {
        QVector<qint32> offsets(below(120));
        for (qint32 &offset : offsets)
            offset = below(highest);
        if (sorted)
            std::sort(offsets.begin(), offsets.end());
        for (qint32 &offset : offsets) {
            if (below(4) == 0)
                offset = NoEntry;
        }

        // All existing offsets in ascending order, then existing and missing offsets in any order.
        const QMap<qint64, int> expected = model(offsets);
        EntryOffsets entries = entryOffsets(offsets);
        for (auto it = expected.cbegin(); it != expected.cend(); ++it)
            QCOMPARE(entries.entryAt(it.key()), it.value());
        for (int question = 0; question < 200; ++question) {
            const bool known = !offsets.isEmpty() && below(2) == 0;
            const qint64 offset = known ? offsets.at(below(int(offsets.size()))) : below(highest + 2) - 1;
            QCOMPARE(entries.entryAt(offset), expected.value(offset, -1));
        }
    }
}

QTEST_GUILESS_MAIN(TestEntryOffsets)
#include "tst_entryoffsets.moc"
