// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"
#include "ShelfFixture.h"
#include "shelf/index/IndexFile.h"
#include "shelf/index/IndexReader.h"
#include "shelf/index/IndexSchema.h"
#include "shelf/index/IndexUpdate.h"

#include <SorrelKit/Shelf.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace SorrelKit;
using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A folder with some packages, and a file for an index of it.
struct Place {
    explicit Place(int count = 3)
    {
        for (int i = 0; i < count; ++i) {
            ShelfPackage package;
            package.name = QStringLiteral("org.example.p%1").arg(i);
            package.labels = {{QString(), QStringLiteral("Label %1").arg(i)}};
            writeFile(packages() + QStringLiteral("/%1.apk").arg(i), package.build());
            labels.append(package.labels.first());
        }
        QDir(directory.path()).mkpath(latin("index"));
    }

    QString packages() const { return directory.filePath(latin("packages")); }
    QString index() const { return directory.filePath(latin("index/shelf.db")); }
    /// Opens @p shelf and refreshes it.
    bool fill(Shelf &shelf) const
    {
        shelf.setJobs(1);
        shelf.setWorkerProgram(latin(SORREL_DRAW));
        return shelf.open(index()) && shelf.setFolders({packages()}) && refreshed(shelf);
    }
    /// Fills the index and closes it.
    bool fill() const
    {
        Shelf shelf;
        return fill(shelf);
    }

    QTemporaryDir directory;
    QStringList labels;
};

/// Whether @p shelf has no rows but those of @p place, and no row that is wrong.
bool isRight(const Shelf &shelf, const Place &place)
{
    for (const ShelfItem &item : shelf.items()) {
        const QString number = item.path().section(QLatin1Char('/'), -1).section(QLatin1Char('.'), 0, 0);
        const bool isRead = item.state() == ShelfItem::State::Ready
                            && item.packageName() == QStringLiteral("org.example.p%1").arg(number)
                            && item.label() == QStringLiteral("Label %1").arg(number)
                            && !shelf.icon(item.id(), ShelfIcon(16)).isEmpty();
        const bool isWaiting = item.state() == ShelfItem::State::Waiting && item.packageName().isEmpty();
        if (!item.path().startsWith(place.directory.path()) || !(isRead || isWaiting))
            return false;
    }
    return !shelf.error();
}

/// Runs @p body in a child process. Returns the process.
template <typename Body>
pid_t child(const Body &body)
{
    const pid_t process = ::fork();
    if (process == 0) {
        body();
        ::_exit(0);
    }
    return process;
}

/// Brings the index of @p place up to date, in a process that is killed.
void updateWithoutEvents(const Place &place, const QList<QByteArray> &paths)
{
    IndexFile file;
    file.open(place.index(), false);
    IndexUpdate::Order order;
    order.folders = paths;
    order.program.path = SORREL_DRAW;
    order.content.launcherIcons = "16:0:0:0";
    order.content.parent = ::getpid();
    IndexUpdate(file, {}).run(order);
}

} // namespace

class TestShelfFiles : public QObject
{
    Q_OBJECT

private slots:
    void anIndexOfALaterVersion();
    void aDatabaseOfAnotherProgram();
    void aDamagedIndex_data();
    void aDamagedIndex();
    void damageThatAQueryMeets();
    void damageAnywhere();
    void aReadOnlyFolder();
    void aFolderThatCannotBeMade();
    void aFullDisk();
    void aMissingIndexToRead();
    void twoProcessesAtOnce();
    void killedAtAnyPoint();
};

void TestShelfFiles::anIndexOfALaterVersion()
{
    Place place;
    QVERIFY(place.fill());
    {
        IndexDatabase database;
        QVERIFY(database.open(place.index(), IndexDatabase::Mode::Create));
        QVERIFY(database.execute(QStringLiteral("PRAGMA user_version = %1").arg(IndexSchema::Version + 1)));
    }
    const QByteArray before = contentOf(place.index());
    Shelf shelf;
    QVERIFY(place.fill(shelf));
    QCOMPARE(shelf.fileName(), place.index() + latin(".2"));
    QCOMPARE(labelsOf(shelf), place.labels);
    QVERIFY(shelf.open(place.index()));
    QCOMPARE(shelf.error().code(), ShelfError::Code::LaterVersion);
    QCOMPARE(shelf.error().text(), place.index() + latin(" is of a later version or of another program; ")
                                       + place.index() + latin(".2 is used instead"));
    QCOMPARE(labelsOf(shelf), place.labels);
    shelf.close();
    QCOMPARE(contentOf(place.index()), before);
    QVERIFY(!shelf.open(place.index(), Shelf::Access::ReadOnly));
    QCOMPARE(shelf.error().code(), ShelfError::Code::LaterVersion);
}

