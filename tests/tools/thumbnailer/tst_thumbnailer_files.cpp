// SPDX-License-Identifier: LGPL-2.1-or-later
#include "MemoryLimit.h"
#include "ThumbnailerRun.h"

#include <QFileInfo>
#include <QImage>
#include <QtTest>

#include <unistd.h>

using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

// Lines of Bash that wait until $thumbnailer starts to write. From then on it ignores SIGXCPU.
QString waitUntilItWrites()
{
    return latin(
        "until (( 0x$(awk '/^SigIgn/ { print $2 }' /proc/$thumbnailer/status || echo 0) & 1 << $(kill -l XCPU) - 1 ))\n"
        "do kill -0 $thumbnailer || exit 100; sleep 0.01; done\n");
}

} // namespace

class TestThumbnailerFiles : public QObject
{
    Q_OBJECT

private slots:
    void fileUris_data();
    void fileUris();
    void outputIsReplaced();
    void outputBehindALink();
    void aPackageIsNotReplacedByItsThumbnail();
    void outputIsTheOnlyFile();
    void unreadableInputs_data();
    void unreadableInputs();
    void unwritableOutputs_data();
    void unwritableOutputs();
    void partOfAFileIsRemoved();
    void partOfAFileThatWasThereIsRemoved();
    void standardOutputThatCannotBeWritten();
    void limitsOfTimeAndMemory();
    void tooMuchTime();
    void tooMuchTimeWhileWriting();
    void tooMuchMemory();
    void names_data();
    void names();
    void namesAreShownWithoutControlCharacters();
};

void TestThumbnailerFiles::fileUris_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("uri");
    QTest::addColumn<int>("status");
    const auto row = [](const char *what, const char *name, const char *uri, int status = 0) {
        QTest::newRow(what) << QByteArray(name) << QByteArray(uri) << status;
    };
    row("plain", "a.apk", "file://DIR/a.apk");
    row("encoded", "a b%41#?.apk", "file://DIR/a%20b%2541%23%3f.apk");
    row("UTF-8", "\xc3\xbc.apk", "file://DIR/%C3%BC.apk");
    row("no UTF-8", "\xfc.apk", "file://DIR/%FC.apk");
    row("not encoded", "\xc3\xbc +.apk", "file://DIR/\xc3\xbc +.apk");
    row("this machine", "a.apk", "file://localhostDIR/a.apk");
    row("scheme in capitals", "a.apk", "FILE://DIR/a.apk");
    row("another machine", "a.apk", "file://example.orgDIR/a.apk", 1);
    row("a machine that begins alike", "a.apk", "file://localhost.example.orgDIR/a.apk", 1);
    row("relative", "a.apk", "file://a.apk", 1);
    row("ends early", "a.apk", "file://DIR/a.apk%00.apk", 1);
    row("nothing", "a.apk", "file://", 1);
    row("decoded once", "a.apk", "file://DIR/%2561.apk", 1);
}

void TestThumbnailerFiles::fileUris()
{
    const ThumbnailerRun place;
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, uri);
    QFETCH(int, status);
    place.write(QString::fromLatin1(name), ThumbnailerRun::iconPackage());
    uri.replace("DIR", place.path().toLatin1());
    const Run result = place.run({QString::fromLatin1(uri), latin("icon.png")});
    QCOMPARE(result.status, status);
    QCOMPARE(QFile::exists(place.path(latin("icon.png"))), status == 0);
    QCOMPARE(result.errors.isEmpty(), status == 0);
}

void TestThumbnailerFiles::outputIsReplaced()
{
    const ThumbnailerRun place;
    place.write(latin("icon.png"), QByteArray(1 << 16, 'x'));
    QCOMPARE(place.run({ThumbnailerRun::sample("notes.aapt2.apk"), place.path(latin("icon.png"))}).status, 0);
    QCOMPARE(ThumbnailerRun::contentOf(place.path(latin("icon.png"))),
             place.run({ThumbnailerRun::sample("notes.aapt2.apk"), latin("-")}).output);
}

void TestThumbnailerFiles::outputBehindALink()
{
    const ThumbnailerRun place;
    place.write(latin("target"), "x");
    QVERIFY(QFile::link(latin("target"), place.path(latin("link"))));
    QCOMPARE(place.run({ThumbnailerRun::sample("notes.aapt2.apk"), place.path(latin("link"))}).status, 0);
    QCOMPARE(ThumbnailerRun::contentOf(place.path(latin("target"))),
             place.run({ThumbnailerRun::sample("notes.aapt2.apk"), latin("-")}).output);
    QVERIFY(QFileInfo(place.path(latin("link"))).isSymLink());
}

