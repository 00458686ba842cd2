// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Reading.h"

#include <QImage>
#include <QJsonArray>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QtTest>

using Viewer::Reading;

namespace {

QString sample(const char *name)
{
    return QStringLiteral(SORREL_SAMPLES_DIR "/") + QLatin1String(name);
}

// Whether bubblewrap works on this machine.
bool hasBubblewrap()
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("bwrap"));
    return !program.isEmpty()
           && QProcess::execute(program, {QStringLiteral("--unshare-all"), QStringLiteral("--ro-bind"),
                                          QStringLiteral("/"), QStringLiteral("/"), QStringLiteral("true")})
                  == 0;
}

} // namespace

// The client with the reader of the build tree.
class TestReadingPackages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void sandboxes_data();
    void sandboxes();
    void everyTopic();
    void comparison();
    void languages();
    void pictures();
    void missingFile();
};

void TestReadingPackages::initTestCase()
{
    // A confined process cannot be traced, which the search for leaks does.
    qputenv("ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ":detect_leaks=0");
}

void TestReadingPackages::sandboxes_data()
{
    QTest::addColumn<QByteArray>("choice");
    QTest::addColumn<QString>("first");
    QTest::newRow("bubblewrap") << QByteArray("bubblewrap") << QStringLiteral("bubblewrap");
    QTest::newRow("without bubblewrap") << QByteArray("seccomp") << QString();
    QTest::newRow("none") << QByteArray("none") << QString();
}

void TestReadingPackages::sandboxes()
{
    QFETCH(QByteArray, choice);
    QFETCH(QString, first);
    if (!first.isEmpty() && !hasBubblewrap())
        QSKIP("bubblewrap does not work here", "the macro wants a second argument");
    qputenv("SORREL_VIEWER_SANDBOX", choice);
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy failed(&reading, &Reading::failed);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(sample("notes.aapt2.apk"));
    const bool isFinished = finished.wait(30000);
    qunsetenv("SORREL_VIEWER_SANDBOX");
    QVERIFY2(isFinished, failed.isEmpty() ? "" : qPrintable(failed.at(0).at(0).toString()));
    const QJsonObject head = answered.at(0).at(1).toJsonObject();
    const QJsonArray sandbox = head.value(QLatin1String("sandbox")).toArray();
    QCOMPARE(sandbox.contains(QStringLiteral("bubblewrap")), !first.isEmpty());
    if (choice == "none")
        QVERIFY(sandbox.isEmpty());
    QCOMPARE(head.value(QLatin1String("packageName")).toString(), QStringLiteral("org.example.notes"));
    QVERIFY(head.value(QLatin1String("error")).isNull());
}

void TestReadingPackages::everyTopic()
{
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(sample("notes.aapt2.apk"), QStringLiteral("de"));
    QVERIFY(finished.wait(30000));
    QStringList topics;
    for (const QList<QVariant> &answer : answered) {
        topics.append(answer.at(0).toString());
        QVERIFY2(answer.at(0) == QLatin1String("icon")
                     || !answer.at(1).toJsonObject().value(QLatin1String("error")).isString(),
                 qPrintable(topics.constLast()));
    }
    QCOMPARE(topics.join(QLatin1Char(' ')),
             QStringLiteral("head icon signature permissions launchers contents languages manifest resources lint"));
    QCOMPARE(answered.at(0).at(1).toJsonObject().value(QLatin1String("label")).toString(), QStringLiteral("Notizen"));
}

void TestReadingPackages::comparison()
{
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(sample("notes.aapt.apk"), {}, sample("notes.aapt2.apk"));
    QVERIFY(finished.wait(30000));
    QStringList topics;
    for (const QList<QVariant> &answer : answered)
        topics.append(answer.at(0).toString());
    QCOMPARE(topics, (QStringList{QStringLiteral("head"), QStringLiteral("otherHead"), QStringLiteral("diff")}));
    const QJsonObject diff = answered.at(2).at(1).toJsonObject();
    QVERIFY(diff.value(QLatin1String("sameApplication")).toBool());
    QVERIFY(diff.value(QLatin1String("different")).toBool());
}

void TestReadingPackages::languages()
{
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(sample("notes.aapt2.apk"), QStringLiteral("en"));
    QVERIFY(finished.wait(30000));
    answered.clear();
    reading.request(
        {{QStringLiteral("want"), QStringLiteral("locale")}, {QStringLiteral("tag"), QStringLiteral("de")}});
    QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 3, 30000);
    QCOMPARE(answered.at(0).at(0).toString(), QStringLiteral("head"));
    QCOMPARE(answered.at(0).at(1).toJsonObject().value(QLatin1String("label")).toString(), QStringLiteral("Notizen"));
}

void TestReadingPackages::pictures()
{
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(sample("notes.aapt2.apk"));
    QVERIFY(finished.wait(30000));
    answered.clear();
    reading.request({{QStringLiteral("want"), QStringLiteral("icon")},
                     {QStringLiteral("size"), 48},
                     {QStringLiteral("shape"), QStringLiteral("circle")}});
    QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 1, 30000);
    const QJsonObject icon = answered.at(0).at(1).toJsonObject();
    QCOMPARE(icon.value(QLatin1String("shape")).toString(), QStringLiteral("circle"));
    const QImage picture =
        QImage::fromData(QByteArray::fromBase64(icon.value(QLatin1String("png")).toString().toLatin1()), "PNG");
    QCOMPARE(picture.size(), QSize(48, 48));
}

void TestReadingPackages::missingFile()
{
    Reading reading;
    QSignalSpy answered(&reading, &Reading::answered);
    QSignalSpy finished(&reading, &Reading::finished);
    reading.open(sample("missing.apk"));
    QVERIFY(finished.wait(30000));
    const QJsonObject error = answered.at(0).at(1).toJsonObject().value(QLatin1String("error")).toObject();
    QCOMPARE(error.value(QLatin1String("code")).toInt(), 1);
    QCOMPARE(error.value(QLatin1String("message")).toString(), QStringLiteral("could not open APK file"));
}

QTEST_GUILESS_MAIN(TestReadingPackages)
#include "tst_reading_packages.moc"
