// SPDX-License-Identifier: LGPL-2.1-or-later
#include "JsonText.h"
#include "PrintableText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

namespace {

QString textOf(char32_t character)
{
    // Qt drops a byte order mark at the start of decoded text.
    const char32_t marked[] = {U'x', character};
    return QString::fromUcs4(marked, 2).mid(1);
}

QString objectText(const QJsonValue &value)
{
    return QString::fromUtf8(jsonText(QJsonObject{{QStringLiteral("a"), value}}));
}

} // namespace

class TestPrintableText : public QObject
{
    Q_OBJECT

private slots:
    void charactersThatSteer_data();
    void charactersThatSteer();
    void charactersThatDoNot_data();
    void charactersThatDoNot();
    void halvesOfPairs_data();
    void halvesOfPairs();
    void isolatedTexts_data();
    void isolatedTexts();
    void jsonOfTexts_data();
    void jsonOfTexts();
    void jsonOfValues();
    void jsonIsReadBackTheSame();
};

void TestPrintableText::charactersThatSteer_data()
{
    QTest::addColumn<uint>("character");
    QTest::addColumn<QString>("escape");
    const auto row = [](uint character, const char *escape) {
        QTest::newRow(qPrintable(QString::number(character, 16))) << character << QString::fromLatin1(escape);
    };
    row(0x00, "\\u0000");
    row(0x07, "\\u0007");
    row(0x0a, "\\n");
    row(0x1b, "\\u001b");
    row(0x1f, "\\u001f");
    row(0x7f, "\\u007f");
    row(0x80, "\\u0080");
    row(0x85, "\\u0085");
    row(0x9b, "\\u009b");
    row(0x9d, "\\u009d");
    row(0x9f, "\\u009f");
    row(0x061c, "\\u061c");
    row(0x200e, "\\u200e");
    row(0x200f, "\\u200f");
    row(0x2028, "\\u2028");
    row(0x2029, "\\u2029");
    row(0x202a, "\\u202a");
    row(0x202e, "\\u202e");
    row(0x2066, "\\u2066");
    row(0x2069, "\\u2069");
    row(0xfeff, "\\ufeff");
    row(0xe0000, "\\udb40\\udc00");
    row(0xe0041, "\\udb40\\udc41");
    row(0xe007f, "\\udb40\\udc7f");
}

void TestPrintableText::charactersThatSteer()
{
    QFETCH(uint, character);
    QFETCH(QString, escape);
    QVERIFY(steersText(character));
    const QString text = QLatin1Char('a') + textOf(character) + QLatin1Char('b');
    QCOMPARE(printableText(text), QStringLiteral("a\ufffdb"));
    QCOMPARE(objectText(text), QStringLiteral("{\"a\":\"a%1b\"}").arg(escape));
}

void TestPrintableText::charactersThatDoNot_data()
{
    QTest::addColumn<uint>("character");
    for (const uint character : {0x20U, 0x7eU, 0xa0U, 0xfcU, 0x061bU, 0x200cU, 0x200dU, 0x2010U, 0x2027U, 0x202fU,
                                 0x2065U, 0x4e00U, 0xfefeU, 0xfffdU, 0x1f600U, 0xdffffU, 0xe0080U, 0x10ffffU})
        QTest::newRow(qPrintable(QString::number(character, 16))) << character;
}

void TestPrintableText::charactersThatDoNot()
{
    QFETCH(uint, character);
    QVERIFY(!steersText(character));
    const QString text = QLatin1Char('a') + textOf(character) + QLatin1Char('b');
    QCOMPARE(printableText(text), text);
    QCOMPARE(objectText(text), QStringLiteral("{\"a\":\"%1\"}").arg(text));
}

void TestPrintableText::halvesOfPairs_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const QString high(QChar(0xd83d));
    const QString low(QChar(0xde00));
    QTest::newRow("high") << QStringLiteral("a%1b").arg(high) << QStringLiteral("a\ufffdb");
    QTest::newRow("low") << QStringLiteral("a%1b").arg(low) << QStringLiteral("a\ufffdb");
    QTest::newRow("high at the end") << high << QStringLiteral("\ufffd");
    QTest::newRow("the wrong way round") << low + high << QStringLiteral("\ufffd\ufffd");
    QTest::newRow("two high ones") << high + high + low << QStringLiteral("\ufffd😀");
    QTest::newRow("pair") << high + low << QStringLiteral("😀");
}

