// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"
#include "ShelfFixture.h"

#include <SorrelKit/Shelf.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

using namespace SorrelKit;
using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

/// A folder of packages, and an index of it.
struct Place {
    Place()
    {
        QDir(directory.path()).mkpath(latin("packages"));
        shelf.setJobs(2);
        shelf.setWorkerProgram(latin(SORREL_DRAW));
    }

    QString packages() const { return directory.filePath(latin("packages")); }
    QString path(const char *name) const { return packages() + QLatin1Char('/') + latin(name); }
    QString index() const { return directory.filePath(latin("index/shelf.db")); }
    void add(const char *name, const ShelfPackage &package) const { writeFile(path(name), package.build()); }
    bool open() { return shelf.open(index()) && shelf.setFolders({packages()}); }

    QTemporaryDir directory;
    Shelf shelf;
};

ShelfPackage named(const char *name, const char *label)
{
    ShelfPackage package;
    package.name = latin(name);
    package.labels = {{QString(), latin(label)}};
    return package;
}

/// The ids that a signal had.
QList<qint64> idsOf(const QSignalSpy &spy)
{
    QList<qint64> ids;
    for (const QList<QVariant> &arguments : spy)
        ids += arguments.constFirst().value<QList<qint64>>();
    return ids;
}

} // namespace

class TestShelf : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void anEmptyShelf();
    void factsOfAPackage();
    void labelsInAllLanguages();
    void anItemForEachLauncher();
    void aPackageWithoutLauncher();
    void aBrokenPackageHasARow();
    void aWorkerThatDies();
    void iconsOfTheAskedSizes();
    void iconsOnDemand();
    void iconsThatAreNotDrawn();
    void nothingIsReadAgain();
    void changedMovedAndRemovedPackages();
    void aPackageThatIsReplacedWhileItIsRead();
    void itemsKeepTheirIds();
    void itemsStayOverProcesses();
    void foldersThatAreTakenAway();
    void aFolderThatVanishes();
    void aVanishedFolderBelow();
    void findsWords_data();
    void findsWords();
    void aNameThatIsNoText();
    void aMissingWorker();
    void watchesFolders();
    void closingWhileItReads();
};

void TestShelf::initTestCase()
{
    qRegisterMetaType<QList<qint64>>("QList<qint64>");
}

void TestShelf::anEmptyShelf()
{
    Place place;
    QCOMPARE(place.shelf.items().size(), 0);
    QVERIFY(!place.shelf.isOpen());
    QVERIFY(place.open());
    QVERIFY2(!place.shelf.error(), qPrintable(place.shelf.error().text()));
    QCOMPARE(place.shelf.fileName(), place.index());
    QCOMPARE(place.shelf.folders(), QStringList{place.packages()});
    QVERIFY(refreshed(place.shelf));
    QVERIFY(!place.shelf.error());
    QCOMPARE(place.shelf.items().size(), 0);
    QCOMPARE(place.shelf.item(1).id(), qint64(0));
}

void TestShelf::factsOfAPackage()
{
    Place place;
    place.add("notes.apk", named("org.example.notes", "Notes"));
    QVERIFY(place.open() && refreshed(place.shelf));
    QVERIFY2(!place.shelf.error(), qPrintable(place.shelf.error().text()));
    QCOMPARE(place.shelf.items().size(), 1);
    const ShelfItem item = place.shelf.items().constFirst();
    QCOMPARE(item.state(), ShelfItem::State::Ready);
    QCOMPARE(item.path(), place.path("notes.apk"));
    QCOMPARE(item.nativePath(), QFile::encodeName(item.path()));
    QCOMPARE(item.packageName(), latin("org.example.notes"));
    QCOMPARE(item.entryName(), latin("org.example.notes.Activity0"));
    QCOMPARE(item.label(), latin("Notes"));
    QCOMPARE(item.permissions(), QStringList{latin("android.permission.CAMERA")});
    QCOMPARE(item.minSdkVersion(), 1);
    QCOMPARE(item.targetSdkVersion(), 1);
    QCOMPARE(item.errorCode(), 0);
    QCOMPARE(item.errorText(), QString());
    QCOMPARE(item.fileSize(), QFileInfo(item.path()).size());
    QCOMPARE(item.modified(), QFileInfo(item.path()).lastModified());
    QCOMPARE(place.shelf.item(item.id()).path(), item.path());
}

