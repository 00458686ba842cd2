// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "Tool.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

QByteArray good(const QString &name, const QString &label)
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), name)});
    builder.start(QStringLiteral("application"));
    builder.start(QStringLiteral("activity"), {androidText(QStringLiteral("name"), QStringLiteral(".Main")),
                                               androidText(QStringLiteral("label"), label),
                                               androidText(QStringLiteral("icon"), QStringLiteral("icon.png"))});
    builder.launcherFilter().end(QStringLiteral("activity"));
    builder.end(QStringLiteral("application")).end(QStringLiteral("manifest"));
    return package(emptyTable(), builder.build(), {{QStringLiteral("icon.png"), picture(48, 48, 0xff336699)}});
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestCatalogCommand : public QObject
{
    Q_OBJECT

private slots:
    void aPageOfAllPackages();
    void packagesThatCannotBeReadAreOnItToo();
    void packagesWhoseNamesAreNoTextAreOnItToo();
    void theSamePageEachTime();
    void whatIsHostileStaysText();
    void aPackageIsNotReplacedByThePage();
    void anOldPageIsKeptWhenThereIsNoNewOne();
    void outputThatCannotBeWritten();
    void wrongUsage_data();
    void wrongUsage();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }
    QString page() const { return m_directory.filePath(QStringLiteral("page.html")); }

    QTemporaryDir m_directory;
};

void TestCatalogCommand::aPageOfAllPackages()
{
    const QString shelf =
        QFileInfo(write(QStringLiteral("shelf/b.apk"), good(QStringLiteral("org.b"), QStringLiteral("Bee")))).path();
    write(QStringLiteral("shelf/a/a.apk"), good(QStringLiteral("org.a"), QStringLiteral("Ant")));
    const ToolRun result = runSorrel({QStringLiteral("catalog"), QStringLiteral("-o"), page(),
                                      QStringLiteral("--title"), QStringLiteral("A <shelf>"), shelf});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.status, 0);
    const QByteArray html = contentOf(page());
    QCOMPARE(html.count("data:image/png;base64,"), 2);
    QVERIFY(html.contains("A &lt;shelf&gt;"));
    QVERIFY(html.indexOf("org.b") > 0);
    QVERIFY(html.indexOf("org.b") < html.indexOf("org.a"));

    const ToolRun lint = runTool(QStringLiteral("xmllint"), {QStringLiteral("--noout"), page()});
    QCOMPARE(lint.errors, QByteArray());
    QCOMPARE(lint.status, 0);

    ToolSetting list;
    list.input = (shelf + QStringLiteral("/b.apk\n") + shelf + QStringLiteral("/a\n")).toUtf8();
    const QString listed = m_directory.filePath(QStringLiteral("listed.html"));
    QCOMPARE(runSorrel({QStringLiteral("catalog"), QStringLiteral("-o"), listed, QStringLiteral("--title"),
                        QStringLiteral("A <shelf>"), QStringLiteral("-")},
                       list)
                 .status,
             0);
    QCOMPARE(contentOf(listed), html);
}

void TestCatalogCommand::packagesThatCannotBeReadAreOnItToo()
{
    const QString bad = write(QStringLiteral("bad.apk"), QByteArray("no package"));
    const QString file = write(QStringLiteral("good.apk"), good(QStringLiteral("org.good"), QStringLiteral("Good")));
    const ToolRun result = runSorrel({QStringLiteral("catalog"), QStringLiteral("-o"), page(), bad, file});
    QCOMPARE(result.status, 1);
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1: could not open APK file\n").arg(bad));
    const QByteArray html = contentOf(page());
    QVERIFY(html.contains("could not open APK file"));
    QVERIFY(html.contains("org.good"));
}

void TestCatalogCommand::packagesWhoseNamesAreNoTextAreOnItToo()
{
    write(QStringLiteral("bytes/a"), good(QStringLiteral("org.bytes"), QStringLiteral("Bytes")));
    ToolSetting setting;
    setting.directory = m_directory.filePath(QStringLiteral("bytes"));
    const ToolRun result =
        runShell(QStringLiteral("mkdir shelf; cp a shelf/$'\\xff.apk'; sorrel catalog -o page.html shelf; rm -r shelf"),
                 setting);
    QCOMPARE(result.errors, QByteArray());
    const QByteArray html = contentOf(m_directory.filePath(QStringLiteral("bytes/page.html")));
    QVERIFY(html.contains("org.bytes"));
    QVERIFY(html.contains("title=\"shelf/\xef\xbf\xbd.apk\""));
    QVERIFY(html.contains("1 package"));
}

