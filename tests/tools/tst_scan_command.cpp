// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "MemoryLimit.h"
#include "Pictures.h"
#include "Tool.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <unistd.h>

using namespace fixture;

namespace {

constexpr int WatchdogMs = 60000;

QByteArray manifest(const QString &name, int activities = 1)
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), name)});
    builder.start(QStringLiteral("application"), {androidText(QStringLiteral("icon"), QStringLiteral("icon.png"))});
    for (int i = 0; i < activities; ++i) {
        builder.start(QStringLiteral("activity"),
                      {androidText(QStringLiteral("name"), QStringLiteral(".Activity%1").arg(i)),
                       androidText(QStringLiteral("icon"), QStringLiteral("icon.png"))});
        builder.launcherFilter().end(QStringLiteral("activity"));
    }
    return builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
}

QByteArray good(const QString &name)
{
    return package(emptyTable(), manifest(name), {{QStringLiteral("icon.png"), picture(48, 48, 0xff336699)}});
}

// Two empty blocks of deflated data, each with its own codes. The only symbol is the end, with a length of one bit.
QByteArray blocksWithCodes()
{
    BitWriter bits;
    for (int i = 0; i < 2; ++i) {
        // Not the last block, dynamic codes, as few lengths as possible. The lengths are written in codes for 1, 0 and
        // 18.
        bits.put(0, 1).put(2, 2).put(0, 5).put(0, 5).put(14, 4);
        for (const int symbol : {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1})
            bits.put(symbol == 18 ? 1 : quint32(symbol < 2 ? 2 : 0), 3);
        // 256 lengths of 0 in two runs of up to 138 each, then a length of 1 for the end, and one for a distance.
        bits.put(0, 1).put(138 - 11, 7).put(0, 1).put(256 - 138 - 11, 7).put(3, 2).put(3, 2);
        bits.put(0, 1);
    }
    return bits.data();
}

// Inflating the manifest takes seconds and delivers no bytes. A file is read once, however long it takes.
QByteArray slow()
{
    constexpr int Size = 96 << 20;
    const QByteArray blocks = blocksWithCodes();
    const QByteArray data =
        blocks.repeated(Size / int(blocks.size())) + deflatedBehindEmptyBlocks(0, manifest(QStringLiteral("org.slow")));
    return zipOfDeflated({{QStringLiteral("AndroidManifest.xml"), data}}, 1 << 20);
}

// The table inflates to a thousand times its size.
QByteArray large()
{
    return package(QByteArray(100 << 20, '\0'), manifest(QStringLiteral("org.large")));
}

QJsonObject object(const QByteArray &line)
{
    return QJsonDocument::fromJson(line).object();
}

int errorCode(const QByteArray &line)
{
    return object(line).value(QLatin1String("error")).toObject().value(QLatin1String("code")).toInt(-1);
}

QString packageName(const QByteArray &line)
{
    return object(line).value(QLatin1String("package")).toString();
}

QList<QByteArray> lines(const QByteArray &output)
{
    QList<QByteArray> lines = output.split('\n');
    if (!lines.isEmpty() && lines.constLast().isEmpty())
        lines.removeLast();
    return lines;
}

QStringList packageNames(const QByteArray &output)
{
    QStringList names;
    for (const QByteArray &line : lines(output))
        names.append(packageName(line));
    return names;
}

// An ended process stays as a zombie until its parent waits for it.
bool isRunning(pid_t process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stat = file.readAll();
    const QByteArray state = stat.mid(stat.lastIndexOf(')') + 2, 1);
    return !state.isEmpty() && state != "Z" && state != "X";
}

QList<qint64> childrenOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/task/%1/children").arg(process));
    QList<qint64> children;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &child : file.readAll().simplified().split(' '))
            children.append(child.toLongLong());
    }
    return children;
}

} // namespace