void TestShelf::labelsInAllLanguages()
{
    Place place;
    ShelfPackage package;
    package.labels = {{QString(), latin("Notes")}, {latin("de"), latin("Notizen")}, {latin("fr"), latin("Carnet")}};
    place.add("notes.apk", package);
    QVERIFY(place.open() && refreshed(place.shelf));
    const ShelfItem item = place.shelf.items().value(0);
    QCOMPARE(item.labels(), package.labels);
    QCOMPARE(item.label(QLocale(latin("de_AT"))), latin("Notizen"));
    QCOMPARE(item.label(QLocale(latin("fr_FR"))), latin("Carnet"));
    QCOMPARE(item.label(QLocale(latin("ja_JP"))), latin("Notes"));
    writeFile(place.path("broken.apk"), "no package");
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(ShelfItem::labelsOf(place.shelf.items(), QLocale(latin("de_AT"))),
             QStringList({latin("broken.apk"), latin("Notizen")}));
    QCOMPARE(ShelfItem::labelsOf({}), QStringList());
}

void TestShelf::anItemForEachLauncher()
{
    Place place;
    ShelfPackage package;
    package.launchers = 3;
    place.add("notes.apk", package);
    QVERIFY(place.open() && refreshed(place.shelf));
    QStringList entries;
    for (const ShelfItem &item : place.shelf.items())
        entries.append(item.entryName());
    QCOMPARE(entries, QStringList({latin("org.example.notes.Activity0"), latin("org.example.notes.Activity1"),
                                   latin("org.example.notes.Activity2")}));
}

void TestShelf::aPackageWithoutLauncher()
{
    Place place;
    ShelfPackage package;
    package.launchers = 0;
    place.add("library.apk", package);
    place.shelf.setIcons({ShelfIcon(32)});
    QVERIFY(place.open() && refreshed(place.shelf));
    QCOMPARE(place.shelf.items().size(), 1);
    const ShelfItem item = place.shelf.items().value(0);
    QCOMPARE(item.entryName(), QString());
    QCOMPARE(item.label(), latin("Notes"));
    QVERIFY(!place.shelf.icon(item.id(), ShelfIcon(32)).isEmpty());
}

void TestShelf::aBrokenPackageHasARow()
{
    Place place;
    writeFile(place.path("broken.apk"), "no archive");
    place.add("notes.apk", {});
    QVERIFY(place.open() && refreshed(place.shelf));
    QVERIFY(!place.shelf.error());
    QCOMPARE(place.shelf.items().size(), 2);
    const ShelfItem item = place.shelf.items().value(0);
    QCOMPARE(item.state(), ShelfItem::State::Broken);
    QCOMPARE(item.errorCode(), 1);
    QCOMPARE(item.errorText(), latin("could not open APK file"));
    QCOMPARE(item.label(), latin("broken.apk"));
    QCOMPARE(place.shelf.items().value(1).state(), ShelfItem::State::Ready);
}

// A worker that dies costs its row, and is not asked again.
void TestShelf::aWorkerThatDies()
{
    Place place;
    place.add("bad.apk", {});
    const QString program = writeFile(place.directory.filePath(latin("worker")), "#!/bin/sh\nkill -SEGV $$\n");
    ::chmod(QFile::encodeName(program).constData(), 0700);
    place.shelf.setWorkerProgram(program);
    QVERIFY(place.open() && refreshed(place.shelf));
    const ShelfItem item = place.shelf.items().value(0);
    QCOMPARE(item.state(), ShelfItem::State::Broken);
    QCOMPARE(item.errorCode(), 103);
    QCOMPARE(item.errorText(), latin("the process that read it died"));
    place.shelf.setWorkerProgram(latin(SORREL_DRAW));
    QSignalSpy changed(&place.shelf, &Shelf::itemsChanged);
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(changed.size(), 0);
}