void TestCatalogCommand::theSamePageEachTime()
{
    QStringList files;
    for (int i = 0; i < 20; ++i)
        files.append(
            write(QStringLiteral("%1.apk").arg(i), good(QStringLiteral("org.p%1").arg(i), QStringLiteral("Label"))));
    QByteArray first;
    for (const char *jobs : {"1", "2", "5"}) {
        QCOMPARE(runSorrel(QStringList{QStringLiteral("catalog"), QStringLiteral("-j"), QLatin1String(jobs),
                                       QStringLiteral("-o"), page()}
                           + files)
                     .status,
                 0);
        if (first.isEmpty())
            first = contentOf(page());
        QVERIFY(!first.isEmpty());
        QCOMPARE(contentOf(page()), first);
    }
}

void TestCatalogCommand::whatIsHostileStaysText()
{
    const QString label = QStringLiteral("</script><script>alert(1)</script>\"'><img src=x onerror=alert(1)>\033[2J\n");
    const QString file = write(QStringLiteral("<b>&'.apk"), good(QStringLiteral("org.<i>"), label));
    QCOMPARE(runSorrel({QStringLiteral("catalog"), QStringLiteral("-o"), page(), file}).status, 0);
    const QByteArray html = contentOf(page());
    for (const char *markup : {"<script>alert", "<img src=x", "<i>", "<b>", "\033"})
        QVERIFY2(!html.contains(markup), markup);
    QVERIFY(html.contains("&lt;img src=x onerror=alert(1)&gt;"));
    QCOMPARE(runTool(QStringLiteral("xmllint"), {QStringLiteral("--noout"), page()}).status, 0);
}

void TestCatalogCommand::aPackageIsNotReplacedByThePage()
{
    const QByteArray bytes = good(QStringLiteral("org.itself"), QStringLiteral("Itself"));
    const QString file = write(QStringLiteral("itself/a.apk"), bytes);
    for (const QString &path : {file, QFileInfo(file).path()}) {
        const ToolRun result = runSorrel({QStringLiteral("catalog"), QStringLiteral("-o"), file, path});
        QCOMPARE(result.status, 2);
        QVERIFY(result.errors.startsWith("sorrel: The page would replace a package.\n"));
        QCOMPARE(contentOf(file), bytes);
    }
}

void TestCatalogCommand::anOldPageIsKeptWhenThereIsNoNewOne()
{
    const QString old = write(QStringLiteral("old.html"), QByteArray("old"));
    QCOMPARE(runSorrel({QStringLiteral("catalog"), QStringLiteral("-o"), old}).status, 2);
    QCOMPARE(contentOf(old), QByteArray("old"));

    // Files are limited to half a kilobyte. The page needs far more.
    const QString file = write(QStringLiteral("good.apk"), good(QStringLiteral("org.good"), QStringLiteral("Good")));
    const ToolRun full = runTool(QStringLiteral("sh"),
                                 {QStringLiteral("-c"), QStringLiteral("ulimit -f 1; trap '' XFSZ; exec sorrel \"$@\""),
                                  QStringLiteral("sh"), QStringLiteral("catalog"), QStringLiteral("-o"), old, file});
    QCOMPARE(full.status, 1);
    QVERIFY(QString::fromUtf8(full.errors).startsWith(QStringLiteral("sorrel: %1: ").arg(old)));
    QCOMPARE(contentOf(old), QByteArray("old"));
}

void TestCatalogCommand::outputThatCannotBeWritten()
{
    const QString file = write(QStringLiteral("good.apk"), good(QStringLiteral("org.good"), QStringLiteral("Good")));
    const QString nowhere = m_directory.filePath(QStringLiteral("nowhere/page.html"));
    const ToolRun missing = runSorrel({QStringLiteral("catalog"), QStringLiteral("-o"), nowhere, file});
    QCOMPARE(missing.status, 1);
    QCOMPARE(QString::fromUtf8(missing.errors), QStringLiteral("sorrel: %1: No such file or directory\n").arg(nowhere));
    const ToolRun full =
        runSorrel({QStringLiteral("catalog"), QStringLiteral("-o"), QStringLiteral("/dev/full"), file});
    QCOMPARE(full.status, 1);
    QCOMPARE(full.errors, QByteArray("sorrel: /dev/full: No space left on device\n"));
}

void TestCatalogCommand::wrongUsage_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("text");
    QTest::newRow("no output") << QStringList() << "'-o' has to name the page's file.";
    QTest::newRow("shape") << QStringList{QStringLiteral("--shape"), QStringLiteral("star")}
                           << "'star' is no shape; there are circle, rounded, squircle and none.";
    QTest::newRow("workers") << QStringList{QStringLiteral("-j0")} << "--jobs is a number from 1 to 1024, not '0'.";
}

void TestCatalogCommand::wrongUsage()
{
    QFETCH(QStringList, options);
    QFETCH(QString, text);
    const ToolRun result =
        runSorrel(QStringList{QStringLiteral("catalog")} + options + QStringList{m_directory.path()});
    QCOMPARE(result.status, 2);
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1\nTry 'sorrel catalog --help'.\n").arg(text));
}

QTEST_GUILESS_MAIN(TestCatalogCommand)
#include "tst_catalog_command.moc"
