// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "Tool.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

QByteArray good(const QString &name, const QString &label)
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), name)});
    builder.start(QStringLiteral("application"), {androidText(QStringLiteral("label"), label)});
    builder.start(QStringLiteral("activity"), {androidText(QStringLiteral("name"), QStringLiteral(".Main"))});
    builder.launcherFilter().end(QStringLiteral("activity"));
    const QByteArray manifest = builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
    return package(emptyTable(), manifest);
}

QList<QByteArray> linesOf(const ToolRun &run)
{
    QList<QByteArray> lines = run.output.split('\n');
    lines.removeLast();
    return lines;
}

} // namespace

/// `sorrel find`, and the option `--index` of `scan` and `catalog`.
class TestFindCommand : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void findsWhatWasScanned();
    void textsOfStrangers();
    void linesAreThoseOfAScan();
    void relativePaths();
    void onlyChangedPackagesAreRead();
    void aBrokenPackage();
    void theIndexOfTheUser();
    void anIndexThatCannotBeWritten();
    void anIndexOfAnotherProgram();
    void aMissingIndex();
    void theCatalogue();
    void wrongUsage();

private:
    QString path(const char *name) const { return m_directory->filePath(QString::fromLatin1(name)); }
    QString packages() const { return path("packages"); }
    QString index() const { return path("shelf.db"); }
    ToolRun scan(const QStringList &options = {}) const
    {
        return runSorrel(QStringList{QStringLiteral("scan"), QStringLiteral("--index"), index()} + options
                         + QStringList{packages()});
    }
    ToolRun find(const QStringList &words) const
    {
        return runSorrel(QStringList{QStringLiteral("find"), QStringLiteral("--index=") + index()} + words);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestFindCommand::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    writeFile(path("packages/a.apk"), good(QStringLiteral("org.example.apple"), QString::fromUtf8("Äpfel")));
    writeFile(path("packages/b.apk"), good(QStringLiteral("org.example.pear"), QStringLiteral("Birnen")));
}

void TestFindCommand::findsWhatWasScanned()
{
    const ToolRun scanned = scan();
    QCOMPARE(scanned.errors, QByteArray());
    QCOMPARE(scanned.status, 0);
    const ToolRun found = find({QStringLiteral("apfel")});
    QCOMPARE(found.errors, QByteArray());
    QCOMPARE(found.status, 0);
    QCOMPARE(found.output, "Äpfel\torg.example.apple\t" + path("packages/a.apk").toUtf8() + "\n");
    QCOMPARE(linesOf(find({QStringLiteral("org.example")})).size(), 2);
    const ToolRun nothing = find({QStringLiteral("apfel"), QStringLiteral("birnen")});
    QCOMPARE(nothing.output, QByteArray());
    QCOMPARE(nothing.errors, QByteArray());
    QCOMPARE(nothing.status, 1);
}

void TestFindCommand::textsOfStrangers()
{
    writeFile(path("packages/c.apk"),
              good(QStringLiteral("org.example.bad"), QString::fromUtf8("Evil\x1b[31m\n\ttext")));
    QCOMPARE(scan().status, 0);
    const ToolRun found = find({QStringLiteral("evil")});
    QCOMPARE(linesOf(found).size(), 1);
    QVERIFY(!found.output.contains('\x1b'));
    QCOMPARE(found.output.count('\t'), 2);
}

void TestFindCommand::linesAreThoseOfAScan()
{
    const QByteArray plain = runSorrel({QStringLiteral("scan"), QStringLiteral("--ordered"), packages()}).output;
    QCOMPARE(scan().output, plain);
    QCOMPARE(scan().output, plain);
    const QByteArray linted =
        runSorrel({QStringLiteral("scan"), QStringLiteral("--ordered"), QStringLiteral("--lint"), packages()}).output;
    QVERIFY(linted != plain);
    QCOMPARE(scan({QStringLiteral("--lint")}).output, linted);
    QCOMPARE(scan().output, plain);
}

void TestFindCommand::relativePaths()
{
    QCOMPARE(scan().status, 0);
    ToolSetting setting;
    setting.directory = m_directory->path();
    const QString folder = QStringLiteral("packages");
    const ToolRun plain = runSorrel({QStringLiteral("scan"), QStringLiteral("--ordered"), folder}, setting);
    const ToolRun indexed =
        runSorrel({QStringLiteral("scan"), QStringLiteral("--index"), QStringLiteral("shelf.db"), folder}, setting);
    QCOMPARE(indexed.output, plain.output);
    QCOMPARE(linesOf(find({QStringLiteral("org.example")})).size(), 2);
}