void TestShelf::iconsOfTheAskedSizes()
{
    Place place;
    place.add("notes.apk", {});
    ShelfIcon round(24);
    round.setShape(ShelfIcon::Shape::Circle);
    place.shelf.setIcons({ShelfIcon(32), round, ShelfIcon(0), ShelfIcon(1025)});
    QCOMPARE(place.shelf.icons(), QList<ShelfIcon>({ShelfIcon(32), round}));
    QVERIFY(place.open() && refreshed(place.shelf));
    const qint64 id = place.shelf.items().value(0).id();
    ShelfIcon::State state = ShelfIcon::State::Missing;
    const QImage icon = QImage::fromData(place.shelf.icon(id, ShelfIcon(32), &state));
    QCOMPARE(state, ShelfIcon::State::Ready);
    QCOMPARE(icon.size(), QSize(32, 32));
    QCOMPARE(icon.pixel(16, 16), 0xff336699u);
    QCOMPARE(QImage::fromData(place.shelf.icon(id, round)).size(), QSize(24, 24));
    QCOMPARE(place.shelf.icon(id, ShelfIcon(33), &state), QByteArray());
    QCOMPARE(state, ShelfIcon::State::NotStored);
    QCOMPARE(place.shelf.itemsWithIcons(ShelfIcon(32)).value(0).icon(), place.shelf.icon(id, ShelfIcon(32)));
    QCOMPARE(place.shelf.items().value(0).icon(), QByteArray());

    // A size that is added later is drawn by the next refresh, and the others stay.
    place.shelf.setIcons({ShelfIcon(48)});
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(QImage::fromData(place.shelf.icon(id, ShelfIcon(48))).size(), QSize(48, 48));
    QCOMPARE(QImage::fromData(place.shelf.icon(id, ShelfIcon(32))).size(), QSize(32, 32));

    // Icons of an older file are gone with it.
    ShelfPackage red;
    red.color = 0xffcc0000;
    place.add("notes.apk", red);
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(QImage::fromData(place.shelf.icon(id, ShelfIcon(48))).pixel(24, 24), 0xffcc0000u);
    place.shelf.icon(id, ShelfIcon(32), &state);
    QCOMPARE(state, ShelfIcon::State::NotStored);
}

void TestShelf::iconsOnDemand()
{
    Place place;
    place.add("a.apk", {});
    writeFile(place.path("b.apk"), "no archive");
    QVERIFY(place.open() && refreshed(place.shelf));
    QSignalSpy added(&place.shelf, &Shelf::iconsAdded);
    QSignalSpy drawn(&place.shelf, &Shelf::iconsDrawn);
    const qint64 id = place.shelf.items().value(0).id();
    const qint64 broken = place.shelf.items().value(1).id();
    place.shelf.drawIcons({id, broken}, ShelfIcon(40));
    QVERIFY(added.wait(60000));
    QList<qint64> ids = idsOf(added);
    std::sort(ids.begin(), ids.end());
    QCOMPARE(ids, QList<qint64>({id, broken}));
    QCOMPARE(added.at(0).at(1).value<ShelfIcon>(), ShelfIcon(40));
    ShelfIcon::State state = ShelfIcon::State::NotStored;
    QCOMPARE(QImage::fromData(place.shelf.icon(id, ShelfIcon(40), &state)).width(), 40);
    QCOMPARE(state, ShelfIcon::State::Ready);
    place.shelf.icon(broken, ShelfIcon(40), &state);
    QCOMPARE(state, ShelfIcon::State::Missing);
    QTRY_COMPARE_WITH_TIMEOUT(drawn.size(), 1, 60000);
    QCOMPARE(idsOf(drawn), QList<qint64>({id, broken}));
    QCOMPARE(drawn.at(0).at(1).value<ShelfIcon>(), ShelfIcon(40));
}

// Each call has an end, also when there is nothing to draw.
void TestShelf::iconsThatAreNotDrawn()
{
    Place place;
    place.add("a.apk", {});
    QVERIFY(place.open() && refreshed(place.shelf));
    const qint64 id = place.shelf.items().value(0).id();
    QSignalSpy added(&place.shelf, &Shelf::iconsAdded);
    QSignalSpy drawn(&place.shelf, &Shelf::iconsDrawn);
    place.shelf.drawIcons({id}, ShelfIcon(0));
    place.shelf.drawIcons({}, ShelfIcon(40));
    place.shelf.drawIcons({id + 1}, ShelfIcon(40));
    QTRY_COMPARE_WITH_TIMEOUT(drawn.size(), 3, 60000);
    QCOMPARE(idsOf(drawn), QList<qint64>({id, id + 1}));
    QVERIFY(QFile::remove(place.path("a.apk")));
    place.shelf.drawIcons({id}, ShelfIcon(40));
    QTRY_COMPARE_WITH_TIMEOUT(drawn.size(), 4, 60000);
    QCOMPARE(added.size(), 0);
    place.shelf.close();
    place.shelf.drawIcons({id}, ShelfIcon(40));
    QTest::qWait(50);
    QCOMPARE(drawn.size(), 4);
}