void TestThumbnailerFiles::aPackageIsNotReplacedByItsThumbnail()
{
    const ThumbnailerRun place;
    const QByteArray bytes = ThumbnailerRun::iconPackage();
    place.write(latin("a.apk"), bytes);
    QVERIFY(QFile::link(latin("a.apk"), place.path(latin("link"))));
    QCOMPARE(::link(place.path(latin("a.apk")).toLatin1(), place.path(latin("twin")).toLatin1()), 0);
    for (const char *output : {"a.apk", "./a.apk", "link", "twin"}) {
        const Run result = place.run({latin("a.apk"), latin(output)});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors, QByteArray("sorrel-thumbnailer: a.apk: the thumbnail would replace the package\n"));
        QCOMPARE(ThumbnailerRun::contentOf(place.path(latin("a.apk"))), bytes);
    }
}

void TestThumbnailerFiles::outputIsTheOnlyFile()
{
    const ThumbnailerRun place;
    QCOMPARE(place.run({ThumbnailerRun::sample("babel.aapt2.apk"), latin("no extension")}).status, 0);
    QCOMPARE(place.files(), QStringList{latin("no extension")});
    QVERIFY(ThumbnailerRun::contentOf(place.path(latin("no extension"))).startsWith("\x89PNG"));
}

void TestThumbnailerFiles::unreadableInputs_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("text");
    const QByteArray good = ThumbnailerRun::iconPackage();
    QTest::newRow("empty") << QByteArray("") << QByteArray("could not open APK file");
    QTest::newRow("no archive") << QByteArray("nothing of the kind") << QByteArray("could not open APK file");
    QTest::newRow("ends early") << good.left(good.size() / 2) << QByteArray("could not open APK file");
    QTest::newRow("no manifest") << zip({{latin("resources.arsc"), emptyTable()}})
                                 << QByteArray("could not find AndroidManifest.xml");
    QTest::newRow("damaged manifest") << package(emptyTable(), "<manifest/>")
                                      << QByteArray("could not parse AndroidManifest.xml: not a binary XML document");
    QTest::newRow("damaged table") << package(emptyTable().chopped(1), smallManifest())
                                   << QByteArray("could not parse resources.arsc: not a resource table");
    QTest::newRow("no icon") << package(emptyTable(), smallManifest()) << QByteArray("there is no icon");
    QTest::newRow("set without a base")
        << zip({{latin("split_config.de.apk"), ThumbnailerRun::contentOf(ThumbnailerRun::sample("babel.de.apk"))}})
        << QByteArray("could not find AndroidManifest.xml: the set has no base package");
}

void TestThumbnailerFiles::unreadableInputs()
{
    const ThumbnailerRun place;
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, text);
    const QString file = place.write(latin("bad.apk"), content);
    const QByteArray line = "sorrel-thumbnailer: " + file.toLatin1() + ": " + text + "\n";
    const Run result = place.run({file, place.path(latin("icon.png"))});
    QCOMPARE(result.errors, line);
    QCOMPARE(result.status, 1);
    QCOMPARE(place.files(), QStringList{latin("bad.apk")});
    QCOMPARE(place.run({file, latin("-")}).output, QByteArray());
    // An existing file stays unchanged.
    place.write(latin("icon.png"), "kept");
    QCOMPARE(place.run({file, place.path(latin("icon.png"))}).status, 1);
    QCOMPARE(ThumbnailerRun::contentOf(place.path(latin("icon.png"))), QByteArray("kept"));
}

void TestThumbnailerFiles::unwritableOutputs_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("full device") << "/dev/full" << QByteArray("No space left on device");
    QTest::newRow("missing directory") << "missing/icon.png" << QByteArray("No such file or directory");
    QTest::newRow("below a file") << "file/icon.png" << QByteArray("Not a directory");
    QTest::newRow("link to nowhere") << "link" << QByteArray("File exists");
    QTest::newRow("too long a name") << QString(300, QLatin1Char('x')) << QByteArray("File name too long");
}

