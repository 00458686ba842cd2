// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"
#include "ShelfFixture.h"
#include "shelf/ShelfPrivate.h"
#include "shelf/ShelfWatcher.h"
#include "shelf/index/IndexFile.h"
#include "shelf/index/IndexReader.h"

#include <SorrelKit/Shelf.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

class TestShelfCeilings : public QObject
{
    Q_OBJECT

private slots:
    void folders();
    void kindsOfIcons();
    void words();
    void filesInThePlaceOfAnIndex();
    void watchedPaths();
};

void TestShelfCeilings::folders()
{
    const QTemporaryDir directory;
    Shelf shelf;
    QVERIFY(shelf.open(directory.filePath(QStringLiteral("shelf.db"))));
    QStringList folders;
    for (int i = 0; i < Shelf::MaxFolders; ++i)
        folders.append(QStringLiteral("/folder/%1").arg(i, 4, 10, QLatin1Char('0')));
    QVERIFY(shelf.setFolders(folders));
    QCOMPARE(shelf.folders(), folders);
    QVERIFY(shelf.setFolders(folders + QStringList{QStringLiteral("/folder/later")}));
    QCOMPARE(shelf.folders(), folders);
}

void TestShelfCeilings::kindsOfIcons()
{
    Shelf shelf;
    QList<ShelfIcon> icons;
    for (int i = 1; i <= ShelfPrivate::MaxIcons; ++i)
        icons.append(ShelfIcon(i));
    shelf.setIcons(icons);
    QCOMPARE(shelf.icons(), icons);
    shelf.setIcons(icons + QList<ShelfIcon>{ShelfIcon(100)});
    QCOMPARE(shelf.icons(), icons);
}

void TestShelfCeilings::words()
{
    const QTemporaryDir directory;
    writeFile(directory.filePath(QStringLiteral("packages/notes.apk")), ShelfPackage().build());
    Shelf shelf;
    shelf.setWorkerProgram(QStringLiteral(SORREL_DRAW));
    QVERIFY(shelf.open(directory.filePath(QStringLiteral("shelf.db"))));
    QVERIFY(shelf.setFolders({directory.filePath(QStringLiteral("packages"))}) && refreshed(shelf));
    const auto found = [&](int count) {
        return shelf.find(QStringLiteral("notes ").repeated(count) + QStringLiteral("nothing")).size();
    };
    QCOMPARE(found(IndexReader::MaxWords - 1), 0);
    QCOMPARE(found(IndexReader::MaxWords), 1);
}

void TestShelfCeilings::filesInThePlaceOfAnIndex()
{
    const QTemporaryDir directory;
    const QString name = directory.filePath(QStringLiteral("shelf.db"));
    const auto damage = [](const QString &file) { writeFile(file, QByteArray(4096, 'x')); };
    damage(name);
    for (int number = 2; number < IndexFile::LastNumber; ++number)
        damage(QStringLiteral("%1.%2").arg(name).arg(number));
    Shelf shelf;
    const QString last = QStringLiteral("%1.%2").arg(name).arg(int(IndexFile::LastNumber));
    QVERIFY(shelf.open(name));
    QCOMPARE(shelf.fileName(), last);
    shelf.close();
    damage(last);
    QVERIFY(!shelf.open(name));
    QCOMPARE(shelf.error().code(), ShelfError::Code::Damaged);
    QCOMPARE(shelf.items().size(), 0);
}

// Changes of the paths above the ceiling are found by the next refresh.
void TestShelfCeilings::watchedPaths()
{
    const QTemporaryDir directory;
    QList<QByteArray> paths;
    for (int i = 0; i <= ShelfWatcher::MaxPaths; ++i) {
        paths.append(QFile::encodeName(directory.filePath(QString::number(i))));
        writeFile(QFile::decodeName(paths.constLast()), "x");
    }
    ShelfWatcher watcher([] {});
    // A machine may allow less, so only the number of paths that is asked for is tested.
    watcher.watch({}, paths);
    QVERIFY(watcher.count() > 0 && watcher.count() <= ShelfWatcher::MaxPaths);
    watcher.watch({}, paths.mid(0, 10));
    QCOMPARE(watcher.count(), 10);
}

QTEST_GUILESS_MAIN(TestShelfCeilings)
#include "tst_shelf_ceilings.moc"