void TestShelf::nothingIsReadAgain()
{
    Place place;
    place.add("notes.apk", {});
    QVERIFY(place.open() && refreshed(place.shelf));
    // A worker that would be noticed.
    place.shelf.setWorkerProgram(latin("/bin/false"));
    QSignalSpy progress(&place.shelf, &Shelf::progress);
    QSignalSpy changed(&place.shelf, &Shelf::itemsChanged);
    QVERIFY(refreshed(place.shelf));
    QVERIFY(!place.shelf.error());
    QCOMPARE(progress.size(), 0);
    QCOMPARE(changed.size(), 0);
    QCOMPARE(labelsOf(place.shelf), QStringList{latin("Notes")});
}

void TestShelf::changedMovedAndRemovedPackages()
{
    Place place;
    place.add("a.apk", named("org.example.a", "A"));
    place.add("b.apk", named("org.example.b", "B"));
    place.add("c.apk", named("org.example.c", "C"));
    QVERIFY(place.open() && refreshed(place.shelf));
    const QList<ShelfItem> before = place.shelf.items();
    QCOMPARE(labelsOf(place.shelf), QStringList({latin("A"), latin("B"), latin("C")}));

    QVERIFY(QFile::remove(place.path("a.apk")));
    QVERIFY(QFile::rename(place.path("b.apk"), place.path("moved.apk")));
    place.add("c.apk", named("org.example.c", "C2"));
    place.add("d.apk", named("org.example.d", "D"));
    QSignalSpy added(&place.shelf, &Shelf::itemsAdded);
    QSignalSpy changed(&place.shelf, &Shelf::itemsChanged);
    QSignalSpy removed(&place.shelf, &Shelf::itemsRemoved);
    QSignalSpy progress(&place.shelf, &Shelf::progress);
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(labelsOf(place.shelf), QStringList({latin("C2"), latin("D"), latin("B")}));
    QCOMPARE(idsOf(removed), QList<qint64>{before.at(0).id()});
    QCOMPARE(place.shelf.item(before.at(1).id()).path(), place.path("moved.apk"));
    QVERIFY(idsOf(changed).contains(before.at(1).id()));
    QVERIFY(idsOf(changed).contains(before.at(2).id()));
    QCOMPARE(idsOf(added), QList<qint64>{place.shelf.items().value(1).id()});
    // The moved package was not read.
    QCOMPARE(progress.constLast().at(1).toInt(), 2);
}

// The worker replaces the first package by another one while it reads it.
void TestShelf::aPackageThatIsReplacedWhileItIsRead()
{
    Place place;
    place.add("notes.apk", named("org.example.old", "Old"));
    const QString next = writeFile(place.directory.filePath(latin("next")), named("org.example.next", "New").build());
    const QByteArray script = "#!/bin/bash\n[ -f '" + QFile::encodeName(next) + "' ] && mv '" + QFile::encodeName(next)
                              + "' '" + QFile::encodeName(place.path("notes.apk"))
                              + "' && { read -r -d '' path; "
                                "printf '0 {\"package\":\"org.example.stale\"}\\n'; }\nexec " SORREL_DRAW " \"$@\"\n";
    const QString program = writeFile(place.directory.filePath(latin("worker")), script);
    ::chmod(QFile::encodeName(program).constData(), 0700);
    place.shelf.setJobs(1);
    place.shelf.setWorkerProgram(program);
    QVERIFY(place.open() && refreshed(place.shelf));
    QCOMPARE(labelsOf(place.shelf), QStringList{latin("New")});
    QCOMPARE(place.shelf.items().value(0).packageName(), latin("org.example.next"));
}

void TestShelf::itemsKeepTheirIds()
{
    Place place;
    ShelfPackage package;
    package.launchers = 0;
    place.add("notes.apk", package);
    QVERIFY(place.open() && refreshed(place.shelf));
    const qint64 id = place.shelf.items().value(0).id();
    package.launchers = 2;
    place.add("notes.apk", package);
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(place.shelf.items().size(), 2);
    QCOMPARE(place.shelf.items().value(0).id(), id);
    package.launchers = 1;
    place.add("notes.apk", package);
    QSignalSpy removed(&place.shelf, &Shelf::itemsRemoved);
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(place.shelf.items().size(), 1);
    QCOMPARE(place.shelf.items().value(0).id(), id);
    QCOMPARE(idsOf(removed).size(), 1);
}

