// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "Tool.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

/// Offsets of fields in a member's record in the directory, from its signature.
constexpr int FlagsAt = 8;
constexpr int MethodAt = 10;

/// The offset of the directory's record of the @p number-th member.
int directoryRecord(const QByteArray &archive, int number)
{
    int at = -1;
    for (int i = 0; i <= number; ++i)
        at = int(archive.indexOf("PK\001\002", at + 1));
    return at;
}

QList<QJsonObject> objects(const QByteArray &output)
{
    QList<QJsonObject> objects;
    for (const QByteArray &line : output.split('\n')) {
        if (!line.isEmpty())
            objects.append(QJsonDocument::fromJson(line).object());
    }
    return objects;
}

} // namespace

class TestFilesCommand : public QObject
{
    Q_OBJECT

private slots:
    void forAPerson();
    void forAProgram();
    void agreesWithUnzip();
    void namesThatSteerATerminal();
    void encryptedAndOddlyCompressedMembers();
    void unreadableArchives();
    void aDirectoryThatIsCutOff();
    void outputThatCannotBeWritten();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }

    QTemporaryDir m_directory;
};

void TestFilesCommand::forAPerson()
{
    const QString file =
        write(QStringLiteral("a.apk"),
              zip({{QStringLiteral("res/ü.txt"), QByteArray(10000, 'x')}, {QStringLiteral("empty"), QByteArray()}}));
    const ToolRun result = runSorrel({QStringLiteral("files"), file});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.errors, QByteArray());
    const QRegularExpression expected(QStringLiteral("^     10000 +\\d+ deflated  res/ü\\.txt\n"
                                                     "         0          \\d (deflated|stored  )  empty\n$"));
    QVERIFY2(expected.match(QString::fromUtf8(result.output)).hasMatch(), result.output.constData());
}

void TestFilesCommand::forAProgram()
{
    const QString file =
        write(QStringLiteral("b.apk"), zip({{QStringLiteral("a\nb"), QByteArray("123456789")}}, Compression::Stored));
    const ToolRun result = runSorrel({QStringLiteral("files"), QStringLiteral("--json"), file});
    QCOMPARE(result.status, 0);
    const QJsonObject expected{{QStringLiteral("file"), file},
                               {QStringLiteral("path"), QStringLiteral("a\nb")},
                               {QStringLiteral("size"), 9},
                               {QStringLiteral("compressedSize"), 9},
                               {QStringLiteral("method"), QStringLiteral("stored")},
                               // The check value of CRC-32.
                               {QStringLiteral("crc"), qint64(0xcbf43926)},
                               {QStringLiteral("encrypted"), false}};
    QCOMPARE(objects(result.output), QList<QJsonObject>{expected});
}

void TestFilesCommand::agreesWithUnzip()
{
    const QString file = QStringLiteral(SORREL_SAMPLES_DIR "/gallery.aapt2.apk");
    const ToolRun unzip = runTool(QStringLiteral("unzip"), {QStringLiteral("-Z1"), file});
    QVERIFY2(unzip.status == 0, "unzip is missing, or cannot read the sample");
    QByteArray names;
    for (const QJsonObject &member :
         objects(runSorrel({QStringLiteral("files"), QStringLiteral("--json"), file}).output))
        names += member.value(QLatin1String("path")).toString().toUtf8() + '\n';
    QVERIFY(names.count('\n') > 100);
    QCOMPARE(names, unzip.output);
}

void TestFilesCommand::namesThatSteerATerminal()
{
    const QString name = QStringLiteral("a\033[2Jb\nc\u202ed");
    const QString file = write(QStringLiteral("c.apk"), zip({{name, QByteArray("x")}}));
    const ToolRun result = runSorrel({QStringLiteral("files"), file});
    QVERIFY(QString::fromUtf8(result.output).endsWith(QStringLiteral("a\ufffd[2Jb\ufffdc\ufffdd\n")));
    QCOMPARE(result.output.count('\n'), 1);
    const ToolRun json = runSorrel({QStringLiteral("files"), QStringLiteral("--json"), file});
    QCOMPARE(objects(json.output).constFirst().value(QLatin1String("path")).toString(), name);
}

void TestFilesCommand::encryptedAndOddlyCompressedMembers()
{
    QByteArray archive = zip({{QStringLiteral("secret"), QByteArray("x")}, {QStringLiteral("odd"), QByteArray("y")}});
    archive[directoryRecord(archive, 0) + FlagsAt] = char(archive.at(directoryRecord(archive, 0) + FlagsAt) | 1);
    archive[directoryRecord(archive, 1) + MethodAt] = 77;
    const QString file = write(QStringLiteral("d.apk"), archive);
    const ToolRun text = runSorrel({QStringLiteral("files"), file});
    QCOMPARE(text.status, 0);
    QVERIFY(text.output.contains(" secret (encrypted)\n"));
    QVERIFY(text.output.contains(" method-77 odd\n"));
    const QList<QJsonObject> members =
        objects(runSorrel({QStringLiteral("files"), QStringLiteral("--json"), file}).output);
    QCOMPARE(members.at(0).value(QLatin1String("encrypted")).toBool(), true);
    QCOMPARE(members.at(1).value(QLatin1String("encrypted")).toBool(), false);
    QCOMPARE(members.at(1).value(QLatin1String("method")).toString(), QStringLiteral("method-77"));
}

void TestFilesCommand::unreadableArchives()
{
    const QString pipe = m_directory.filePath(QStringLiteral("pipe"));
    QCOMPARE(runTool(QStringLiteral("mkfifo"), {pipe}).status, 0);
    for (const QString &file : {write(QStringLiteral("text.apk"), QByteArray("no archive")), m_directory.path(), pipe,
                                QStringLiteral("/nonexistent")}) {
        const ToolRun result = runSorrel({QStringLiteral("files"), file});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1: could not open APK file\n").arg(file));
    }
}

void TestFilesCommand::aDirectoryThatIsCutOff()
{
    QByteArray archive = zip({{QStringLiteral("one"), QByteArray("x")}, {QStringLiteral("two"), QByteArray("y")}});
    archive[directoryRecord(archive, 1)] = 'Q';
    const QString file = write(QStringLiteral("cut.apk"), archive);
    const ToolRun result = runSorrel({QStringLiteral("files"), file});
    QCOMPARE(result.status, 1);
    QVERIFY(result.output.endsWith(" one\n"));
    QCOMPARE(QString::fromUtf8(result.errors),
             QStringLiteral("sorrel: %1: the archive's directory is damaged after 1 of 2 files\n").arg(file));
}

void TestFilesCommand::outputThatCannotBeWritten()
{
    ToolSetting toFullDisk;
    toFullDisk.outputFile = QStringLiteral("/dev/full");
    const ToolRun result =
        runSorrel({QStringLiteral("files"), QStringLiteral(SORREL_SAMPLES_DIR "/notes.aapt.apk")}, toFullDisk);
    QCOMPARE(result.status, 1);
    QCOMPARE(result.errors, QByteArray("sorrel: standard output: No space left on device\n"));
}

QTEST_GUILESS_MAIN(TestFilesCommand)
#include "tst_files_command.moc"