void TestShelfFiles::aDatabaseOfAnotherProgram()
{
    Place place;
    {
        IndexDatabase database;
        QVERIFY(database.open(place.index(), IndexDatabase::Mode::Create));
        QVERIFY(database.execute(latin("CREATE TABLE notes (text TEXT)")));
    }
    const QByteArray before = contentOf(place.index());
    Shelf shelf;
    QVERIFY(place.fill(shelf));
    QCOMPARE(shelf.fileName(), place.index() + latin(".2"));
    QCOMPARE(contentOf(place.index()), before);
}

void TestShelfFiles::aDamagedIndex_data()
{
    QTest::addColumn<QByteArray>("content");
    Place place;
    QVERIFY(place.fill());
    const QByteArray good = contentOf(place.index());
    QTest::newRow("no database") << QByteArray(
        "no database, but a text that is longer than a header of SQLite has to be"
        "........................................................");
    QTest::newRow("the first page is cut") << good.left(1000);
    QTest::newRow("the header alone") << good.left(100);
    QByteArray bytes = good;
    QTest::newRow("the list of tables") << bytes.replace(100, 900, QByteArray(900, '\xff'));
    bytes = good;
    QTest::newRow("the size of pages") << bytes.replace(16, 2, "\x03\x03");
}

void TestShelfFiles::aDamagedIndex()
{
    QFETCH(QByteArray, content);
    Place place;
    writeFile(place.index(), content);
    Shelf shelf;
    QVERIFY(shelf.open(place.index()));
    QCOMPARE(shelf.error().code(), ShelfError::Code::Damaged);
    QVERIFY2(shelf.error().text().endsWith(latin("shelf.db.2 is used instead")), qPrintable(shelf.error().text()));
    QVERIFY(place.fill(shelf));
    QCOMPARE(labelsOf(shelf), place.labels);
    shelf.close();
    QCOMPARE(contentOf(place.index()), content);
}

// Opening reads only the first pages. The damage is found by a query, and the next opening uses another file.
void TestShelfFiles::damageThatAQueryMeets()
{
    Place place(40);
    QVERIFY(place.fill());
    constexpr int page = 4096;
    QByteArray content = contentOf(place.index());
    QVERIFY(content.size() > 10 * page);
    content.replace(page, content.size() - page, QByteArray(int(content.size()) - page, '\xff'));
    writeFile(place.index(), content);
    Shelf shelf;
    QVERIFY(shelf.open(place.index()));
    QCOMPARE(shelf.items().size(), 0);
    QCOMPARE(shelf.error().code(), ShelfError::Code::Damaged);
    QVERIFY(place.fill(shelf));
    QCOMPARE(shelf.fileName(), place.index() + latin(".2"));
    QCOMPARE(shelf.items().size(), place.labels.size());
    shelf.close();
    QCOMPARE(contentOf(place.index()), content);
}

// Damage in a text or a number cannot be seen, so only the use of the index is tested.
void TestShelfFiles::damageAnywhere()
{
    Place place;
    QVERIFY(place.fill());
    const QByteArray good = contentOf(place.index());
    quint32 state = 7;
    const auto random = [&state](int below) {
        state = quint32((quint64(state) * 1664525 + 1013904223) & 0xffffffff);
        return int(quint64(state) * quint64(below) >> 32);
    };
    int replaced = 0;
    constexpr int rounds = 60;
    for (int round = 0; round < rounds; ++round) {
        QVERIFY(QDir(QFileInfo(place.index()).absolutePath()).removeRecursively());
        QByteArray content = good;
        for (int i = 0; i <= round; ++i)
            content[random(int(content.size()))] = char(random(256));
        writeFile(place.index(), content);
        for (int opening = 0; opening < 3; ++opening) {
            Shelf shelf;
            shelf.setJobs(1);
            shelf.setWorkerProgram(latin(SORREL_DRAW));
            QVERIFY2(shelf.open(place.index()), qPrintable(shelf.error().text()));
            replaced += shelf.fileName() != place.index() ? 1 : 0;
            for (const ShelfItem &item : shelf.items()) {
                QVERIFY(int(item.state()) <= int(ShelfItem::State::Broken));
                shelf.icon(item.id(), ShelfIcon(16));
                item.label();
            }
            shelf.find(latin("label example"));
            if (shelf.setFolders({place.packages()}))
                QVERIFY(refreshed(shelf));
        }
    }
    QVERIFY2(replaced > 0 && replaced < 3 * rounds, qPrintable(QString::number(replaced)));
}