void TestShelf::itemsStayOverProcesses()
{
    Place place;
    place.add("notes.apk", {});
    QVERIFY(place.open() && refreshed(place.shelf));
    const qint64 id = place.shelf.items().value(0).id();
    place.shelf.close();
    QCOMPARE(place.shelf.items().size(), 0);
    Shelf other;
    QVERIFY(other.open(place.index(), Shelf::Access::ReadOnly));
    QVERIFY(!other.error());
    QCOMPARE(other.items().value(0).id(), id);
    QVERIFY(!other.setFolders({}));
    QCOMPARE(other.error().code(), ShelfError::Code::ReadOnly);
}

void TestShelf::foldersThatAreTakenAway()
{
    Place place;
    place.add("a/a.apk", named("org.example.a", "A"));
    place.add("ab/b.apk", named("org.example.b", "B"));
    QVERIFY(place.shelf.open(place.index()));
    QVERIFY(place.shelf.setFolders({place.path("a"), place.path("ab")}));
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(labelsOf(place.shelf), QStringList({latin("A"), latin("B")}));
    QSignalSpy removed(&place.shelf, &Shelf::itemsRemoved);
    QVERIFY(place.shelf.setFolders({place.path("ab")}));
    QCOMPARE(labelsOf(place.shelf), QStringList{latin("B")});
    QCOMPARE(removed.size(), 1);
    QCOMPARE(place.shelf.find(latin("org.example.a")).size(), 0);
}

// A disk that is not there says nothing about its packages.
void TestShelf::aFolderThatVanishes()
{
    Place place;
    place.add("a/a.apk", named("org.example.a", "A"));
    place.add("b/b.apk", named("org.example.b", "B"));
    QVERIFY(place.shelf.open(place.index()));
    QVERIFY(place.shelf.setFolders({place.path("a"), place.path("b")}));
    QVERIFY(refreshed(place.shelf));
    QVERIFY(QDir().rename(place.path("a"), place.path("away")));
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(place.shelf.error().code(), ShelfError::Code::NoFolder);
    QCOMPARE(place.shelf.error().text(), place.path("a") + latin(" cannot be read"));
    QCOMPARE(labelsOf(place.shelf), QStringList({latin("A"), latin("B")}));
    QVERIFY(QDir().rename(place.path("away"), place.path("a")));
    QVERIFY(refreshed(place.shelf));
    QVERIFY(!place.shelf.error());
    QCOMPARE(labelsOf(place.shelf), QStringList({latin("A"), latin("B")}));
}

void TestShelf::aVanishedFolderBelow()
{
    Place place;
    place.add("a/a.apk", named("org.example.a", "A"));
    place.add("b/b.apk", named("org.example.b", "B"));
    QVERIFY(place.open() && refreshed(place.shelf));
    QVERIFY(QDir(place.path("a")).removeRecursively());
    QVERIFY(refreshed(place.shelf));
    QVERIFY(!place.shelf.error());
    QCOMPARE(labelsOf(place.shelf), QStringList{latin("B")});
}

void TestShelf::findsWords_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("count");
    QTest::newRow("label") << latin("notizen") << 1;
    QTest::newRow("part of a label") << latin("TIZ") << 1;
    QTest::newRow("without accents") << latin("resume") << 1;
    QTest::newRow("with accents") << QString::fromUtf8("RÉSUMÉ") << 1;
    QTest::newRow("another case") << QString::fromUtf8("ЗАМЕТКИ") << 1;
    QTest::newRow("two characters") << QString::fromUtf8("設定") << 1;
    QTest::newRow("one character") << QString::fromUtf8("定") << 1;
    QTest::newRow("package") << latin("org.example.") << 3;
    QTest::newRow("permission") << latin("CAMERA") << 2;
    QTest::newRow("several words") << latin("camera notizen") << 1;
    QTest::newRow("words of several packages") << latin("notizen resume") << 0;
    QTest::newRow("short and long") << QString::fromUtf8("設 example") << 1;
    QTest::newRow("no word") << latin("  ") << 0;
    QTest::newRow("nothing") << latin("nothing") << 0;
    QTest::newRow("quotes") << latin("\"notizen\" OR \"x") << 0;
    QTest::newRow("a pattern") << latin("%_*") << 0;
}