class TestScanCommand : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void packagesBelowADirectory();
    void linesAreThoseOfInfo();
    void iconsWhenAsked();
    void launchersThatAreNotShownWhenAsked();
    void orderedIsTheSameForAnyNumberOfWorkers();
    void unorderedHasTheSameLines();
    void pathsOnStandardInput_data();
    void pathsOnStandardInput();
    void nothingToRead();
    void namesThatAreNoText_data();
    void namesThatAreNoText();
    void aNameWithANulIsToldAndNotCut();
    void linksAndPipesBelowADirectory();

    void filesThatCannotBeReadHaveALine();
    void directoriesThatCannotBeReadAreTold();
    void aFileThatTakesTooLongCostsItself();
    void aFileThatTakesTooMuchMemoryCostsItself();
    void aWorkerThatDiesCostsItsFile();
    void workersEndWithTheScan_data();
    void workersEndWithTheScan();
    void aWorkerWhoseParentIsGoneReadsNothing();
    void aReaderThatGoesAwayEndsTheScan();
    void outputThatCannotBeWritten();

    void progressOnATerminal();
    void wrongUsage_data();
    void wrongUsage();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }

    // The 40 good files of the shelf, or @p form with their numbers, and @p middle after the first 20.
    QStringList aroundTheMiddle(const QString &middle, const QString &form = QString()) const
    {
        QStringList texts;
        for (int i = 0; i < 40; ++i) {
            texts.append(form.isNull()
                             ? QStringLiteral("%1/%2/%3.apk").arg(m_shelf).arg(i % 3).arg(i, 2, 10, QLatin1Char('0'))
                             : form.arg(i));
        }
        texts.insert(20, middle);
        return texts;
    }

    QTemporaryDir m_directory;
    QString m_shelf;
};

void TestScanCommand::initTestCase()
{
    m_shelf = m_directory.filePath(QStringLiteral("shelf"));
    for (int i = 0; i < 40; ++i) {
        write(QStringLiteral("shelf/%1/%2.apk").arg(i % 3).arg(i, 2, 10, QLatin1Char('0')),
              good(QStringLiteral("org.p%1").arg(i)));
    }
}

void TestScanCommand::packagesBelowADirectory()
{
    const QString top = m_directory.filePath(QStringLiteral("tree"));
    for (const char *name :
         {"a.apk", "b.APK", "c.apks", "d.xapk", "e/f/g.apkm", "e/.hidden.apk", ".h/i.apk", "no.zip", "apk"})
        write(QStringLiteral("tree/") + QLatin1String(name), good(QLatin1String(name)));
    QVERIFY(QFile::link(top, m_directory.filePath(QStringLiteral("tree/e/circle.apk"))));
    QVERIFY(QFile::link(m_directory.filePath(QStringLiteral("tree/a.apk")),
                        m_directory.filePath(QStringLiteral("tree/link.apk"))));
    const ToolRun result = runSorrel({QStringLiteral("scan"), QStringLiteral("--ordered"), top});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    const QStringList expected{QStringLiteral("a.apk"),         QStringLiteral("b.APK"),     QStringLiteral("c.apks"),
                               QStringLiteral("d.xapk"),        QStringLiteral("a.apk"),     QStringLiteral(".h/i.apk"),
                               QStringLiteral("e/.hidden.apk"), QStringLiteral("e/f/g.apkm")};
    QCOMPARE(packageNames(result.output), expected);
    // A file named in the arguments is read under any name.
    const ToolRun named = runSorrel({QStringLiteral("scan"), top + QStringLiteral("/no.zip")});
    QCOMPARE(packageNames(named.output), QStringList{QStringLiteral("no.zip")});
}

void TestScanCommand::linesAreThoseOfInfo()
{
    const QString file = write(QStringLiteral("one ü.apk"), good(QStringLiteral("org.one")));
    const ToolRun info = runSorrel({QStringLiteral("info"), QStringLiteral("--json"), file});
    QCOMPARE(info.status, 0);
    QCOMPARE(runSorrel({QStringLiteral("scan"), file}).output, info.output);
}

void TestScanCommand::iconsWhenAsked()
{
    const QString file = write(QStringLiteral("icon.apk"), good(QStringLiteral("org.icon")));
    const ToolRun scan = runSorrel({QStringLiteral("scan"), QStringLiteral("--icon"), QStringLiteral("32"), file});
    const QString icon = object(scan.output).value(QLatin1String("icon")).toString();
    const QImage expected =
        QImage::fromData(runSorrel({QStringLiteral("icon"), QStringLiteral("-s"), QStringLiteral("32"), file}).output);
    QCOMPARE(expected.size(), QSize(32, 32));
    QCOMPARE(QImage::fromData(QByteArray::fromBase64(icon.toLatin1())), expected);

    const QString none = write(QStringLiteral("no-icon.apk"), package(emptyTable(), smallManifest()));
    const ToolRun without = runSorrel({QStringLiteral("scan"), QStringLiteral("--icon"), QStringLiteral("32"), none});
    QCOMPARE(object(without.output).value(QLatin1String("icon")), QJsonValue(QString(QLatin1String(""))));
}