void TestShelfFiles::aReadOnlyFolder()
{
    Place place;
    QVERIFY(place.fill());
    const QByteArray folder = QFile::encodeName(QFileInfo(place.index()).absolutePath());
    QCOMPARE(::chmod(QFile::encodeName(place.directory.path()).constData(), 0755), 0);
    QCOMPARE(::chmod(folder.constData(), 0555), 0);
    QCOMPARE(::chmod(QFile::encodeName(place.index()).constData(), 0444), 0);
    int status = -1;
    const pid_t process = child([&] {
        // access() asks for the real owner.
        if (::geteuid() == 0 && (::setresgid(65534, 65534, 65534) != 0 || ::setresuid(65534, 65534, 65534) != 0))
            ::_exit(1);
        Shelf shelf;
        if (!shelf.open(place.index()) || shelf.error().code() != ShelfError::Code::ReadOnly)
            ::_exit(2);
        if (labelsOf(shelf) != place.labels)
            ::_exit(3);
        if (shelf.setFolders({}) || shelf.error().code() != ShelfError::Code::ReadOnly)
            ::_exit(4);
        if (!refreshed(shelf) || shelf.error().code() != ShelfError::Code::ReadOnly)
            ::_exit(5);
        if (labelsOf(shelf) != place.labels)
            ::_exit(6);
    });
    QCOMPARE(::waitpid(process, &status, 0), process);
    QCOMPARE(::chmod(folder.constData(), 0755), 0);
    QCOMPARE(WEXITSTATUS(status), 0);
    QVERIFY(WIFEXITED(status));
}

void TestShelfFiles::aFolderThatCannotBeMade()
{
    Place place;
    const QString file = writeFile(place.directory.filePath(latin("file")), "no folder");
    Shelf shelf;
    QVERIFY(!shelf.open(file + latin("/shelf.db")));
    QCOMPARE(shelf.error().code(), ShelfError::Code::ReadOnly);
    QCOMPARE(shelf.error().text(), file + latin("/shelf.db cannot be made: the folder cannot be written"));
    QCOMPARE(shelf.items().size(), 0);
}

// A limit of the size of files is as good as a full disk.
void TestShelfFiles::aFullDisk()
{
    Place place(60);
    const pid_t process = child([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{160 << 10, 160 << 10};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0)
            ::_exit(1);
        Shelf shelf;
        shelf.setIcons({ShelfIcon(16)});
        if (!place.fill(shelf))
            ::_exit(2);
        const ShelfError::Code code = shelf.error().code();
        if (code != ShelfError::Code::Full && code != ShelfError::Code::Failed)
            ::_exit(3);
        if (shelf.items().isEmpty())
            ::_exit(4);
    });
    int status = -1;
    QCOMPARE(::waitpid(process, &status, 0), process);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
    Shelf shelf;
    shelf.setIcons({ShelfIcon(16)});
    QVERIFY(shelf.open(place.index()));
    QVERIFY2(isRight(shelf, place), qPrintable(shelf.error().text()));
    QVERIFY(place.fill(shelf));
    QCOMPARE(shelf.items().size(), place.labels.size());
    QVERIFY(isRight(shelf, place));
}

void TestShelfFiles::aMissingIndexToRead()
{
    Place place;
    Shelf shelf;
    QVERIFY(!shelf.open(place.index(), Shelf::Access::ReadOnly));
    QCOMPARE(shelf.error().code(), ShelfError::Code::CannotOpen);
    QCOMPARE(shelf.error().text(), place.index() + latin(" does not exist"));
    QVERIFY(!QFile::exists(place.index()));
}

