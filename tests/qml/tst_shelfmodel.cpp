// SPDX-License-Identifier: LGPL-2.1-or-later
#include "QmlFixture.h"
#include "rows/ShelfModel.h"
#include "rows/ShortText.h"

#include <QAbstractItemModelTester>
#include <QCollator>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace SorrelQml;
using fixture::QmlPlace;

namespace {

constexpr int Patience = 60000;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QStringList texts(const ShelfModel &model, int role = ShelfModel::LabelRole)
{
    QStringList all;
    for (int i = 0; i < model.count(); ++i)
        all.append(model.data(model.index(i), role).toString());
    return all;
}

/// A model of a place, with a tester that fails for wrong signals.
struct Watched {
    explicit Watched(const QmlPlace &place) : tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
        model.setFileName(place.index());
        model.setFolders({place.packages()});
        model.setLocale(QStringLiteral("en"));
    }

    void complete()
    {
        model.classBegin();
        model.componentComplete();
    }

    ShelfModel model;
    QAbstractItemModelTester tester;
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
    QSignalSpy inserts{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removals{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy moves{&model, &QAbstractItemModel::rowsMoved};
};

} // namespace

class TestShelfModel : public QObject
{
    Q_OBJECT

private slots:
    void anIndexThatIsMissing();
    void aWarmIndexFillsAtOnce();
    void ordersAsACollator();
    void changesAreSingleSteps();
    void searches();
    void aBrokenPackageHasARow();
    void onlyPackagesOfItsFolders();
    void onlyLaunchers();
    void iconsOfAKind();
    void longLabelsAreCut();
    void anIndexThatCannotBeOpened();
    void aReadOnlyHome();
    void endsAtAnyTime();
};

void TestShelfModel::anIndexThatIsMissing()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    place.add(latin("atlas.apk"), latin("Atlas"));
    Watched watched(place);
    watched.complete();
    QCOMPARE(watched.model.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(texts(watched.model), (QStringList{latin("Atlas"), latin("Notes")}), Patience);
    QTRY_VERIFY_WITH_TIMEOUT(!watched.model.isRefreshing(), Patience);
    QCOMPARE(watched.resets.size(), 1);
    QCOMPARE(watched.model.errorString(), QString());
    QCOMPARE(watched.model.progress(), 1.0);
}

void TestShelfModel::aWarmIndexFillsAtOnce()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill());
    Watched watched(place);
    watched.complete();
    QCOMPARE(watched.model.count(), 1);
    const QVariantMap row = watched.model.get(0);
    QCOMPARE(row.value(latin("label")).toString(), latin("Notes"));
    QCOMPARE(row.value(latin("packageName")).toString(), latin("org.example.notes"));
    QCOMPARE(row.value(latin("entryName")).toString(), latin("org.example.notes.Activity0"));
    QCOMPARE(row.value(latin("path")).toString(), place.path(latin("notes.apk")));
    QCOMPARE(row.value(latin("status")).toInt(), int(ShelfModel::Ready));
    QCOMPARE(row.value(latin("itemId")).toLongLong(), qint64(1));
    QCOMPARE(row.value(latin("errorString")).toString(), QString());
    QCOMPARE(row.size(), watched.model.roleNames().size());
    QVERIFY(watched.model.get(1).isEmpty());
    QVERIFY(watched.model.get(-1).isEmpty());
    QVERIFY(!watched.model.data(QModelIndex(), ShelfModel::LabelRole).isValid());
}

void TestShelfModel::ordersAsACollator()
{
    QmlPlace place;
    QStringList labels = {latin("zebra"),          latin("Anna"),   QString::fromUtf8("Ärger"),
                          QString::fromUtf8("Öl"), latin("anna 2"), latin("Oslo")};
    for (int i = 0; i < labels.size(); ++i)
        place.add(latin("p%1.apk").arg(i), labels.at(i));
    QVERIFY(place.fill());
    Watched watched(place);
    watched.complete();
    for (const char *locale : {"de", "sv"}) {
        QCollator collator{QLocale(latin(locale))};
        std::sort(labels.begin(), labels.end(), collator);
        watched.model.setLocale(latin(locale));
        QVERIFY(watched.model.isSearching());
        QTRY_VERIFY_WITH_TIMEOUT(!watched.model.isSearching(), Patience);
        QCOMPARE(texts(watched.model), labels);
    }
    QCOMPARE(watched.resets.size(), 1);
}

