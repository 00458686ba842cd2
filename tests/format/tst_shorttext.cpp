// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/ShortText.h"

#include <QtTest>

class TestShortText : public QObject
{
    Q_OBJECT

private slots:
    void texts();
    void longTextsAreCut();
    void cases();
    void charactersAreTested();
    void equalTextsHaveEqualHashes();
};

void TestShortText::texts()
{
    QVERIFY(ShortText().isEmpty() && ShortText("").isEmpty());
    QCOMPARE(ShortText().toString(), QString());
    ShortText text("Lat");
    text.append('n');
    QCOMPARE(text.size(), 4);
    QCOMPARE(text.at(3), 'n');
    QCOMPARE(text.latin1(), QLatin1String("Latn"));
    QCOMPARE(text.toString(), QStringLiteral("Latn"));
}

void TestShortText::longTextsAreCut()
{
    QCOMPARE(ShortText("valencia").size(), int(ShortText::Capacity));
    QCOMPARE(ShortText("valenciana").toString(), QStringLiteral("valencia"));
}

void TestShortText::cases()
{
    QCOMPARE(ShortText("aZ09-").toUpper().toString(), QStringLiteral("AZ09-"));
    QCOMPARE(ShortText("aZ09-").toLower().toString(), QStringLiteral("az09-"));
}

void TestShortText::charactersAreTested()
{
    QVERIFY(ShortText("deAZ").isAll(ShortText::isLetter));
    QVERIFY(!ShortText("de1").isAll(ShortText::isLetter));
    QVERIFY(ShortText("419").isAll(ShortText::isDigit));
    QVERIFY(ShortText("de1").isAll(ShortText::isLetterOrDigit));
    for (const char character : {'@', '[', '`', '{', '/', ':', '\x80', '\xff'})
        QVERIFY(!ShortText::isLetterOrDigit(character));
}

void TestShortText::equalTextsHaveEqualHashes()
{
    ShortText built;
    built.append('d');
    built.append('e');
    QVERIFY(built == ShortText("de"));
    QCOMPARE(qHash(built), qHash(ShortText("de")));
    QVERIFY(built != ShortText("dea") && built != ShortText("d") && built != ShortText("DE"));
}

QTEST_GUILESS_MAIN(TestShortText)
#include "tst_shorttext.moc"
