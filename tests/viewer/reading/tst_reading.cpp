// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"
#include "Protocol.h"
#include "Reading.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

using namespace fixture;
using Viewer::Reading;

namespace {

constexpr char Hello[] = R"(echo '{"topic":"hello","protocol":1}')";
constexpr char Languages[] = R"(echo '{"topic":"languages","items":[]}')";
constexpr char End[] = R"(echo '{"topic":"end"}')";
/// Far above what any script takes, in milliseconds.
constexpr int Patience = 30000;
/// A line of 4 MB.
constexpr char Manifest[] =
    "printf '{\"topic\":\"manifest\",\"text\":\"'; head -c 4000000 /dev/zero | tr '\\0' a; echo '\"}'";
/// Waits for the end of the input, as the reader does.
constexpr char Wait[] = "cat >/dev/null";

} // namespace

// The readers are scripts, which do what a reader that a package has taken over may do.
class TestReading : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void answers();
    void requests();
    void earlyRequests();
    void hostileReaders_data();
    void hostileReaders();
    void missingReader();
    void linesThatAThreadDecodes();
    void longLineOfAReaderThatEnds();
    void anotherFileDuringALongLine();
    void destructionDuringALongLine();
    void longLineThatIsWrong();
    void longLines();
    void endlessOutput();
    void silence();
    void silenceAfterARequest();
    void noPatienceIsNeededWhenNothingIsDue();
    void memory();
    void errorsOfTheReaderAreDropped();
    void anotherFile();
    void anotherFileInASlot();
    void destructionInASlot();
    void endsTheReader();
    void failsOnce();
    void argumentsOfTheReader();
    void environmentOfTheReader();
    void bubblewrapThatDoesNotWork();

private:
    /// Makes the lines of a shell script the reader.
    void useScript(const QList<QByteArray> &lines);
    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

    QTemporaryDir m_directory;
};

void TestReading::init()
{
    qputenv("SORREL_VIEWER_SANDBOX", "none");
}

void TestReading::useScript(const QList<QByteArray> &lines)
{
    const QString script = writeFile(path("reader"), "#!/bin/sh\n" + lines.join('\n') + '\n');
    QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
    qputenv("SORREL_VIEWER_READER", QFile::encodeName(script));
}

void TestReading::answers()
{
    useScript({Hello, Languages, R"(echo '{"topic":"lint","error":"none","more":"x"}')", End, Wait});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy failed(&reading, &Reading::failed);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("a.apk"));
    QVERIFY(answered.isEmpty());
    QVERIFY(finished.wait(Patience));
    QCOMPARE(answered.size(), 2);
    QCOMPARE(answered.at(0).at(0).toString(), QStringLiteral("languages"));
    QVERIFY(answered.at(0).at(1).toJsonObject().value(QLatin1String("items")).isArray());
    QCOMPARE(answered.at(1).at(0).toString(), QStringLiteral("lint"));
    QCOMPARE(answered.at(1).at(1).toJsonObject(), (QJsonObject{{QStringLiteral("error"), QStringLiteral("none")}}));
    QCOMPARE(failed.size(), 0);
}

void TestReading::requests()
{
    useScript({Hello, End, R"(while read line; do)",
               R"(echo '{"topic":"drawable","name":"'$(echo "$line" | tr -cd a-z)'","size":1,"png":"","error":""}')",
               R"(echo '{"topic":"done"}'; done)"});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("a.apk"));
    QVERIFY(finished.wait(Patience));
    reading.request({{QStringLiteral("want"), QStringLiteral("first")}});
    QVERIFY(answered.wait(Patience));
    reading.request({{QStringLiteral("want"), QStringLiteral("second")}});
    QVERIFY(answered.wait(Patience));
    const auto name = [&](int number) {
        return answered.at(number).at(1).toJsonObject().value(QLatin1String("name")).toString();
    };
    QCOMPARE(name(0), QStringLiteral("wantfirst"));
    QCOMPARE(name(1), QStringLiteral("wantsecond"));
}

void TestReading::earlyRequests()
{
    useScript({Hello, R"(read line; echo '{"topic":"manifest","text":"'$(echo "$line" | tr -cd a-z)'"}')",
               R"(echo '{"topic":"done"}')", End, Wait});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    // Nothing is open.
    reading.request({{QStringLiteral("want"), QStringLiteral("nothing")}});
    reading.open(path("a.apk"));
    reading.request({{QStringLiteral("want"), QStringLiteral("early")}});
    QVERIFY(finished.wait(Patience));
    QCOMPARE(answered.size(), 1);
    QCOMPARE(answered.at(0).at(1).toJsonObject().value(QLatin1String("text")).toString(), QStringLiteral("wantearly"));
}

