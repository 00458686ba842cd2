// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/text/ShownXml.h"

#include <QtTest>

using Viewer::ShownXml;

class TestShownXml : public QObject
{
    Q_OBJECT

private slots:
    void usualText();
    void lineLengthHasACeiling();
    void linesHaveACeiling();
    void charactersHaveACeiling();
    void steeringCharacters();
};

void TestShownXml::usualText()
{
    for (const QString &text :
         {QString(), QStringLiteral("<a>\n  <b/>\n</a>"), QStringLiteral("\n\nx"), QStringLiteral("x")}) {
        const ShownXml xml(text);
        QCOMPARE(xml.text(), text);
        QCOMPARE(xml.leftOut(), 0);
    }
}

void TestShownXml::lineLengthHasACeiling()
{
    const QString line(ShownXml::MaxLineLength, QLatin1Char('a'));
    QCOMPARE(ShownXml(line).text(), line);
    const ShownXml xml(QLatin1Char('<') + line + QStringLiteral("b\n/>"));
    QCOMPARE(xml.leftOut(), 2);
    QCOMPARE(xml.text().size(), ShownXml::MaxLineLength + 1 + 3);
    QVERIFY(xml.text().startsWith(QLatin1String("<aa")));
    QVERIFY(xml.text().endsWith(QLatin1String("aab\n/>")));
}

void TestShownXml::linesHaveACeiling()
{
    const QString lines = QStringLiteral("x\n").repeated(ShownXml::MaxLines - 1) + QLatin1Char('x');
    QCOMPARE(ShownXml(lines).text(), lines);
    const ShownXml xml(lines + QStringLiteral("\nfour"));
    QCOMPARE(xml.text(), lines);
    QCOMPARE(xml.leftOut(), 4);
}

void TestShownXml::charactersHaveACeiling()
{
    const QString line = QString(1023, QLatin1Char('a')) + QLatin1Char('\n');
    const ShownXml most(line.repeated(ShownXml::MaxCharacters / 1024));
    QCOMPARE(most.leftOut(), 0);
    const ShownXml more(line.repeated(10 * ShownXml::MaxCharacters / 1024));
    QVERIFY(more.text().size() <= ShownXml::MaxCharacters + ShownXml::MaxLineLength);
    QCOMPARE(more.leftOut() + more.text().size() + 1, 10 * ShownXml::MaxCharacters);
}

void TestShownXml::steeringCharacters()
{
    const QString text = ShownXml(QStringLiteral("a\u202eb\u2028c") + QChar(0) + QStringLiteral("\nd")).text();
    QCOMPARE(text, QStringLiteral("a\ufffdb\ufffdc\ufffd\nd"));
}

QTEST_MAIN(TestShownXml)
#include "tst_shownxml.moc"
