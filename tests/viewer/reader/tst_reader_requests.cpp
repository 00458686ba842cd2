// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"
#include "ReaderFixture.h"
#include "ReaderProcess.h"

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

QImage pictureOf(const QJsonObject &object)
{
    return QImage::fromData(QByteArray::fromBase64(object.value(QLatin1String("png")).toString().toLatin1()), "PNG");
}

QJsonObject wanted(const char *want, QJsonObject request = {})
{
    request.insert(QStringLiteral("want"), QString::fromLatin1(want));
    return request;
}

} // namespace

class TestReaderRequests : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shapes_data();
    void shapes();
    void sizes_data();
    void sizes();
    void drawables_data();
    void drawables();
    void locale();
    void unknownRequests_data();
    void unknownRequests();
    void manyRequests();
    void requestsBeforeTheTopics();
    void longRequest();
    void endOfTheInput();

private:
    QString sample(const char *name) const { return QStringLiteral(SORREL_SAMPLES_DIR "/") + QLatin1String(name); }

    QTemporaryDir m_directory;
    QString m_file;
};

void TestReaderRequests::initTestCase()
{
    qputenv("LC_ALL", "C.UTF-8");
    m_file = writeFile(m_directory.filePath(QStringLiteral("notes.apk")), notesPackage());
}

void TestReaderRequests::shapes_data()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<QString>("drawn");
    QTest::addColumn<bool>("hasCorner");
    QTest::newRow("none") << QStringLiteral("none") << QStringLiteral("none") << true;
    QTest::newRow("circle") << QStringLiteral("circle") << QStringLiteral("circle") << false;
    QTest::newRow("rounded") << QStringLiteral("rounded") << QStringLiteral("rounded") << false;
    QTest::newRow("squircle") << QStringLiteral("squircle") << QStringLiteral("squircle") << false;
    QTest::newRow("unknown") << QStringLiteral("star") << QStringLiteral("none") << true;
}

void TestReaderRequests::shapes()
{
    QFETCH(QString, shape);
    QFETCH(QString, drawn);
    QFETCH(bool, hasCorner);
    // Its icon is adaptive.
    ReaderProcess reader({sample("gallery.aapt2.apk")});
    QVERIFY(reader.all().contains(QStringLiteral("end")));
    const QList<QJsonObject> answers =
        reader.ask(wanted("icon", {{QStringLiteral("size"), 96}, {QStringLiteral("shape"), shape}}));
    QCOMPARE(answers.size(), 1);
    QCOMPARE(answers.constFirst().value(QLatin1String("topic")).toString(), QStringLiteral("icon"));
    QCOMPARE(answers.constFirst().value(QLatin1String("shape")).toString(), drawn);
    const QImage picture = pictureOf(answers.constFirst());
    QCOMPARE(picture.size(), QSize(96, 96));
    QCOMPARE(picture.pixelColor(0, 0).alpha() > 0, hasCorner);
}

void TestReaderRequests::sizes_data()
{
    QTest::addColumn<QJsonValue>("size");
    QTest::addColumn<int>("drawn");
    QTest::newRow("usual") << QJsonValue(48) << 48;
    QTest::newRow("the largest") << QJsonValue(1024) << 1024;
    QTest::newRow("too large") << QJsonValue(100000) << 1024;
    QTest::newRow("zero") << QJsonValue(0) << 1;
    QTest::newRow("negative") << QJsonValue(-5) << 1;
    QTest::newRow("a text") << QJsonValue(QStringLiteral("48")) << 256;
    QTest::newRow("none") << QJsonValue(QJsonValue::Undefined) << 256;
}

void TestReaderRequests::sizes()
{
    QFETCH(QJsonValue, size);
    QFETCH(int, drawn);
    ReaderProcess reader({m_file});
    reader.all();
    QJsonObject request;
    request.insert(QStringLiteral("size"), size);
    const QList<QJsonObject> answers = reader.ask(wanted("icon", request));
    QCOMPARE(answers.size(), 1);
    QCOMPARE(answers.constFirst().value(QLatin1String("size")).toInt(), drawn);
    QCOMPARE(pictureOf(answers.constFirst()).size(), QSize(drawn, drawn));
}

void TestReaderRequests::drawables_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isDrawn");
    QTest::newRow("picture") << QStringLiteral("drawable/icon") << true;
    QTest::newRow("missing file") << QStringLiteral("drawable/broken") << false;
    QTest::newRow("no drawable") << QStringLiteral("string/app_name") << false;
    QTest::newRow("unknown name") << QStringLiteral("drawable/other") << false;
    QTest::newRow("no name") << QString() << false;
}