void TestShelf::findsWords()
{
    QFETCH(QString, words);
    QFETCH(int, count);
    Place place;
    ShelfPackage notes = named("org.example.notes", "Notes");
    notes.labels.insert(latin("de"), latin("Notizen"));
    notes.labels.insert(latin("ru"), QString::fromUtf8("Заметки"));
    place.add("notes.apk", notes);
    ShelfPackage resume = named("org.example.cv", "CV");
    resume.labels.insert(latin("fr"), QString::fromUtf8("Résumé"));
    place.add("cv.apk", resume);
    ShelfPackage settings = named("org.example.settings", "Settings");
    settings.labels.insert(latin("ja"), QString::fromUtf8("設定"));
    settings.permission = latin("android.permission.INTERNET");
    place.add("settings.apk", settings);
    QVERIFY(place.open() && refreshed(place.shelf));
    QCOMPARE(place.shelf.find(words).size(), count);
    QVERIFY(!place.shelf.error());
}

void TestShelf::aNameThatIsNoText()
{
    Place place;
    const QByteArray path = QFile::encodeName(place.packages()) + "/\xff.apk";
    place.add("notes.apk", {});
    QCOMPARE(::rename(QFile::encodeName(place.path("notes.apk")).constData(), path.constData()), 0);
    QVERIFY(place.open() && refreshed(place.shelf));
    const ShelfItem item = place.shelf.items().value(0);
    QCOMPARE(item.state(), ShelfItem::State::Ready);
    QCOMPARE(item.nativePath(), path);
    QCOMPARE(item.path(), place.packages() + QLatin1Char('/') + QChar(QChar::ReplacementCharacter) + latin(".apk"));
    ::unlink(path.constData()); // Qt cannot remove it
}

void TestShelf::aMissingWorker()
{
    Place place;
    place.add("notes.apk", {});
    place.shelf.setWorkerProgram(latin("/nonexistent/worker"));
    QVERIFY(place.open() && refreshed(place.shelf));
    QCOMPARE(place.shelf.error().code(), ShelfError::Code::NoWorker);
    QCOMPARE(place.shelf.error().text(), latin("/nonexistent/worker: No such file or directory"));
    QCOMPARE(place.shelf.items().value(0).state(), ShelfItem::State::Waiting);
    QCOMPARE(place.shelf.items().value(0).label(), latin("notes.apk"));
}

void TestShelf::watchesFolders()
{
    Place place;
    place.add("a.apk", named("org.example.a", "A"));
    QVERIFY(place.open());
    place.shelf.setWatching(true);
    QVERIFY(refreshed(place.shelf));
    place.add("b.apk", named("org.example.b", "B"));
    QTRY_COMPARE_WITH_TIMEOUT(labelsOf(place.shelf), QStringList({latin("A"), latin("B")}), 60000);
    place.add("a.apk", named("org.example.a", "A2"));
    QTRY_COMPARE_WITH_TIMEOUT(labelsOf(place.shelf), QStringList({latin("A2"), latin("B")}), 60000);
    QVERIFY(QFile::remove(place.path("b.apk")));
    QTRY_COMPARE_WITH_TIMEOUT(labelsOf(place.shelf), QStringList{latin("A2")}, 60000);
    QVERIFY(!place.shelf.error());
}

// The worker never answers.
void TestShelf::closingWhileItReads()
{
    Place place;
    place.add("notes.apk", {});
    const QString program = writeFile(place.directory.filePath(latin("worker")), "#!/bin/sh\nexec sleep 1000\n");
    ::chmod(QFile::encodeName(program).constData(), 0700);
    place.shelf.setWorkerProgram(program);
    QVERIFY(place.open());
    QSignalSpy added(&place.shelf, &Shelf::itemsAdded);
    place.shelf.refresh();
    QVERIFY(added.wait(60000));
    QVERIFY(place.shelf.isRefreshing());
    place.shelf.close();
    QVERIFY(!place.shelf.isRefreshing());
    place.shelf.setWorkerProgram(latin(SORREL_DRAW));
    QVERIFY(place.open() && refreshed(place.shelf));
    QCOMPARE(labelsOf(place.shelf), QStringList{latin("Notes")});
}

QTEST_GUILESS_MAIN(TestShelf)
#include "tst_shelf.moc"