void TestPrintableText::halvesOfPairs()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(printableText(text), expected);
    QCOMPARE(objectText(text), QStringLiteral("{\"a\":\"%1\"}").arg(expected));
    QCOMPARE(jsonText(QJsonObject{{text, 1}}), QStringLiteral("{\"%1\":1}").arg(expected).toUtf8());
}

void TestPrintableText::isolatedTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("isolated");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("from left to right") << QStringLiteral("a 1") << QStringLiteral("a 1");
    QTest::newRow("Hebrew") << QStringLiteral("\u05d0 1") << QStringLiteral("\u2068\u05d0 1\u2069");
    QTest::newRow("Arabic") << QStringLiteral("SMS \u0628") << QStringLiteral("\u2068SMS \u0628\u2069");
    QTest::newRow("outside the first plane")
        << QStringLiteral("\U00010800") << QStringLiteral("\u2068\U00010800\u2069");
    QTest::newRow("with marks") << QStringLiteral("\u200f\u05d0\u200e\u061c") << QStringLiteral("\u2068\u05d0\u2069");
    QTest::newRow("marks alone") << QStringLiteral("a\u200f") << QStringLiteral("a\ufffd");
    QTest::newRow("with an end of isolation")
        << QStringLiteral("\u05d0\u2069\u202e") << QStringLiteral("\u2068\u05d0\ufffd\ufffd\u2069");
}

void TestPrintableText::isolatedTexts()
{
    QFETCH(QString, text);
    QTEST(isolatedText(text), "isolated");
}

void TestPrintableText::jsonOfTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("empty") << QString() << "\"\"";
    QTest::newRow("quotes") << "\"a\\"
                            << "\"\\\"a\\\\\"";
    QTest::newRow("short escapes") << "\b\f\n\r\t"
                                   << "\"\\b\\f\\n\\r\\t\"";
    QTest::newRow("slash") << "/"
                           << "\"/\"";
}

void TestPrintableText::jsonOfTexts()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(objectText(text), QStringLiteral("{\"a\":%1}").arg(expected));
}

void TestPrintableText::jsonOfValues()
{
    QCOMPARE(jsonText({}), QByteArray("{}"));
    QCOMPARE(objectText(QJsonValue()), QStringLiteral("{\"a\":null}"));
    QCOMPARE(objectText(true), QStringLiteral("{\"a\":true}"));
    QCOMPARE(objectText(false), QStringLiteral("{\"a\":false}"));
    QCOMPARE(objectText(-1), QStringLiteral("{\"a\":-1}"));
    QCOMPARE(objectText(qint64(4294967296)), QStringLiteral("{\"a\":4294967296}"));
    QCOMPARE(objectText(0.5), QStringLiteral("{\"a\":0.5}"));
    QCOMPARE(objectText(QJsonArray()), QStringLiteral("{\"a\":[]}"));
    QCOMPARE(objectText(QJsonArray{1, QJsonArray{QStringLiteral("b")}, QJsonObject{{QStringLiteral("c"), 2}}}),
             QStringLiteral("{\"a\":[1,[\"b\"],{\"c\":2}]}"));
    QCOMPARE(jsonText({{QStringLiteral("b"), 1}, {QStringLiteral("a"), 2}}), QByteArray("{\"a\":2,\"b\":1}"));
}

void TestPrintableText::jsonIsReadBackTheSame()
{
    QString text;
    for (uint character = 0; character < 0x110000; character += character < 0x10000 ? 1 : 0x21) {
        if (character < 0xd800 || character > 0xdfff)
            text += textOf(character);
    }
    const QJsonObject object{{text, QJsonArray{text}}};
    QCOMPARE(QJsonDocument::fromJson(jsonText(object)).object(), object);
}

QTEST_GUILESS_MAIN(TestPrintableText)
#include "tst_printabletext.moc"
