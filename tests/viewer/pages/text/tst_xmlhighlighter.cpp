// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/Contrast.h"
#include "pages/text/XmlHighlighter.h"

#include <QPalette>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QtTest>

using namespace Viewer;
using Part = XmlHighlighter::Part;

namespace {

// One letter for the part of each character: t, m, e, a, v, c.
QStringList partsOf(const QString &text)
{
    QTextDocument document(text);
    XmlHighlighter highlighter(&document, QPalette());
    const QString letters = QStringLiteral("tmeavc");
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QString line(block.length() - 1, QLatin1Char('?'));
        for (const QTextLayout::FormatRange &range : block.layout()->formats()) {
            for (int part = 0; part < int(letters.size()); ++part) {
                if (range.format.foreground().color() == highlighter.color(Part(part)))
                    line.replace(range.start, range.length, QString(range.length, letters.at(part)));
            }
        }
        lines.append(line);
    }
    return lines;
}

} // namespace

class TestXmlHighlighter : public QObject
{
    Q_OBJECT

private slots:
    void parts_data();
    void parts();
    void colorsAreReadable();
};

void TestXmlHighlighter::parts_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("element") << QStringLiteral("<a b=\"c\">d</a>") << QStringList{QStringLiteral("meeamvvvmtmmem")};
    QTest::newRow("lines") << QStringLiteral("<a\n b='>'\n/>")
                           << QStringList{QStringLiteral("me"), QStringLiteral("aamvvv"), QStringLiteral("mm")};
    QTest::newRow("value of two lines") << QStringLiteral("<a b=\"<\n>\"/>")
                                        << QStringList{QStringLiteral("meeamvv"), QStringLiteral("vvmm")};
    QTest::newRow("comment") << QStringLiteral("<!-- <a> -\n-->b")
                             << QStringList{QStringLiteral("cccccccccc"), QStringLiteral("ccct")};
    QTest::newRow("declaration") << QStringLiteral("<?xml a=\"b\"?>b") << QStringList{QStringLiteral("ccccccccccccct")};
    QTest::newRow("unfinished") << QStringLiteral("<") << QStringList{QStringLiteral("m")};
    QTest::newRow("no XML") << QStringLiteral("a > b") << QStringList{QStringLiteral("ttttt")};
}

void TestXmlHighlighter::parts()
{
    QFETCH(const QString, xml);
    QTEST(partsOf(xml), "parts");
}

void TestXmlHighlighter::colorsAreReadable()
{
    QTextDocument document;
    for (const auto &colors :
         {qMakePair(QColor(Qt::black), QColor(Qt::white)), qMakePair(QColor(Qt::white), QColor(Qt::black)),
          qMakePair(QColor(0xdd, 0xdd, 0xdd), QColor(0x23, 0x26, 0x29))}) {
        QPalette palette;
        palette.setColor(QPalette::Text, colors.first);
        palette.setColor(QPalette::Base, colors.second);
        const XmlHighlighter highlighter(&document, palette);
        for (int part = 0; part <= int(Part::Comment); ++part)
            QVERIFY(contrastRatio(highlighter.color(Part(part)), colors.second) >= MinContrast);
    }
}

QTEST_MAIN(TestXmlHighlighter)
#include "tst_xmlhighlighter.moc"