void TestFindCommand::onlyChangedPackagesAreRead()
{
    QCOMPARE(scan().status, 0);
    writeFile(path("packages/b.apk"), good(QStringLiteral("org.example.pear"), QStringLiteral("Neue Birnen")));
    QVERIFY(QFile::remove(path("packages/a.apk")));
    const ToolRun again = scan();
    QCOMPARE(linesOf(again).size(), 1);
    QVERIFY(again.output.contains("Neue Birnen"));
    QCOMPARE(find({QStringLiteral("apfel")}).output, QByteArray());
}

void TestFindCommand::aBrokenPackage()
{
    writeFile(path("packages/broken.apk"), "no package");
    for (int i = 0; i < 2; ++i) {
        const ToolRun run = scan();
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors, "sorrel: " + path("packages/broken.apk").toUtf8() + ": could not open APK file\n");
        QCOMPARE(linesOf(run).size(), 3);
    }
    const ToolRun missing = scan({path("packages/missing.apk")});
    QCOMPARE(missing.status, 1);
    QCOMPARE(linesOf(missing).size(), 4);
    QVERIFY(missing.errors.contains("missing.apk: could not open APK file\n"));
}

void TestFindCommand::theIndexOfTheUser()
{
    ToolSetting setting;
    setting.environment.insert(QStringLiteral("XDG_CACHE_HOME"), path("cache"));
    QVERIFY(QDir(m_directory->path()).mkpath(QStringLiteral("cache/sorrel")));
    QCOMPARE(runSorrel({QStringLiteral("scan"), QStringLiteral("--index"), path("cache/sorrel/shelf.db"), packages()},
                       setting)
                 .status,
             0);
    const ToolRun found = runSorrel({QStringLiteral("find"), QStringLiteral("birnen")}, setting);
    QCOMPARE(found.status, 0);
    QVERIFY(found.output.startsWith("Birnen\torg.example.pear\t"));
}

// The packages are read as without an index.
void TestFindCommand::anIndexThatCannotBeWritten()
{
    const QString file = writeFile(path("file"), "no folder") + QStringLiteral("/shelf.db");
    const ToolRun run = runSorrel({QStringLiteral("scan"), QStringLiteral("--index"), file, packages()});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.errors, "sorrel: index: " + file.toUtf8() + " cannot be made: the folder cannot be written\n");
    QCOMPARE(linesOf(run).size(), 2);
}

void TestFindCommand::anIndexOfAnotherProgram()
{
    writeFile(index(), QByteArray(1000, 'x'));
    const ToolRun run = scan();
    QCOMPARE(run.status, 0);
    QVERIFY2(run.errors.startsWith("sorrel: index: " + index().toUtf8()) && run.errors.endsWith(".2 is used instead\n"),
             run.errors.constData());
    QCOMPARE(linesOf(run).size(), 2);
    QVERIFY(QFile::exists(index() + QStringLiteral(".2")));
}

void TestFindCommand::aMissingIndex()
{
    const ToolRun run = find({QStringLiteral("word")});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.errors, "sorrel: index: " + index().toUtf8() + " does not exist\n");
    QVERIFY(!QFile::exists(index()));
}

void TestFindCommand::theCatalogue()
{
    const auto catalogue = [this](const QStringList &options) {
        const QString page = path("page.html");
        const ToolRun run = runSorrel(QStringList{QStringLiteral("catalog"), QStringLiteral("-o"), page} + options
                                      + QStringList{packages()});
        QFile file(page);
        return run.status == 0 && file.open(QIODevice::ReadOnly) ? file.readAll() : run.errors;
    };
    const QByteArray plain = catalogue({});
    QVERIFY(plain.contains("Birnen"));
    QCOMPARE(catalogue({QStringLiteral("--index"), index()}), plain);
    QCOMPARE(catalogue({QStringLiteral("--index"), index()}), plain);
}

void TestFindCommand::wrongUsage()
{
    const ToolRun run = scan({QStringLiteral("--all")});
    QCOMPARE(run.status, 2);
    QVERIFY(run.errors.contains("'--all' and '--index' cannot be used together."));
    QCOMPARE(runSorrel({QStringLiteral("find")}).status, 2);
}

QTEST_GUILESS_MAIN(TestFindCommand)
#include "tst_find_command.moc"