void TestReading::hostileReaders_data()
{
    QTest::addColumn<QList<QByteArray>>("script");
    QTest::newRow("nothing") << QList<QByteArray>{"exit 0"};
    QTest::newRow("dies") << QList<QByteArray>{Hello, Languages, "kill -SEGV $$"};
    QTest::newRow("ends early") << QList<QByteArray>{Hello, Languages};
    QTest::newRow("ends late") << QList<QByteArray>{Hello, End};
    QTest::newRow("ends within a line") << QList<QByteArray>{Hello, R"(printf '{"topic":"en')"};
    QTest::newRow("garbage") << QList<QByteArray>{"head -c 4096 /dev/urandom; echo", Wait};
    QTest::newRow("empty line") << QList<QByteArray>{Hello, "echo", Wait};
    QTest::newRow("no object") << QList<QByteArray>{Hello, "echo '[]'", Wait};
    QTest::newRow("no hello") << QList<QByteArray>{Languages, Wait};
    QTest::newRow("two hellos") << QList<QByteArray>{Hello, Hello, Wait};
    QTest::newRow("another protocol") << QList<QByteArray>{R"(echo '{"topic":"hello","protocol":2}')", Wait};
    QTest::newRow("unknown topic") << QList<QByteArray>{Hello, R"(echo '{"topic":"exec"}')", Wait};
    QTest::newRow("wrong type") << QList<QByteArray>{Hello, R"(echo '{"topic":"manifest","text":7}')", Wait};
    QTest::newRow("deep") << QList<QByteArray>{Hello, R"(head -c 100000 /dev/zero | tr '\0' '['; echo)", Wait};
    QTest::newRow("no UTF-8") << QList<QByteArray>{Hello, R"(printf '{"topic":"manifest","text":"\377\376"}\n')", Wait};
    QTest::newRow("two ends") << QList<QByteArray>{Hello, End, End, Wait};
    QTest::newRow("done with nothing") << QList<QByteArray>{Hello, R"(echo '{"topic":"done"}')", Wait};
    QTest::newRow("too many answers") << QList<QByteArray>{
        Hello, R"(while true; do echo '{"topic":"languages","items":[]}'; done)"};
}

void TestReading::hostileReaders()
{
    QFETCH(QList<QByteArray>, script);
    useScript(script);
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy failed(&reading, &Reading::failed);
    reading.open(path("a.apk"));
    QVERIFY(failed.wait(Patience));
    QVERIFY(!failed.at(0).at(0).toString().isEmpty());
    QVERIFY(answered.size() <= 16);
    // Nothing follows.
    reading.request({{QStringLiteral("want"), QStringLiteral("icon")}});
    QTest::qWait(20);
    QCOMPARE(failed.size(), 1);
}

void TestReading::missingReader()
{
    qputenv("SORREL_VIEWER_READER", QFile::encodeName(path("missing")));
    Reading reading;
    QSignalSpy failed(&reading, &Reading::failed);
    reading.open(path("a.apk"));
    QVERIFY(failed.size() == 1 || failed.wait(Patience));
    QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("The program that reads packages could not be started."));
}

void TestReading::linesThatAThreadDecodes()
{
    useScript({Hello, Manifest, Languages, Manifest, End, Wait});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("a.apk"));
    QVERIFY(finished.wait(Patience));
    QStringList topics;
    for (const QList<QVariant> &answer : answered)
        topics.append(answer.at(0).toString());
    QCOMPARE(topics,
             (QStringList{QStringLiteral("manifest"), QStringLiteral("languages"), QStringLiteral("manifest")}));
    QCOMPARE(int(answered.at(0).at(1).toJsonObject().value(QLatin1String("text")).toString().size()), 4000000);
}

void TestReading::longLineOfAReaderThatEnds()
{
    useScript({Hello, Manifest, Languages});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy failed(&reading, &Reading::failed);
    reading.open(path("a.apk"));
    QVERIFY(failed.wait(Patience));
    QCOMPARE(answered.size(), 2);
    QVERIFY(failed.at(0).at(0).toString().contains(QStringLiteral("ended unexpectedly")));
}

void TestReading::anotherFileDuringALongLine()
{
    useScript({Hello, Languages, Manifest, Wait});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("a.apk"));
    QVERIFY(answered.wait(Patience));
    // The long line may be at any stage.
    QTest::qWait(20);
    const auto before = answered.size();
    useScript({Hello, Languages, End, Wait});
    reading.open(path("b.apk"));
    QVERIFY(finished.wait(Patience));
    QCOMPARE(answered.size(), before + 1);
}