void TestScanCommand::launchersThatAreNotShownWhenAsked()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))});
    builder.start(QStringLiteral("application"));
    builder.start(QStringLiteral("activity"), {androidText(QStringLiteral("name"), QStringLiteral(".A")),
                                               androidText(QStringLiteral("enabled"), QStringLiteral("false"))});
    builder.launcherFilter().end(QStringLiteral("activity"));
    builder.end(QStringLiteral("application")).end(QStringLiteral("manifest"));
    const QString file = write(QStringLiteral("hidden.apk"), package(emptyTable(), builder.build()));
    const auto count = [&](const QStringList &options) {
        const ToolRun scan = runSorrel(QStringList{QStringLiteral("scan")} + options + QStringList{file});
        return object(scan.output).value(QLatin1String("launchers")).toArray().size();
    };
    QCOMPARE(count({}), 0);
    QCOMPARE(count({QStringLiteral("--all")}), 1);
}

void TestScanCommand::orderedIsTheSameForAnyNumberOfWorkers()
{
    QStringList expected;
    for (int directory = 0; directory < 3; ++directory) {
        for (int i = directory; i < 40; i += 3)
            expected.append(QStringLiteral("org.p%1").arg(i));
    }
    const QString slowFile =
        write(QStringLiteral("not-first.apk"), package(emptyTable(), manifest(QStringLiteral("org.first"), 1000)));
    expected.prepend(QStringLiteral("org.first"));
    for (const char *jobs : {"1", "2", "7"}) {
        const ToolRun result = runSorrel({QStringLiteral("scan"), QStringLiteral("--ordered"), QStringLiteral("-j"),
                                          QLatin1String(jobs), slowFile, m_shelf});
        QCOMPARE(result.status, 0);
        QCOMPARE(packageNames(result.output), expected);
    }
}

void TestScanCommand::unorderedHasTheSameLines()
{
    QList<QByteArray> ordered = lines(runSorrel({QStringLiteral("scan"), QStringLiteral("--ordered"), m_shelf}).output);
    QList<QByteArray> unordered = lines(runSorrel({QStringLiteral("scan"), QStringLiteral("-j3"), m_shelf}).output);
    std::sort(ordered.begin(), ordered.end());
    std::sort(unordered.begin(), unordered.end());
    QCOMPARE(ordered.size(), 40);
    QCOMPARE(unordered, ordered);
}

void TestScanCommand::pathsOnStandardInput_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<bool>("ends");
    QTest::addColumn<QString>("name");
    const QStringList null{QStringLiteral("-0")};
    QTest::newRow("lines") << QStringList() << "\n" << true << "a b.apk";
    QTest::newRow("lines, the last one open") << QStringList() << "\n" << false << "a'\"b.apk";
    QTest::newRow("empty lines") << QStringList() << "\n\n" << true << "ü.apk";
    QTest::newRow("NUL") << null << QString(QChar(0)) << true << "a\nb.apk";
    QTest::newRow("NUL, the last one open") << null << QString(QChar(0)) << false << "-a.apk";
}

void TestScanCommand::pathsOnStandardInput()
{
    QFETCH(QStringList, options);
    QFETCH(QString, separator);
    QFETCH(bool, ends);
    QFETCH(QString, name);
    write(QStringLiteral("list/") + name, good(QStringLiteral("org.listed")));
    ToolSetting setting;
    setting.directory = m_directory.filePath(QStringLiteral("list"));
    setting.input = (m_shelf + QStringLiteral("/1") + separator + name + (ends ? separator : QString())).toUtf8();
    const ToolRun result = runSorrel(QStringList{QStringLiteral("scan"), QStringLiteral("--ordered")} + options
                                         + QStringList{QStringLiteral("-")},
                                     setting);
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    const QStringList names = packageNames(result.output);
    QCOMPARE(names.size(), 14);
    QCOMPARE(names.constFirst(), QStringLiteral("org.p1"));
    QCOMPARE(names.constLast(), QStringLiteral("org.listed"));
}