void TestShelfModel::changesAreSingleSteps()
{
    QmlPlace place;
    for (const char *name : {"a", "b", "c", "d"})
        place.add(latin(name) + latin(".apk"), latin(name).toUpper());
    QVERIFY(place.fill());
    Watched watched(place);
    watched.complete();
    QTRY_VERIFY_WITH_TIMEOUT(!watched.model.isRefreshing(), Patience);
    const auto refresh = [&](const QStringList &expected) {
        watched.model.refresh();
        QTRY_COMPARE_WITH_TIMEOUT(texts(watched.model), expected, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(!watched.model.isRefreshing() && !watched.model.isSearching(), Patience);
    };
    place.remove(latin("b.apk"));
    refresh({latin("A"), latin("C"), latin("D")});
    QCOMPARE(watched.removals.size(), 1);
    place.add(latin("e.apk"), latin("BB"));
    refresh({latin("A"), latin("BB"), latin("C"), latin("D")});
    QVERIFY(!watched.inserts.isEmpty());
    const QVariant id = watched.model.get(0).value(latin("itemId"));
    place.add(latin("a.apk"), latin("Zoo"));
    refresh({latin("BB"), latin("C"), latin("D"), latin("Zoo")});
    QCOMPARE(watched.model.get(3).value(latin("itemId")), id);
    QCOMPARE(watched.moves.size(), 1);
    QCOMPARE(watched.resets.size(), 1);
}

void TestShelfModel::searches()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    place.add(latin("atlas.apk"), latin("Atlas"));
    place.add(latin("clock.apk"), latin("Clock"));
    QVERIFY(place.fill());
    Watched watched(place);
    watched.complete();
    for (const char *typed : {"a", "at", "atl"})
        watched.model.setSearch(latin(typed));
    QTRY_COMPARE_WITH_TIMEOUT(texts(watched.model), QStringList{latin("Atlas")}, Patience);
    watched.model.setSearch(latin("nothing of that"));
    QTRY_COMPARE_WITH_TIMEOUT(watched.model.count(), 0, Patience);
    watched.model.setSearch(QString());
    QTRY_COMPARE_WITH_TIMEOUT(watched.model.count(), 3, Patience);
    QCOMPARE(watched.resets.size(), 1);
}

void TestShelfModel::aBrokenPackageHasARow()
{
    QmlPlace place;
    place.addBroken(latin("broken.apk"));
    QVERIFY(place.fill());
    Watched watched(place);
    watched.complete();
    const QVariantMap row = watched.model.get(0);
    QCOMPARE(row.value(latin("label")).toString(), latin("broken.apk"));
    QCOMPARE(row.value(latin("status")).toInt(), int(ShelfModel::Broken));
    QVERIFY(row.value(latin("errorString")).toString().contains(latin("could not open APK file")));
}

void TestShelfModel::onlyPackagesOfItsFolders()
{
    QmlPlace place;
    QmlPlace other;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill());
    other.add(latin("atlas.apk"), latin("Atlas"));
    Watched watched(place);
    watched.model.setFolders({latin("file://") + other.packages()});
    watched.complete();
    QTRY_COMPARE_WITH_TIMEOUT(texts(watched.model), QStringList{latin("Atlas")}, Patience);
    QTRY_VERIFY_WITH_TIMEOUT(!watched.model.isRefreshing(), Patience);
    // The rows of the other folder are still in the index.
    watched.model.setFolders({});
    QTRY_COMPARE_WITH_TIMEOUT(texts(watched.model), (QStringList{latin("Atlas"), latin("Notes")}), Patience);
}

void TestShelfModel::onlyLaunchers()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    place.add(latin("service.apk"), latin("Service"), 0);
    place.addBroken(latin("broken.apk"));
    QVERIFY(place.fill());
    Watched watched(place);
    watched.complete();
    QCOMPARE(watched.model.count(), 3);
    watched.model.setLaunchersOnly(true);
    QTRY_COMPARE_WITH_TIMEOUT(texts(watched.model), (QStringList{latin("broken.apk"), latin("Notes")}), Patience);
}