// Each has folders of its own, and both write at the same time.
void TestShelfFiles::twoProcessesAtOnce()
{
    Place place(30);
    const QString others = place.directory.filePath(latin("others"));
    for (int i = 0; i < 30; ++i)
        writeFile(others + QStringLiteral("/%1.apk").arg(i),
                  contentOf(place.packages() + QStringLiteral("/%1.apk").arg(i)));
    QList<pid_t> processes;
    for (const QString &folder : {place.packages(), others, place.packages()}) {
        processes.append(child([&] { updateWithoutEvents(place, {QFile::encodeName(folder)}); }));
    }
    for (const pid_t process : processes) {
        int status = -1;
        QCOMPARE(::waitpid(process, &status, 0), process);
        QCOMPARE(status, 0);
    }
    // A file that another process is still preparing is not replaced.
    QVERIFY(!QFile::exists(place.index() + latin(".2")));
    Shelf shelf;
    QVERIFY(shelf.open(place.index()));
    QVERIFY(isRight(shelf, place));
    QCOMPARE(shelf.items().size(), 60);
    for (const ShelfItem &item : shelf.items())
        QCOMPARE(item.state(), ShelfItem::State::Ready);
}

// The points are random times within a run, from a seed. SORREL_CRASH_POINTS is their number.
void TestShelfFiles::killedAtAnyPoint()
{
    bool isSet = false;
    int points = qEnvironmentVariableIntValue("SORREL_CRASH_POINTS", &isSet);
    if (!isSet)
        points = 20;
    constexpr int count = 24;
    Place place(count);
    // Rows of another folder, which no crash may lose.
    const QString others = place.directory.filePath(latin("others"));
    for (int i = 0; i < 4; ++i)
        writeFile(others + QStringLiteral("/%1.apk").arg(i),
                  contentOf(place.packages() + QStringLiteral("/%1.apk").arg(i)));
    updateWithoutEvents(place, {QFile::encodeName(others)});
    const QByteArray base = contentOf(place.index());

    QElapsedTimer timer;
    timer.start();
    updateWithoutEvents(place, {QFile::encodeName(place.packages())});
    const qint64 wholeRun = timer.nsecsElapsed() / 1000;
    quint32 state = 20260101;
    int interrupted = 0;
    for (int point = 0; point < points; ++point) {
        QVERIFY(QDir(QFileInfo(place.index()).absolutePath()).removeRecursively());
        writeFile(place.index(), base);
        const pid_t process = child([&] { updateWithoutEvents(place, {QFile::encodeName(place.packages())}); });
        state = quint32((quint64(state) * 1664525 + 1013904223) & 0xffffffff);
        ::usleep(useconds_t(quint64(state) * quint64(wholeRun) >> 32));
        ::kill(process, SIGKILL);
        int status = -1;
        QCOMPARE(::waitpid(process, &status, 0), process);

        Shelf shelf;
        QVERIFY(shelf.open(place.index()));
        QVERIFY2(!shelf.error(), qPrintable(shelf.error().text()));
        QCOMPARE(shelf.fileName(), place.index());
        QVERIFY(isRight(shelf, place));
        int kept = 0;
        int ready = 0;
        for (const ShelfItem &item : shelf.items()) {
            kept += item.path().startsWith(others) && item.state() == ShelfItem::State::Ready ? 1 : 0;
            ready += item.state() == ShelfItem::State::Ready ? 1 : 0;
        }
        QCOMPARE(kept, 4);
        interrupted += ready < count + 4 ? 1 : 0;
        shelf.close();
        updateWithoutEvents(place, {QFile::encodeName(place.packages())});
        QVERIFY(shelf.open(place.index()));
        QCOMPARE(shelf.items().size(), count + 4);
        QVERIFY(isRight(shelf, place));
        for (const ShelfItem &item : shelf.items())
            QCOMPARE(item.state(), ShelfItem::State::Ready);
    }
    qInfo("%d of %d points were before the end", interrupted, points);
}

QTEST_GUILESS_MAIN(TestShelfFiles)
#include "tst_shelf_files.moc"