void TestScanCommand::nothingToRead()
{
    QTemporaryDir empty;
    for (const QString &path : {empty.path(), QStringLiteral("-")}) {
        const ToolRun result = runSorrel({QStringLiteral("scan"), path});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(result.errors, QByteArray());
    }
}

void TestScanCommand::namesThatAreNoText_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("paths");
    for (const char *locale : {"C", "C.UTF-8"}) {
        const auto row = [&](const char *what, const char *paths) {
            QTest::newRow(qPrintable(QStringLiteral("%1, %2").arg(QLatin1String(what), QLatin1String(locale))))
                << QString::fromLatin1(locale) << QString::fromLatin1(paths);
        };
        row("below a directory", "sorrel scan --ordered top");
        row("as arguments", "sorrel scan --ordered top/$'\\xff.apk' top/$'d\\xfe'");
        row("in a list", "printf 'top/\\xff.apk\\ntop/d\\xfe\\n' | sorrel scan --ordered -");
        row("in a list with NUL", "printf 'top/\\xff.apk\\0top/d\\xfe\\0' | sorrel scan --ordered -0 -");
    }
}

// A file name is bytes: a name that is not UTF-8 is found and read like any other, and its URI keeps every byte.
void TestScanCommand::namesThatAreNoText()
{
    QFETCH(QString, locale);
    QFETCH(QString, paths);
    write(QStringLiteral("bytes/a"), good(QStringLiteral("org.outer")));
    write(QStringLiteral("bytes/b"), good(QStringLiteral("org.inner")));
    ToolSetting setting;
    setting.directory = m_directory.filePath(QStringLiteral("bytes"));
    setting.environment.insert(QStringLiteral("LC_ALL"), locale);
    QCOMPARE(runShell(QStringLiteral(
                          "mkdir -p top/$'d\\xfe' && cp a top/$'\\xff.apk' && cp b top/$'d\\xfe/\\xc3\\xbc\\x80.APK'"),
                      setting)
                 .status,
             0);
    const ToolRun result = runShell(paths, setting);
    // QTemporaryDir does not remove these names.
    runShell(QStringLiteral("rm -r top"), setting);
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    const QList<QByteArray> output = lines(result.output);
    QCOMPARE(output.size(), 2);
    const QString directory = QStringLiteral("file://%1/top/").arg(setting.directory);
    QCOMPARE(packageName(output.at(0)), QStringLiteral("org.outer"));
    QCOMPARE(object(output.at(0)).value(QLatin1String("file")).toString(), QStringLiteral("top/\ufffd.apk"));
    QCOMPARE(object(output.at(0)).value(QLatin1String("uri")).toString(), directory + QStringLiteral("%FF.apk"));
    QCOMPARE(packageName(output.at(1)), QStringLiteral("org.inner"));
    QCOMPARE(object(output.at(1)).value(QLatin1String("file")).toString(), QStringLiteral("top/d\ufffd/ü\ufffd.APK"));
    QCOMPARE(object(output.at(1)).value(QLatin1String("uri")).toString(),
             directory + QStringLiteral("d%FE/%C3%BC%80.APK"));
}

// A name cut at the NUL would be the name of another file.
void TestScanCommand::aNameWithANulIsToldAndNotCut()
{
    write(QStringLiteral("nul/a"), good(QStringLiteral("org.a")));
    const QString other = write(QStringLiteral("nul/b"), good(QStringLiteral("org.b")));
    ToolSetting setting;
    setting.directory = m_directory.filePath(QStringLiteral("nul"));
    setting.input = QByteArray("a\0c\nb\n", 6);
    const ToolRun result = runSorrel({QStringLiteral("scan"), QStringLiteral("-")}, setting);
    QCOMPARE(result.status, 1);
    QCOMPARE(packageNames(result.output), QStringList{QStringLiteral("org.b")});
    QCOMPARE(QString::fromUtf8(result.errors),
             QStringLiteral("sorrel: a\ufffdc: no name has a NUL in it; with '-0' names end with one\n"));
}

