// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AnswerCheck.h"
#include "Protocol.h"

#include <QBuffer>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

using namespace Viewer;

namespace {

QJsonObject json(const char *text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("%s", text);
    return document.object();
}

QString picture(int width, int height, const char *format = "PNG")
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return QString::fromLatin1(buffer.data().toBase64());
}

QJsonObject iconWith(const QJsonValue &png)
{
    QJsonObject icon =
        json(R"({"topic":"icon","size":256,"shape":"none","night":false,"monochrome":false,"error":""})");
    icon.insert(QStringLiteral("png"), png);
    return icon;
}

constexpr char Head[] = R"({"topic":"head","packageName":"org.x","versionName":"1","versionCode":"1","minSdk":1,
    "targetSdk":1,"label":"X","isSet":false,"fileSize":1,"error":null,"sandbox":["seccomp"]})";

} // namespace

class TestAnswerCheck : public QObject
{
    Q_OBJECT

private slots:
    void accepts_data();
    void accepts();
    void refuses_data();
    void refuses();
    void versions_data();
    void versions();
    void pictures_data();
    void pictures();
    void ceilings();
    void removesOtherMembers();
    void errors();
};

void TestAnswerCheck::accepts_data()
{
    QTest::addColumn<QString>("topic");
    QTest::addColumn<QJsonObject>("content");
    const auto add = [](const char *topic, const char *content) {
        QTest::newRow(topic) << QString::fromLatin1(topic) << json(content);
    };
    add("hello", R"({"protocol":1})");
    add("head", Head);
    add("otherHead", Head);
    add("icon", R"({"size":256,"shape":"none","night":true,"monochrome":false,"png":"","error":""})");
    add("drawable", R"({"name":"drawable/x","size":96,"png":"","error":""})");
    add("signature", R"({"verified":true,"signers":[],"errors":[],"warnings":[],"schemes":["v2"]})");
    add("permissions", R"({"items":[{"name":"p","label":"P","description":"","isDangerous":true,"group":""}]})");
    add("launchers",
        R"({"items":[{"className":"a.B","label":"B","isShown":true,"kind":"launcher","png":""}],"more":3})");
    add("contents",
        R"({"items":[{"name":"a","size":1,"packed":1,"crc":4294967295},{"name":"b","size":0,"packed":0}]})");
    add("languages", R"({"items":[{"tag":"de","name":"Deutsch","label":"X"}]})");
    add("manifest", R"({"text":"<manifest/>"})");
    add("resources", R"({"items":[{"name":"string/a","type":"string","value":"A","isDrawable":false}]})");
    add("lint", R"({"items":[{"check":"x","severity":"note","message":"m","subject":""}]})");
    add("diff",
        R"({"before":{},"after":{},"different":false,"complete":true,"sameApplication":true,"signerMatch":"same",
        "signers":[],"facts":[],"permissions":[],"features":[],"components":[],"launchers":[],"labels":[],
        "fileSize":{},"sizes":[],"files":{}})");
    add("done", "{}");
    add("end", "{}");
}

void TestAnswerCheck::accepts()
{
    QFETCH(QString, topic);
    QFETCH(QJsonObject, content);
    const AnswerCheck check(topic, content);
    QCOMPARE(check.fault(), QString());
    content.remove(QStringLiteral("topic"));
    QCOMPARE(check.content(), content);
    // Each member counts, except those that may be missing.
    const bool isHead = topic == QLatin1String("head") || topic == QLatin1String("otherHead");
    for (const QString &key : content.keys()) {
        QJsonObject less = content;
        less.remove(key);
        const bool isOptional = key == QLatin1String("more") || key == QLatin1String("schemes")
                                || (key == QLatin1String("error") && !isHead);
        QCOMPARE(AnswerCheck(topic, less).fault().isEmpty(), isOptional);
    }
}

void TestAnswerCheck::refuses_data()
{
    QTest::addColumn<QString>("topic");
    QTest::addColumn<QJsonObject>("content");
    QTest::addColumn<QString>("fault");
    const auto add = [](const char *name, const char *topic, const char *content, const char *fault) {
        QTest::newRow(name) << QString::fromLatin1(topic) << json(content) << QString::fromLatin1(fault);
    };
    add("no topic", "", "{}", "an unknown topic");
    add("another topic", "exec", "{}", "an unknown topic");
    add("a number for a text", "manifest", R"({"text":1})", "manifest: text");
    add("a text for a number", "hello", R"({"protocol":"1"})", "hello: protocol");
    add("a negative number", "hello", R"({"protocol":-1})", "hello: protocol");
    add("a fraction", "hello", R"({"protocol":1.5})", "hello: protocol");
    add("a huge number", "hello", R"({"protocol":1e300})", "hello: protocol");
    add("a text for a truth value", "icon", R"({"size":1,"shape":"","night":"true","monochrome":false,"png":""})",
        "icon: night");
    add("an object for items", "lint", R"({"items":{}})", "lint: items");
    add("an item that is none", "lint", R"({"items":[1]})", "lint: item");
    add("an item without a member", "languages", R"({"items":[{"tag":"de","name":"Deutsch"}]})", "languages: label");
    add("a negative size", "contents", R"({"items":[{"name":"a","size":-1,"packed":0}]})", "contents: size");
    add("a wrong optional member", "contents", R"({"items":[{"name":"a","size":1,"packed":0,"crc":"x"}]})",
        "contents: crc");
    add("a wrong number of more", "lint", R"({"items":[],"more":"many"})", "lint: more");
    add("an object for an error", "lint", R"({"items":[],"error":{}})", "lint: error");
    add("an array for an object", "signature", R"({"verified":1,"signers":[],"errors":[],"warnings":[]})",
        "signature: verified");
    add("an empty error does not excuse", "lint", R"({"error":""})", "lint: items");
}