void TestReading::destructionDuringALongLine()
{
    useScript({Hello, Languages, Manifest, Wait});
    for (int i = 0; i < 4; ++i) {
        Reading reading;
        QSignalSpy answered(&reading, &Reading::answered);
        reading.open(path("a.apk"));
        QVERIFY(answered.wait(Patience));
        QTest::qWait(10 * i);
    }
}

void TestReading::longLineThatIsWrong()
{
    useScript({Hello, R"sh(printf '{"topic":"other","text":"'; head -c 4000000 /dev/zero | tr '\0' a; echo '"}')sh",
               Languages, End, Wait});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy failed(&reading, &Reading::failed);
    reading.open(path("a.apk"));
    QVERIFY(failed.wait(Patience));
    QCOMPARE(answered.size(), 0);
    QVERIFY(failed.at(0).at(0).toString().contains(QStringLiteral("unexpected")));
}

void TestReading::longLines()
{
    const QByteArray most = QByteArray::number(Viewer::Protocol::MaxLineBytes);
    useScript({Hello, "head -c " + most + " /dev/zero", "sleep 0.1; head -c 1 /dev/zero", Wait});
    Reading reading;
    QSignalSpy failed(&reading, &Reading::failed);
    reading.open(path("a.apk"));
    QVERIFY(failed.wait(Patience));
    QVERIFY(failed.at(0).at(0).toString().contains(QStringLiteral("unexpected")));
}

void TestReading::endlessOutput()
{
    useScript({Hello, "cat /dev/zero"});
    Reading reading;
    QSignalSpy failed(&reading, &Reading::failed);
    reading.open(path("a.apk"));
    QVERIFY(failed.wait(Patience));
    QVERIFY(failed.at(0).at(0).toString().contains(QStringLiteral("unexpected")));
}

void TestReading::silence()
{
    useScript({Hello, Languages, Wait});
    Reading reading;
    reading.setPatience(300);
    QSignalSpy failed(&reading, &Reading::failed);
    reading.open(path("a.apk"));
    QVERIFY(failed.wait(Patience));
    QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("Reading the package took too long."));
}

void TestReading::silenceAfterARequest()
{
    useScript({Hello, End, Wait});
    Reading reading;
    QSignalSpy failed(&reading, &Reading::failed);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("a.apk"));
    QVERIFY(finished.wait(Patience));
    reading.setPatience(300);
    reading.request({{QStringLiteral("want"), QStringLiteral("icon")}});
    QVERIFY(failed.wait(Patience));
    QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("Reading the package took too long."));
}

void TestReading::noPatienceIsNeededWhenNothingIsDue()
{
    useScript({Hello, End, Wait});
    Reading reading;
    QSignalSpy failed(&reading, &Reading::failed);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("a.apk"));
    QVERIFY(finished.wait(Patience));
    reading.setPatience(300);
    QTest::qWait(600);
    QCOMPARE(failed.size(), 0);
}

void TestReading::memory()
{
    useScript({Hello, "exit 3"});
    Reading reading;
    QSignalSpy failed(&reading, &Reading::failed);
    reading.open(path("a.apk"));
    QVERIFY(failed.wait(Patience));
    QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("Reading the package took too much memory."));
}

void TestReading::errorsOfTheReaderAreDropped()
{
    useScript({"head -c 1000000 /dev/zero >&2", Hello, End, Wait});
    Reading reading;
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("a.apk"));
    QVERIFY(finished.wait(Patience));
}

void TestReading::anotherFile()
{
    useScript({Hello, R"(echo '{"topic":"manifest","text":"'${1##*/}'"}')", End, Wait});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy failed(&reading, &Reading::failed);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("first.apk"));
    reading.open(path("second.apk"));
    QVERIFY(finished.wait(Patience));
    QCOMPARE(answered.size(), 1);
    QCOMPARE(answered.at(0).at(1).toJsonObject().value(QLatin1String("text")).toString(), QStringLiteral("second.apk"));
    // After a failure, too.
    useScript({"exit 1"});
    reading.open(path("third.apk"));
    QVERIFY(failed.wait(Patience));
    useScript({Hello, End, Wait});
    reading.open(path("fourth.apk"));
    QVERIFY(finished.wait(Patience));
    QCOMPARE(failed.size(), 1);
}

