// SPDX-License-Identifier: LGPL-2.1-or-later
#include "QmlFixture.h"
#include "rows/RowPatch.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>

using namespace SorrelQml;

namespace {

using Ids = QVector<qint64>;

/// Rows of a real index, because only an index makes items with ids.
struct PatchRows {
    PatchRows()
    {
        place.add(QStringLiteral("all.apk"), QStringLiteral("All"), 12);
        isFilled = place.fill() && shelf.open(place.index());
        rows = RowRequest().read(shelf);
    }

    /// The rows with the numbers @p numbers; those from @p renamed on have another label.
    ShelfRows pick(const QVector<int> &numbers, int renamed = 12) const
    {
        ShelfRows picked;
        for (const int number : numbers) {
            picked.append(rows.at(number));
            if (number >= renamed)
                picked.last().label = QStringLiteral("Other");
        }
        return picked;
    }

    fixture::QmlPlace place;
    SorrelKit::Shelf shelf;
    ShelfRows rows;
    bool isFilled = false;
};

ShelfRows applied(ShelfRows rows, const RowPatch &patch)
{
    for (const RowStep &step : patch.steps) {
        const int size = step.last - step.first + 1;
        switch (step.kind) {
        case RowStep::Kind::Remove:
            rows.remove(step.first, size);
            break;
        case RowStep::Kind::Move:
            rows.move(step.first, step.last);
            break;
        case RowStep::Kind::Insert:
            for (int i = 0; i < size; ++i)
                rows.insert(step.first + i, step.rows.at(i));
            break;
        case RowStep::Kind::Change:
            for (int i = 0; i < size; ++i)
                rows[step.first + i] = step.rows.at(i);
            break;
        }
    }
    return rows;
}

bool isSame(const ShelfRows &a, const ShelfRows &b)
{
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), [](const ShelfRow &left, const ShelfRow &right) {
        return left.id() == right.id() && left.looksLike(right);
    });
}

} // namespace

class TestRowPatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_rows.isFilled && m_rows.rows.size() == 12); }
    void nothingToDo();
    void neighboursShareAStep();
    void aRowThatMovesIsOneStep();
    void changedRows();
    void anyLists();

private:
    PatchRows m_rows;
};

void TestRowPatch::nothingToDo()
{
    const ShelfRows rows = m_rows.pick({3, 1, 2});
    QVERIFY(RowPatch::between(rows, rows).steps.isEmpty());
    QVERIFY(RowPatch::between({}, {}).steps.isEmpty());
}

void TestRowPatch::neighboursShareAStep()
{
    const RowPatch patch = RowPatch::between(m_rows.pick({0, 1, 2, 3, 4, 5}), m_rows.pick({0, 3, 8, 9, 10}));
    QCOMPARE(patch.steps.size(), 3);
    QVERIFY(patch.steps.at(0).kind == RowStep::Kind::Remove);
    QCOMPARE(patch.steps.at(0).first, 4);
    QCOMPARE(patch.steps.at(0).last, 5);
    QCOMPARE(patch.steps.at(1).first, 1);
    QCOMPARE(patch.steps.at(1).last, 2);
    QVERIFY(patch.steps.at(2).kind == RowStep::Kind::Insert);
    QCOMPARE(patch.steps.at(2).first, 2);
    QCOMPARE(patch.steps.at(2).last, 4);
}

void TestRowPatch::aRowThatMovesIsOneStep()
{
    for (const QVector<int> &order :
         {QVector<int>{1, 2, 3, 4, 0}, QVector<int>{4, 0, 1, 2, 3}, QVector<int>{0, 3, 1, 2, 4}}) {
        const RowPatch patch = RowPatch::between(m_rows.pick({0, 1, 2, 3, 4}), m_rows.pick(order));
        QCOMPARE(patch.steps.size(), 1);
        QVERIFY(patch.steps.at(0).kind == RowStep::Kind::Move);
        QVERIFY(isSame(applied(m_rows.pick({0, 1, 2, 3, 4}), patch), m_rows.pick(order)));
    }
}

void TestRowPatch::changedRows()
{
    const RowPatch patch = RowPatch::between(m_rows.pick({0, 1, 2, 3}), m_rows.pick({0, 1, 2, 3}, 2));
    QCOMPARE(patch.steps.size(), 1);
    QVERIFY(patch.steps.at(0).kind == RowStep::Kind::Change);
    QCOMPARE(patch.steps.at(0).first, 2);
    QCOMPARE(patch.steps.at(0).last, 3);
}

void TestRowPatch::anyLists()
{
    QRandomGenerator random(1);
    for (int round = 0; round < 2000; ++round) {
        QVector<int> numbers[2];
        for (QVector<int> &list : numbers) {
            for (int i = 0; i < 12; ++i) {
                if (random.bounded(3) != 0)
                    list.append(i);
            }
            std::shuffle(list.begin(), list.end(), random);
        }
        const ShelfRows from = m_rows.pick(numbers[0]);
        const ShelfRows to = m_rows.pick(numbers[1], random.bounded(13));
        QVERIFY(isSame(applied(from, RowPatch::between(from, to)), to));
    }
}

QTEST_GUILESS_MAIN(TestRowPatch)
#include "tst_rowpatch.moc"
