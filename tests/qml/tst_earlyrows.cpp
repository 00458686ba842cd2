// SPDX-License-Identifier: LGPL-2.1-or-later
#include "QmlFixture.h"
#include "rows/EarlyRows.h"
#include "rows/ShelfModel.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QThreadPool>
#include <QtTest>

using namespace SorrelQml;
using fixture::QmlPlace;
using SorrelKit::Shelf;

namespace {

constexpr int Patience = 60000;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QStringList labelsOf(const ShelfRows &rows)
{
    QStringList labels;
    for (const ShelfRow &row : rows)
        labels.append(row.label);
    return labels;
}

/// Starts to read, and waits for the end.
void readEarly()
{
    EarlyRows::start();
    QThreadPool::globalInstance()->waitForDone();
}

/// Makes the index of @p place that of this user.
void install(const QmlPlace &place)
{
    QDir().mkpath(QFileInfo(Shelf::defaultFileName()).absolutePath());
    QFile::remove(Shelf::defaultFileName());
    QVERIFY(QFile::copy(place.index(), Shelf::defaultFileName()));
}

} // namespace

class TestEarlyRows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { QThreadPool::globalInstance()->waitForDone(); }
    void withoutAStart();
    void rowsOfTheIndex();
    void otherRequests();
    void anIndexThatIsMissing();
    void anIndexThatIsDamaged();
    void aBusyPool();
    void rowsThatNobodyTakes();
    void aModelCorrectsThem();
};

void TestEarlyRows::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestEarlyRows::withoutAStart()
{
    QVERIFY(!EarlyRows::take(Shelf::defaultFileName(), RowRequest()));
}

void TestEarlyRows::rowsOfTheIndex()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    place.add(latin("atlas.apk"), latin("Atlas"));
    place.add(latin("service.apk"), latin("Service"), 0);
    QVERIFY(place.fill());
    install(place);
    readEarly();
    const auto all = EarlyRows::take(Shelf::defaultFileName(), RowRequest());
    QVERIFY(all.has_value());
    QCOMPARE(labelsOf(*all), (QStringList{latin("Atlas"), latin("Notes"), latin("Service")}));
    QVERIFY(!EarlyRows::take(Shelf::defaultFileName(), RowRequest()));

    RowRequest request;
    request.launchersOnly = true;
    readEarly();
    QCOMPARE(labelsOf(*EarlyRows::take(Shelf::defaultFileName(), request)),
             (QStringList{latin("Atlas"), latin("Notes")}));
    request.folders = {"/nowhere"};
    readEarly();
    QCOMPARE(labelsOf(*EarlyRows::take(Shelf::defaultFileName(), request)), QStringList());
}

void TestEarlyRows::otherRequests()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill());
    install(place);
    RowRequest search;
    search.search = latin("notes");
    RowRequest locale;
    locale.locale = latin("ja_JP");
    for (const RowRequest &request : {search, locale}) {
        readEarly();
        QVERIFY(!EarlyRows::take(Shelf::defaultFileName(), request));
    }
    readEarly();
    QVERIFY(!EarlyRows::take(place.index(), RowRequest()));
}

void TestEarlyRows::anIndexThatIsMissing()
{
    QFile::remove(Shelf::defaultFileName());
    readEarly();
    QVERIFY(!EarlyRows::take(Shelf::defaultFileName(), RowRequest()));
    QVERIFY(!QFile::exists(Shelf::defaultFileName()));
}

void TestEarlyRows::anIndexThatIsDamaged()
{
    QFile file(Shelf::defaultFileName());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    readEarly();
    QVERIFY(!EarlyRows::take(Shelf::defaultFileName(), RowRequest()));
    QFile::remove(Shelf::defaultFileName());
}

// Rows are not waited for behind the tasks of a program.
void TestEarlyRows::aBusyPool()
{
    QSemaphore end;
    QThreadPool *const pool = QThreadPool::globalInstance();
    const int count = pool->maxThreadCount();
    for (int i = 0; i < count; ++i)
        pool->start([&end] { end.acquire(); });
    EarlyRows::start();
    QVERIFY(!EarlyRows::take(Shelf::defaultFileName(), RowRequest()));
    end.release(count);
    pool->waitForDone();
}

void TestEarlyRows::rowsThatNobodyTakes()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill());
    install(place);
    readEarly();
    QTest::qWait(EarlyRows::MaxAgeMilliseconds + 500);
    QVERIFY(!EarlyRows::take(Shelf::defaultFileName(), RowRequest()));
}

// The index changes between the early reading and the opening, so no signal comes for that.
void TestEarlyRows::aModelCorrectsThem()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill());
    install(place);
    readEarly();
    place.add(latin("notes.apk"), latin("Diary"));
    {
        Shelf shelf;
        shelf.setWorkerProgram(latin(SORREL_DRAW));
        QVERIFY(shelf.open());
        QVERIFY(fixture::refreshed(shelf));
        QCOMPARE(fixture::labelsOf(shelf), QStringList{latin("Diary")});
    }
    ShelfModel model;
    model.componentComplete();
    QCOMPARE(model.get(0).value(latin("label")).toString(), latin("Notes"));
    QTRY_COMPARE_WITH_TIMEOUT(model.get(0).value(latin("label")).toString(), latin("Diary"), Patience);
}

QTEST_GUILESS_MAIN(TestEarlyRows)
#include "tst_earlyrows.moc"