void TestScanCommand::linksAndPipesBelowADirectory()
{
    write(QStringLiteral("links/shelf/a.apk"), good(QStringLiteral("org.a")));
    write(QStringLiteral("links/target"), good(QStringLiteral("org.target")));
    ToolSetting setting;
    setting.directory = m_directory.filePath(QStringLiteral("links"));
    QCOMPARE(runShell(QStringLiteral("cd shelf && ln -s ../target b.apk && ln -s nowhere c.apk && ln -s d.apk d.apk && "
                                     "mkfifo e.apk && ln -s . g.apk && mkdir h.apk"),
                      setting)
                 .status,
             0);
    for (const char *shelf : {"shelf", "shelf/", "./shelf//"}) {
        const ToolRun result =
            runSorrel({QStringLiteral("scan"), QStringLiteral("--ordered"), QLatin1String(shelf)}, setting);
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 0);
        QCOMPARE(packageNames(result.output), QStringList({QStringLiteral("org.a"), QStringLiteral("org.target")}));
        QVERIFY(!result.output.contains("//"));
    }
}

void TestScanCommand::filesThatCannotBeReadHaveALine()
{
    const QString bad = write(QStringLiteral("bad.apk"), QByteArray("no package"));
    const QString missing = m_directory.filePath(QStringLiteral("missing\033[2J.apk"));
    const QString file = write(QStringLiteral("last.apk"), good(QStringLiteral("org.last")));
    const ToolRun result =
        runSorrel({QStringLiteral("scan"), QStringLiteral("--ordered"), QStringLiteral("-j1"), bad, missing, file});
    QCOMPARE(result.status, 1);
    const QList<QByteArray> output = lines(result.output);
    QCOMPARE(output.size(), 3);
    QCOMPARE(output.at(0), runSorrel({QStringLiteral("info"), QStringLiteral("--json"), bad}).output.trimmed());
    QCOMPARE(errorCode(output.at(1)), 1);
    QCOMPARE(object(output.at(1)).value(QLatin1String("file")).toString(), missing);
    QCOMPARE(packageName(output.at(2)), QStringLiteral("org.last"));
    QCOMPARE(QString::fromUtf8(result.errors),
             QStringLiteral(
                 "sorrel: %1: could not open APK file\nsorrel: %2/missing\ufffd[2J.apk: could not open APK file\n")
                 .arg(bad, m_directory.path()));
}