void TestReaderRequests::drawables()
{
    QFETCH(QString, name);
    QFETCH(bool, isDrawn);
    ReaderProcess reader({m_file});
    reader.all();
    const QList<QJsonObject> answers =
        reader.ask(wanted("drawable", {{QStringLiteral("name"), name}, {QStringLiteral("size"), 40}}));
    QCOMPARE(answers.size(), 1);
    const QJsonObject drawable = answers.constFirst();
    QCOMPARE(drawable.value(QLatin1String("topic")).toString(), QStringLiteral("drawable"));
    QCOMPARE(drawable.value(QLatin1String("name")).toString(), name);
    QCOMPARE(pictureOf(drawable).size(), isDrawn ? QSize(40, 40) : QSize(0, 0));
    QCOMPARE(drawable.value(QLatin1String("error")).toString().isEmpty(), isDrawn);
}

void TestReaderRequests::locale()
{
    ReaderProcess reader({m_file, QStringLiteral("--locale"), QStringLiteral("en")});
    reader.all();
    const QList<QJsonObject> answers = reader.ask(wanted("locale", {{QStringLiteral("tag"), QStringLiteral("de")}}));
    QStringList topics;
    for (const QJsonObject &answer : answers)
        topics.append(answer.value(QLatin1String("topic")).toString());
    QCOMPARE(topics, (QStringList{QStringLiteral("head"), QStringLiteral("permissions"), QStringLiteral("launchers")}));
    QCOMPARE(answers.at(0).value(QLatin1String("label")).toString(), QStringLiteral("Notizen"));
    QCOMPARE(valuesOf(answers.at(2), "label").constFirst(), QStringLiteral("Notizen"));
    // That of the user.
    const QList<QJsonObject> again = reader.ask(wanted("locale", {{QStringLiteral("tag"), QString()}}));
    QCOMPARE(again.at(0).value(QLatin1String("label")).toString(), QStringLiteral("Notes"));
}

void TestReaderRequests::unknownRequests_data()
{
    QTest::addColumn<QJsonObject>("request");
    QTest::newRow("empty") << QJsonObject();
    QTest::newRow("unknown") << wanted("exec");
    QTest::newRow("no text") << QJsonObject{{QStringLiteral("want"), 7}};
}

void TestReaderRequests::unknownRequests()
{
    QFETCH(QJsonObject, request);
    ReaderProcess reader({m_file});
    reader.all();
    QCOMPARE(reader.ask(request).size(), 0);
    QCOMPARE(reader.ask(wanted("icon")).size(), 1);
    QCOMPARE(reader.finish(), 0);
}

void TestReaderRequests::manyRequests()
{
    constexpr int count = 200;
    ReaderProcess reader({m_file});
    reader.all();
    for (int i = 0; i < count; ++i)
        reader.send(wanted(
            "drawable", {{QStringLiteral("name"), QStringLiteral("drawable/icon")}, {QStringLiteral("size"), i + 1}}));
    for (int i = 0; i < count; ++i) {
        QCOMPARE(reader.next().value(QLatin1String("size")).toInt(), i + 1);
        QCOMPARE(reader.next().value(QLatin1String("topic")).toString(), QStringLiteral("done"));
    }
}

void TestReaderRequests::requestsBeforeTheTopics()
{
    ReaderProcess reader({m_file});
    reader.send(wanted("drawable", {{QStringLiteral("name"), QStringLiteral("drawable/icon")}}));
    QStringList order;
    reader.all(&order);
    // It is answered between two topics, or behind the last one.
    if (!order.contains(QStringLiteral("drawable")))
        order.append(reader.next().value(QLatin1String("topic")).toString());
    QVERIFY(order.contains(QStringLiteral("drawable")));
    QCOMPARE(order.count(QStringLiteral("head")), 1);
}

void TestReaderRequests::longRequest()
{
    ReaderProcess reader({m_file});
    reader.all();
    reader.send({{QStringLiteral("want"), QString(1 << 20, QLatin1Char('x'))}});
    QCOMPARE(reader.finish(), 0);
}

void TestReaderRequests::endOfTheInput()
{
    ReaderProcess reader({m_file});
    QCOMPARE(reader.finish(), 0);
}

QTEST_GUILESS_MAIN(TestReaderRequests)
#include "tst_reader_requests.moc"