void TestThumbnailerFiles::unwritableOutputs()
{
    const ThumbnailerRun place;
    QFETCH(QString, output);
    QFETCH(QByteArray, text);
    place.write(latin("file"), "kept");
    QVERIFY(QFile::link(latin("nowhere"), place.path(latin("link"))));
    const Run result = place.run({ThumbnailerRun::sample("notes.aapt2.apk"), output});
    QCOMPARE(result.errors, QByteArray("sorrel-thumbnailer: " + output.toLatin1() + ": " + text + "\n"));
    QCOMPARE(result.status, 1);
    QCOMPARE(place.files(), QStringList({latin("file"), latin("link")}));
    QCOMPARE(ThumbnailerRun::contentOf(place.path(latin("file"))), QByteArray("kept"));
    QCOMPARE(place.run({ThumbnailerRun::sample("notes.aapt2.apk"), place.path()}).status, 1);
}

void TestThumbnailerFiles::partOfAFileIsRemoved()
{
    const ThumbnailerRun place;
    const QString script =
        latin("ulimit -f 1; sorrel-thumbnailer -s 1024 '%1' icon.png").arg(ThumbnailerRun::sample("gallery.aapt2.apk"));
    QVERIFY(
        place.run({latin("-s"), latin("1024"), ThumbnailerRun::sample("gallery.aapt2.apk"), latin("-")}).output.size()
        > 1024);
    const Run result = place.shell(script);
    QCOMPARE(result.errors, QByteArray("sorrel-thumbnailer: icon.png: File too large\n"));
    QCOMPARE(result.status, 1);
    QCOMPARE(place.files(), QStringList());
}

void TestThumbnailerFiles::partOfAFileThatWasThereIsRemoved()
{
    const ThumbnailerRun place;
    place.write(latin("icon.png"), "old");
    const QString script =
        latin("ulimit -f 1; sorrel-thumbnailer -s 1024 '%1' icon.png").arg(ThumbnailerRun::sample("gallery.aapt2.apk"));
    QCOMPARE(place.shell(script).status, 1);
    QCOMPARE(place.files(), QStringList{latin("icon.png")});
    QCOMPARE(ThumbnailerRun::contentOf(place.path(latin("icon.png"))), QByteArray());
}

void TestThumbnailerFiles::standardOutputThatCannotBeWritten()
{
    const ThumbnailerRun place;
    const Run result =
        place.shell(latin("sorrel-thumbnailer '%1' - > /dev/full").arg(ThumbnailerRun::sample("notes.aapt2.apk")));
    QCOMPARE(result.errors, QByteArray("sorrel-thumbnailer: standard output: No space left on device\n"));
    QCOMPARE(result.status, 1);
    const Run closed =
        place.shell(latin("sorrel-thumbnailer '%1' - >&-").arg(ThumbnailerRun::sample("notes.aapt2.apk")));
    QCOMPARE(closed.status, 1);
    QVERIFY(closed.errors.startsWith("sorrel-thumbnailer: standard output: "));
    QCOMPARE(closed.errors.count('\n'), 1);
}

// Without a reader of the pipe, the program blocks in its write.
void TestThumbnailerFiles::limitsOfTimeAndMemory()
{
    const ThumbnailerRun place;
    place.write(latin("a.apk"), ThumbnailerRun::iconPackage());
    const Run result =
        place.shell(latin("mkfifo icon.png; sorrel-thumbnailer a.apk icon.png & thumbnailer=$!\n") + waitUntilItWrites()
                    + latin("awk '/^Max (cpu time|data size)/ { print $4 }' /proc/$thumbnailer/limits\n"
                            "cat icon.png >/dev/null; wait $thumbnailer"));
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    const QByteArray memory = canLimitMemory ? QByteArray::number(1 << 30) : "unlimited";
    QCOMPARE(result.output, "60\n" + memory + '\n');
}

// The signal is pending before the program starts: it was sent to a program that blocked it and then executed this one.
// The kernel delivers it at the first step.
void TestThumbnailerFiles::tooMuchTime()
{
    const ThumbnailerRun place;
    place.write(latin("a\x1b.apk"), ThumbnailerRun::iconPackage());
    const QString script = latin("exec python3 -c \"import os, signal\n"
                                 "signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGXCPU])\n"
                                 "os.kill(os.getpid(), signal.SIGXCPU)\n"
                                 "os.execvp('sorrel-thumbnailer', ['sorrel-thumbnailer', 'a\x1b.apk', 'icon.png'])\"");
    const Run result = place.shell(script);
    QCOMPARE(result.errors, QByteArray("sorrel-thumbnailer: a\xef\xbf\xbd.apk: reading took too long\n"));
    QCOMPARE(result.status, 1);
    QCOMPARE(place.files(), QStringList{latin("a\x1b.apk")});
}