void TestScanCommand::directoriesThatCannotBeReadAreTold()
{
    write(QStringLiteral("locked/inside/a.apk"), good(QStringLiteral("org.inside")));
    write(QStringLiteral("locked/b.apk"), good(QStringLiteral("org.outside")));
    const QString inside = m_directory.filePath(QStringLiteral("locked/inside"));
    QVERIFY(QFile::setPermissions(inside, QFile::Permissions()));
    // The superuser can read everything until it gives up that capability.
    const QStringList scan{QStringLiteral("sorrel"), QStringLiteral("scan"),
                           m_directory.filePath(QStringLiteral("locked"))};
    const ToolRun result = geteuid() == 0
                               ? runTool(QStringLiteral("setpriv"),
                                         QStringList{QStringLiteral("--bounding-set"), QStringLiteral("-all")} + scan)
                               : runTool(scan.constFirst(), scan.mid(1));
    QVERIFY(QFile::setPermissions(inside, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(QString::fromUtf8(result.errors),
             QStringLiteral("sorrel: %1: the directory cannot be read\n").arg(inside));
    QCOMPARE(result.status, 1);
    QCOMPARE(packageNames(result.output), QStringList{QStringLiteral("org.outside")});
}

// The worker has read some files of its queue, and others wait in it.
void TestScanCommand::aFileThatTakesTooLongCostsItself()
{
    const QString hostile = write(QStringLiteral("time/x.apk"), slow());
    const ToolRun result = runSorrel(
        QStringList{QStringLiteral("scan"), QStringLiteral("-j1"), QStringLiteral("--timeout"), QStringLiteral("3")}
        + aroundTheMiddle(hostile));
    QCOMPARE(result.status, 1);
    QCOMPARE(packageNames(result.output), aroundTheMiddle(QString(), QStringLiteral("org.p%1")));
    QCOMPARE(errorCode(lines(result.output).at(20)), 101);
    QCOMPARE(object(lines(result.output).at(20)).value(QLatin1String("file")).toString(), hostile);
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1: reading took too long\n").arg(hostile));
}

void TestScanCommand::aFileThatTakesTooMuchMemoryCostsItself()
{
    if (!canLimitMemory)
        QSKIP("a program with a sanitizer in it has no limit of memory", "the macro wants a second argument");
    const QString hostile = write(QStringLiteral("memory/x.apk"), large());
    const ToolRun result = runSorrel(
        QStringList{QStringLiteral("scan"), QStringLiteral("-j1"), QStringLiteral("--max-memory"), QStringLiteral("64")}
        + aroundTheMiddle(hostile));
    QCOMPARE(result.status, 1);
    QCOMPARE(packageNames(result.output), aroundTheMiddle(QString(), QStringLiteral("org.p%1")));
    QCOMPARE(errorCode(lines(result.output).at(20)), 102);
    QCOMPARE(QString::fromUtf8(result.errors),
             QStringLiteral("sorrel: %1: reading took too much memory\n").arg(hostile));
    // With a higher limit, the file is read as far as possible.
    const ToolRun more =
        runSorrel({QStringLiteral("scan"), QStringLiteral("--max-memory"), QStringLiteral("1024"), hostile});
    QCOMPARE(packageName(more.output), QStringLiteral("org.large"));
}

void TestScanCommand::aWorkerThatDiesCostsItsFile()
{
    const QString file =
        write(QStringLiteral("dying.apk"), package(emptyTable(), manifest(QStringLiteral("org.dying"), 200)));
    constexpr int count = 300;
    QProcess scan;
    scan.start(QStringLiteral("sorrel"), {QStringLiteral("scan"), QStringLiteral("-j2"), QStringLiteral("-")});
    scan.write((file.toUtf8() + '\n').repeated(count));
    scan.closeWriteChannel();
    // Sometimes a worker dies between two files, which costs no file.
    int killed = 0;
    while (scan.state() != QProcess::NotRunning) {
        if (scan.waitForReadyRead(20) || killed == 0) {
            for (qint64 worker : childrenOf(scan.processId()))
                killed += worker > 0 && killed < 10 && kill(pid_t(worker), SIGKILL) == 0 ? 1 : 0;
        }
        QVERIFY(scan.state() == QProcess::NotRunning || !scan.waitForFinished(0));
    }
    QCOMPARE(scan.exitStatus(), QProcess::NormalExit);
    QCOMPARE(scan.exitCode(), 1);
    int died = 0;
    const QList<QByteArray> output = lines(scan.readAllStandardOutput());
    QCOMPARE(output.size(), count);
    for (const QByteArray &line : output) {
        const int code = errorCode(line);
        QVERIFY(code == 0 || code == 103);
        QCOMPARE(packageName(line), code == 0 ? QStringLiteral("org.dying") : QString());
        died += code == 103 ? 1 : 0;
    }
    QVERIFY(died > 0);
    QVERIFY(died <= killed);
    QCOMPARE(scan.readAllStandardError(),
             ("sorrel: " + file.toUtf8() + ": the process that read it died\n").repeated(died));
}

void TestScanCommand::workersEndWithTheScan_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("TERM") << SIGTERM;
    QTest::newRow("HUP") << SIGHUP;
    QTest::newRow("INT") << SIGINT;
    QTest::newRow("KILL") << SIGKILL;
}

void TestScanCommand::workersEndWithTheScan()
{
    QFETCH(int, signal);
    const QString file =
        write(QStringLiteral("left.apk"), package(emptyTable(), manifest(QStringLiteral("org.left"), 200)));
    QProcess scan;
    scan.start(QStringLiteral("sorrel"), {QStringLiteral("scan"), QStringLiteral("-j1"), QStringLiteral("-")});
    scan.write((file.toUtf8() + '\n').repeated(100000));
    scan.closeWriteChannel();
    QVERIFY(scan.waitForReadyRead());
    const QList<qint64> workers = childrenOf(scan.processId());
    QCOMPARE(workers.size(), 1);
    const auto worker = pid_t(workers.constFirst());
    // A stopped worker does not end by itself, just as one with an endless file.
    QCOMPARE(kill(worker, SIGSTOP), 0);
    QCOMPARE(kill(pid_t(scan.processId()), signal), 0);
    QVERIFY(scan.waitForFinished());
    const bool isGone = QTest::qWaitFor([=] { return !isRunning(worker); }, WatchdogMs);
    if (!isGone)
        kill(worker, SIGKILL);
    QVERIFY(isGone);
}

// The parent may end before the worker asks the kernel for a signal at the parent's end.
void TestScanCommand::aWorkerWhoseParentIsGoneReadsNothing()
{
    const QString file = write(QStringLiteral("orphan.apk"), good(QStringLiteral("org.orphan")));
    const QString zero = QStringLiteral("0");
    const QStringList worker{QStringLiteral("worker"), zero, zero, zero, zero, zero, zero, zero, zero, zero};
    ToolSetting setting;
    setting.input = file.toUtf8() + '\0';
    const ToolRun orphan = runSorrel(worker + QStringList(QStringLiteral("1")), setting);
    QCOMPARE(orphan.status, 1);
    QCOMPARE(orphan.output, QByteArray());
    const ToolRun child = runSorrel(worker + QStringList(QString::number(QCoreApplication::applicationPid())), setting);
    QCOMPARE(child.status, 0);
    QVERIFY(child.output.startsWith("0 {"));
}

void TestScanCommand::aReaderThatGoesAwayEndsTheScan()
{
    const QString file =
        write(QStringLiteral("many.apk"), package(emptyTable(), manifest(QStringLiteral("org.many"), 200)));
    ToolSetting setting;
    setting.input = (file.toUtf8() + '\n').repeated(200000);
    const ToolRun result =
        runTool(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("sorrel scan - | head -n 1")}, setting);
    QCOMPARE(packageNames(result.output), QStringList{QStringLiteral("org.many")});
    QCOMPARE(result.errors, QByteArray("sorrel: standard output: Broken pipe\n"));
}