void TestReading::anotherFileInASlot()
{
    useScript({Hello, R"(echo '{"topic":"manifest","text":"'${1##*/}'"}')", Languages, End, Wait});
    Reading reading;
    QStringList topics;
    connect(&reading, &Reading::answered, &reading, [&](const QString &topic, const QJsonObject &content) {
        topics.append(topic == QLatin1String("manifest") ? content.value(QLatin1String("text")).toString() : topic);
        if (topics.size() == 1)
            reading.open(path("second.apk"));
    });
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("first.apk"));
    QVERIFY(finished.wait(Patience));
    QCOMPARE(topics,
             (QStringList{QStringLiteral("first.apk"), QStringLiteral("second.apk"), QStringLiteral("languages")}));
}

void TestReading::destructionInASlot()
{
    for (const QByteArray &script : {QByteArray(Languages), QByteArray("echo bad")}) {
        useScript({Hello, script, Languages, End, Wait});
        auto *const reading = new Reading;
        QSignalSpy destroyed(reading, &QObject::destroyed);
        connect(reading, &Reading::answered, reading, [reading] { delete reading; });
        connect(reading, &Reading::failed, reading, [reading] { delete reading; });
        reading->open(path("a.apk"));
        QVERIFY(destroyed.wait(Patience));
    }
}

void TestReading::endsTheReader()
{
    useScript({Hello, R"(echo '{"topic":"manifest","text":"'$$'"}')", "exec sleep 1000"});
    qint64 process = 0;
    {
        Reading reading;
        QSignalSpy answered(&reading, &Reading::answered);
        reading.open(path("a.apk"));
        QVERIFY(answered.wait(Patience));
        process = answered.at(0).at(1).toJsonObject().value(QLatin1String("text")).toString().toLongLong();
        QVERIFY(process > 0);
        QCOMPARE(::kill(pid_t(process), 0), 0);
    }
    QTRY_VERIFY(::kill(pid_t(process), 0) != 0);
}

void TestReading::failsOnce()
{
    useScript({Hello, "echo bad; echo worse; exit 1"});
    Reading reading;
    QSignalSpy failed(&reading, &Reading::failed);
    reading.open(path("a.apk"));
    QVERIFY(failed.wait(Patience));
    QTest::qWait(100);
    QCOMPARE(failed.size(), 1);
}

void TestReading::argumentsOfTheReader()
{
    useScript({Hello, R"sh(echo '{"topic":"manifest","text":"'"$(printf '%s|' "$@")"'"}')sh", End, Wait});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    // A name with a quote, and with a byte that is no UTF-8.
    reading.open(QStringLiteral("/x/it's ") + QChar(0xdcff) + QStringLiteral(".apk"), QStringLiteral("de-AT"),
                 QStringLiteral("/x/--compare"));
    QVERIFY(finished.wait(Patience));
    QCOMPARE(answered.at(0).at(1).toJsonObject().value(QLatin1String("text")).toString(),
             QStringLiteral("file:///x/it%27s%20%FF.apk|--compare|file:///x/--compare|--locale|de-AT|--unconfined|"));
}

void TestReading::environmentOfTheReader()
{
    qputenv("SORREL_TEST_SECRET", "secret");
    qputenv("SORREL_PLATFORM", "none.apk");
    useScript(
        {Hello, R"sh(echo '{"topic":"manifest","text":"'"$SORREL_TEST_SECRET|$SORREL_PLATFORM"'"}')sh", End, Wait});
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(path("a.apk"));
    QVERIFY(finished.wait(Patience));
    qputenv("SORREL_PLATFORM", QByteArray());
    QCOMPARE(answered.at(0).at(1).toJsonObject().value(QLatin1String("text")).toString(), QStringLiteral("|none.apk"));
}

void TestReading::bubblewrapThatDoesNotWork()
{
    const QString bubblewrap = writeFile(path("bin/bwrap"), "#!/bin/sh\necho 'No permissions' >&2\nexit 1\n");
    QFile::setPermissions(bubblewrap, QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray oldPath = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(path("bin")) + ':' + oldPath);
    useScript({Hello, End, Wait});
    const QString package = writeFile(path("a.apk"), "package");
    qputenv("SORREL_VIEWER_SANDBOX", "bubblewrap");
    Reading reading;
    QSignalSpy failed(&reading, &Reading::failed);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(package);
    QVERIFY(failed.wait(Patience));
    qunsetenv("SORREL_VIEWER_SANDBOX");
    reading.open(package);
    QVERIFY(finished.wait(Patience));
    QCOMPARE(failed.size(), 1);
    qputenv("PATH", oldPath);
}

QTEST_GUILESS_MAIN(TestReading)
#include "tst_reading.moc"