void TestThumbnailerFiles::tooMuchTimeWhileWriting()
{
    const ThumbnailerRun place;
    place.write(latin("a.apk"), ThumbnailerRun::iconPackage());
    const Run result =
        place.shell(latin("mkfifo icon.png; sorrel-thumbnailer a.apk icon.png & thumbnailer=$!\n") + waitUntilItWrites()
                    + latin("kill -XCPU $thumbnailer; cat icon.png; wait $thumbnailer"));
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QCOMPARE(result.output, place.run({latin("a.apk"), latin("-")}).output);
}

void TestThumbnailerFiles::tooMuchMemory()
{
    if (!canLimitMemory)
        QSKIP("a program with a sanitizer in it has no limit of memory", "the macro wants a second argument");
    const ThumbnailerRun place;
    // The table inflates to a thousand times its size.
    place.write(latin("large.apk"), package(QByteArray(100 << 20, '\0'), smallManifest()));
    // A lower limit that exists already stays.
    const Run result = place.shell(latin("ulimit -S -d 65536; sorrel-thumbnailer large.apk icon.png"));
    QCOMPARE(result.errors, QByteArray("sorrel-thumbnailer: large.apk: reading took too much memory\n"));
    QCOMPARE(result.status, 1);
    QCOMPARE(place.files(), QStringList{latin("large.apk")});
}

void TestThumbnailerFiles::names_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("spaces") << QByteArray(" a b ");
    QTest::newRow("UTF-8") << QByteArray("\xe5\x9b\xbe\xf0\x9f\x97\xbc");
    QTest::newRow("no UTF-8") << QByteArray("\xff\xfe\x80");
    QTest::newRow("control characters") << QByteArray("\x1b[2J\n\r\x07\x7f");
    QTest::newRow("Qt's resources") << QByteArray(":a");
    QTest::newRow("Qt's search path") << QByteArray("qrc:a");
    QTest::newRow("scheme without slashes") << QByteArray("file:a");
    QTest::newRow("percent") << QByteArray("%s%n%41");
    QTest::newRow("option") << QByteArray("--help");
    QTest::newRow("short option") << QByteArray("-s");
    QTest::newRow("quotes") << QByteArray("'\"`$(id)`;&|<>*?\\");
    QTest::newRow("longest") << QByteArray(251, 'x');
}

void TestThumbnailerFiles::names()
{
    const ThumbnailerRun place;
    QFETCH(QByteArray, name);
    const QString input = QString::fromLatin1(name + ".apk");
    const QString output = QString::fromLatin1(name + ".png");
    place.write(input, ThumbnailerRun::iconPackage());
    for (const char *locale : {"C", "C.UTF-8"}) {
        const Run result = place.run({latin("--"), input, output}, locale);
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 0);
        QStringList expected{input, output};
        expected.sort();
        QStringList actual = place.files();
        actual.sort();
        QCOMPARE(actual, expected);
        QCOMPARE(QImage::fromData(ThumbnailerRun::contentOf(place.path(output))).pixel(128, 128),
                 ThumbnailerRun::IconColor);
    }
}

void TestThumbnailerFiles::namesAreShownWithoutControlCharacters()
{
    const ThumbnailerRun place;
    const QByteArray name = "a\x1b[2Jb\nc\xe2\x80\xae"
                            "d\xff\xc3\xbc";
    const QByteArray shown = "a\xef\xbf\xbd[2Jb\xef\xbf\xbd"
                             "c\xef\xbf\xbd"
                             "d\xef\xbf\xbd\xc3\xbc";
    for (const char *locale : {"C", "C.UTF-8"}) {
        const Run input = place.run({QString::fromLatin1(name), latin("icon.png")}, locale);
        QCOMPARE(input.errors, QByteArray("sorrel-thumbnailer: " + shown + ": could not open APK file\n"));
        const Run output =
            place.run({ThumbnailerRun::sample("notes.aapt2.apk"), QString::fromLatin1(name + "/x")}, locale);
        QCOMPARE(output.errors, QByteArray("sorrel-thumbnailer: " + shown + "/x: No such file or directory\n"));
        const Run option = place.run({QString::fromLatin1("--" + name)}, locale);
        QCOMPARE(option.status, 2);
        QVERIFY2(option.errors.contains(shown), option.errors.constData());
        QCOMPARE(option.errors.count('\n'), 2);
    }
}

QTEST_GUILESS_MAIN(TestThumbnailerFiles)
#include "tst_thumbnailer_files.moc"