void TestScanCommand::outputThatCannotBeWritten()
{
    ToolSetting toFullDisk;
    toFullDisk.outputFile = QStringLiteral("/dev/full");
    const ToolRun result = runSorrel({QStringLiteral("scan"), m_shelf}, toFullDisk);
    QCOMPARE(result.status, 1);
    QCOMPARE(result.errors, QByteArray("sorrel: standard output: No space left on device\n"));
}

void TestScanCommand::progressOnATerminal()
{
    const ToolRun shown = runSorrelOnTerminal({QStringLiteral("scan"), m_shelf});
    QCOMPARE(shown.status, 0);
    QVERIFY(shown.output.contains("\r\033[K["));
    QVERIFY(QRegularExpression(QStringLiteral("\\[#*\\.*\\] \\d+/40 +\\d+ %  \\d+/s  \\d+:\\d\\d left"))
                .match(QString::fromUtf8(shown.output))
                .hasMatch());
    int reports = 0;
    for (const QByteArray &line : lines(shown.output)) {
        if (line.contains('{')) {
            QVERIFY2(errorCode(line.mid(line.indexOf('{')).trimmed()) == 0, line.constData());
            ++reports;
        }
    }
    QCOMPARE(reports, 40);
    const ToolRun notShown = runSorrelOnTerminal({QStringLiteral("scan"), QStringLiteral("--no-progress"), m_shelf});
    QVERIFY(!notShown.output.contains('\033'));
    QCOMPARE(lines(notShown.output).size(), 40);
    QVERIFY(!runSorrel({QStringLiteral("scan"), m_shelf}).errors.contains('\033'));
}

void TestScanCommand::wrongUsage_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *option, const char *value, const char *text) {
        QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(QLatin1String(option), QLatin1String(value))))
            << QStringList{QLatin1String(option), QLatin1String(value)} << text;
    };
    row("-j", "0", "--jobs is a number from 1 to 1024, not '0'.");
    row("-j", "many", "--jobs is a number from 1 to 1024, not 'many'.");
    row("--jobs", "1025", "--jobs is a number from 1 to 1024, not '1025'.");
    row("--max-memory", "31", "--max-memory is a number from 32 to 1048576, not '31'.");
    row("--timeout", "0", "--timeout is a number from 0.001 to 86400, not '0'.");
    row("--timeout", "-1", "--timeout is a number from 0.001 to 86400, not '-1'.");
    row("--timeout", "nan", "--timeout is a number from 0.001 to 86400, not 'nan'.");
    row("--icon", "0", "--icon is a number from 1 to 1024, not '0'.");
    row("--icon", "1025", "--icon is a number from 1 to 1024, not '1025'.");
}

void TestScanCommand::wrongUsage()
{
    QFETCH(QStringList, options);
    QFETCH(QString, text);
    const ToolRun result = runSorrel(QStringList{QStringLiteral("scan")} + options + QStringList{m_shelf});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1\nTry 'sorrel scan --help'.\n").arg(text));
}

QTEST_GUILESS_MAIN(TestScanCommand)
#include "tst_scan_command.moc"