void TestAnswerCheck::refuses()
{
    QFETCH(QString, topic);
    QFETCH(QJsonObject, content);
    QFETCH(QString, fault);
    const AnswerCheck check(topic, content);
    QCOMPARE(check.fault(), fault);
    QCOMPARE(check.content(), QJsonObject());
}

void TestAnswerCheck::versions_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("isAccepted");
    QTest::newRow("zero") << QStringLiteral("0") << true;
    QTest::newRow("the largest") << QStringLiteral("9223372036854775807") << true;
    QTest::newRow("the smallest") << QStringLiteral("-9223372036854775808") << true;
    QTest::newRow("none") << QString() << false;
    QTest::newRow("a sign") << QStringLiteral("-") << false;
    QTest::newRow("a word") << QStringLiteral("1a") << false;
    QTest::newRow("digits of another script") << QString(QChar(0x0661)) << false;
    QTest::newRow("too many") << QString(21, QLatin1Char('1')) << false;
}

void TestAnswerCheck::versions()
{
    QFETCH(QString, version);
    QFETCH(bool, isAccepted);
    QJsonObject head = json(Head);
    head.insert(QStringLiteral("versionCode"), version);
    QCOMPARE(AnswerCheck(QStringLiteral("head"), head).fault().isEmpty(), isAccepted);
}

void TestAnswerCheck::pictures_data()
{
    QTest::addColumn<QJsonValue>("png");
    QTest::addColumn<bool>("isAccepted");
    QTest::newRow("none") << QJsonValue(QString()) << true;
    QTest::newRow("small") << QJsonValue(picture(1, 1)) << true;
    QTest::newRow("the largest") << QJsonValue(picture(Protocol::MaxPixels, 1)) << true;
    QTest::newRow("too wide") << QJsonValue(picture(Protocol::MaxPixels + 1, 1)) << false;
    QTest::newRow("too high") << QJsonValue(picture(1, Protocol::MaxPixels + 1)) << false;
    QTest::newRow("another format") << QJsonValue(picture(16, 16, "BMP")) << false;
    QTest::newRow("cut") << QJsonValue(picture(1, 1).left(20)) << false;
    QTest::newRow("no Base64") << QJsonValue(QStringLiteral("?")) << false;
    QTest::newRow("no text") << QJsonValue(1) << false;
}

void TestAnswerCheck::pictures()
{
    QFETCH(QJsonValue, png);
    QFETCH(bool, isAccepted);
    QCOMPARE(AnswerCheck(QStringLiteral("icon"), iconWith(png)).fault().isEmpty(), isAccepted);
}

void TestAnswerCheck::ceilings()
{
    const auto isAccepted = [](const char *topic, const QJsonObject &content) {
        return AnswerCheck(QString::fromLatin1(topic), content).fault().isEmpty();
    };
    const auto manifest = [](int length) {
        return QJsonObject{{QStringLiteral("text"), QString(length, QLatin1Char('a'))}};
    };
    QVERIFY(isAccepted("manifest", manifest(Protocol::MaxManifestLength)));
    QVERIFY(!isAccepted("manifest", manifest(Protocol::MaxManifestLength + 1)));
    const auto language = [](int length) {
        QJsonObject item = json(R"({"tag":"de","name":"Deutsch"})");
        item.insert(QStringLiteral("label"), QString(length, QLatin1Char('a')));
        return QJsonObject{{QStringLiteral("items"), QJsonArray{item}}};
    };
    QVERIFY(isAccepted("languages", language(Protocol::MaxTextLength)));
    QVERIFY(!isAccepted("languages", language(Protocol::MaxTextLength + 1)));
    QJsonArray items;
    for (int i = 0; i < Protocol::MaxItems; ++i)
        items.append(json(R"({"name":"a","size":1,"packed":1})"));
    QVERIFY(isAccepted("contents", {{QStringLiteral("items"), items}}));
    items.append(items.first());
    QVERIFY(!isAccepted("contents", {{QStringLiteral("items"), items}}));
}

void TestAnswerCheck::removesOtherMembers()
{
    const AnswerCheck check(QStringLiteral("languages"), json(R"({"topic":"languages","html":"<b>","items":
                                [{"tag":"de","name":"Deutsch","label":"X","command":"rm"}]})"));
    QCOMPARE(check.fault(), QString());
    QCOMPARE(check.content(), json(R"({"items":[{"tag":"de","name":"Deutsch","label":"X"}]})"));
}

void TestAnswerCheck::errors()
{
    const AnswerCheck check(QStringLiteral("lint"), json(R"({"error":"no package","items":"?"})"));
    QCOMPARE(check.fault(), QString());
    QCOMPARE(check.content(), json(R"({"error":"no package"})"));
    // That of a head is an object, and the rest of the head is needed.
    QJsonObject head = json(Head);
    head.insert(QStringLiteral("error"), json(R"({"code":5,"message":"damaged"})"));
    QCOMPARE(AnswerCheck(QStringLiteral("head"), head).fault(), QString());
    head.insert(QStringLiteral("error"), QStringLiteral("damaged"));
    QCOMPARE(AnswerCheck(QStringLiteral("head"), head).fault(), QStringLiteral("head: error"));
}

QTEST_GUILESS_MAIN(TestAnswerCheck)
#include "tst_answercheck.moc"