void TestShelfModel::iconsOfAKind()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill());
    Watched watched(place);
    watched.complete();
    QSignalSpy changes(&watched.model, &QAbstractItemModel::dataChanged);
    watched.model.setIconSize(48);
    watched.model.setDevicePixelRatio(2);
    watched.model.setIconShape(ShelfModel::Circle);
    watched.model.setNight(true);
    watched.model.setMonochrome(true);
    QCOMPARE(changes.size(), 5);
    const QString url = texts(watched.model, ShelfModel::IconRole).constFirst();
    QVERIFY2(url.contains(latin("/1?size=48&ratio=2&shape=circle&night=1&monochrome=1&v=")), qPrintable(url));
    QVERIFY(url.startsWith(latin("image://sorrel/shelf/")));
    watched.model.setIconSize(0);
    QCOMPARE(watched.model.iconSize(), 1);
    watched.model.setDevicePixelRatio(-1);
    QCOMPARE(watched.model.devicePixelRatio(), 2.0);
}

void TestShelfModel::longLabelsAreCut()
{
    QmlPlace place;
    place.add(latin("long.apk"), QString(MaxTextLength - 1, QLatin1Char('x')) + QString::fromUtf8("\U0001f600"));
    QVERIFY(place.fill());
    Watched watched(place);
    watched.complete();
    QCOMPARE(texts(watched.model), QStringList{QString(MaxTextLength - 1, QLatin1Char('x'))});
}

void TestShelfModel::anIndexThatCannotBeOpened()
{
    QmlPlace place;
    Watched watched(place);
    watched.model.setFileName(place.packages());
    watched.complete();
    QCOMPARE(watched.model.count(), 0);
    QVERIFY(!watched.model.errorString().isEmpty());
    watched.model.setSearch(latin("word"));
    watched.model.refresh();
    QVERIFY(!watched.model.isSearching());
}

// In a child process without privileges: root may write everywhere. Its exit status is the number of the check that fails.
void TestShelfModel::aReadOnlyHome()
{
    QmlPlace place;
    place.add(latin("notes.apk"), latin("Notes"));
    QVERIFY(place.fill());
    const QByteArray index = QFile::encodeName(place.index());
    const QByteArray folder = QFile::encodeName(QFileInfo(place.index()).absolutePath());
    QCOMPARE(::chmod(index.constData(), 0444), 0);
    QCOMPARE(::chmod(folder.constData(), 0555), 0);
    const pid_t process = ::fork();
    if (process == 0) {
        if (::geteuid() == 0 && (::setresgid(65534, 65534, 65534) != 0 || ::setresuid(65534, 65534, 65534) != 0))
            ::_exit(1);
        ShelfModel model;
        model.setFileName(place.index());
        model.setFolders({place.packages()});
        model.componentComplete();
        if (texts(model).size() != 1 || model.get(0).value(latin("status")).toInt() != int(ShelfModel::Ready))
            ::_exit(2);
        if (!model.errorString().endsWith(latin("index.db cannot be written")))
            ::_exit(3);
        model.refresh();
        if (!QTest::qWaitFor([&] { return !model.isRefreshing(); }, Patience) || model.count() != 1)
            ::_exit(4);
        if (model.errorString().isEmpty())
            ::_exit(5);
        model.setSearch(latin("notes"));
        if (!QTest::qWaitFor([&] { return !model.isSearching(); }, Patience) || model.count() != 1)
            ::_exit(6);
        model.setFileName(place.index() + latin("/none/shelf.db"));
        if (model.count() != 0 || !model.errorString().endsWith(latin("cannot be made: the folder cannot be written")))
            ::_exit(7);
        ::_exit(0);
    }
    int status = -1;
    QCOMPARE(::waitpid(process, &status, 0), process);
    QCOMPARE(::chmod(folder.constData(), 0755), 0);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
}

void TestShelfModel::endsAtAnyTime()
{
    QmlPlace place;
    for (int i = 0; i < 8; ++i)
        place.add(latin("p%1.apk").arg(i), latin("Label %1").arg(i), 20);
    for (int i = 0; i < 20; ++i) {
        Watched watched(place);
        watched.complete();
        watched.model.setSearch(latin("lab"));
        QCoreApplication::processEvents();
        QTest::qWait(i);
    }
}

QTEST_GUILESS_MAIN(TestShelfModel)
#include "tst_shelfmodel.moc"
