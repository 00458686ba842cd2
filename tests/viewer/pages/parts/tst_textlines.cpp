// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/TextLines.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QtTest>

using Viewer::TextLines;

namespace {

int widthOf(const QString &text)
{
    return QFontMetrics(QFont()).horizontalAdvance(text);
}

// The columns of a picture that a text paints.
QPair<int, int> paintedColumns(const QString &text, Qt::LayoutDirection direction)
{
    QImage picture(400, 40, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setPen(Qt::black);
    TextLines(text, QFont(), 400, 1).paint(&painter, picture.rect(), direction);
    painter.end();
    QPair<int, int> columns(400, -1);
    for (int x = 0; x < 400; ++x) {
        for (int y = 0; y < 40; ++y) {
            if (picture.pixelColor(x, y).lightness() < 128) {
                columns.first = qMin(columns.first, x);
                columns.second = qMax(columns.second, x);
            }
        }
    }
    return columns;
}

} // namespace

class TestTextLines : public QObject
{
    Q_OBJECT

private slots:
    void oneLine();
    void wraps();
    void leavesOutTheMiddle();
    void longWords();
    void nothing();
    void alignment();
    void endsOfIsolatedTexts();
};

void TestTextLines::oneLine()
{
    const QString text = QStringLiteral("a few words");
    for (const int maxLines : {1, 3}) {
        const TextLines lines(text, QFont(), widthOf(text) + 10, maxLines);
        QCOMPARE(lines.lines(), QList<QString>{text});
        QCOMPARE(lines.height(), QFontMetrics(QFont()).height());
    }
}

void TestTextLines::wraps()
{
    const TextLines lines(QStringLiteral("one two six"), QFont(), widthOf(QStringLiteral("one two")) + 5, 3);
    QCOMPARE(lines.lines(), (QList<QString>{QStringLiteral("one two"), QStringLiteral("six")}));
    QCOMPARE(lines.height(), 2 * QFontMetrics(QFont()).height());
}

void TestTextLines::leavesOutTheMiddle()
{
    const QString text = QStringLiteral("begin ") + QStringLiteral("word ").repeated(200) + QStringLiteral("end");
    const TextLines lines(text, QFont(), 200, 3);
    QCOMPARE(lines.lines().size(), 3);
    QVERIFY(lines.lines().constFirst().startsWith(QLatin1String("begin")));
    QVERIFY(lines.lines().constLast().contains(QChar(0x2026)));
    QVERIFY(lines.lines().constLast().endsWith(QLatin1String("end")));
    for (const QString &line : lines.lines())
        QVERIFY(widthOf(line) <= 200);
}

void TestTextLines::longWords()
{
    const TextLines lines(QString(1000, QLatin1Char('w')), QFont(), 200, 3);
    QVERIFY(lines.lines().size() <= 3);
    for (const QString &line : lines.lines())
        QVERIFY(widthOf(line) <= 200);
}

void TestTextLines::nothing()
{
    QCOMPARE(TextLines(QString(), QFont(), 200, 3).height(), 0);
    QCOMPARE(TextLines(QStringLiteral("text"), QFont(), 0, 3).height(), 0);
    QCOMPARE(TextLines(QStringLiteral("text"), QFont(), -5, 1).height(), 0);
}

void TestTextLines::alignment()
{
    // Texts begin where their surroundings do, in either direction of their own.
    for (const QString &text : {QStringLiteral("text"), QStringLiteral("\u05e9\u05dc\u05d5\u05dd")}) {
        QVERIFY(paintedColumns(text, Qt::LeftToRight).first < 10);
        QVERIFY(paintedColumns(text, Qt::LeftToRight).second < 100);
        QVERIFY(paintedColumns(text, Qt::RightToLeft).first > 300);
        QVERIFY(paintedColumns(text, Qt::RightToLeft).second > 390);
    }
}

void TestTextLines::endsOfIsolatedTexts()
{
    // The full stop is at the left end of Hebrew, also on the second line of an isolated text.
    const QString words = QStringLiteral("\u05d0\u05d1\u05d2 \u05d0\u05d1\u05d2.");
    const QString isolated = QChar(u'\u2068') + words + QChar(u'\u2069');
    const auto picture = [](const QString &text) {
        QImage image(60, 80, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        TextLines(text, QFont(), widthOf(QStringLiteral("\u05d0\u05d1\u05d2.")) + 4, 2)
            .paint(&painter, image.rect(), Qt::RightToLeft);
        painter.end();
        return image;
    };
    QCOMPARE(picture(isolated), picture(words));
}

QTEST_MAIN(TestTextLines)
#include "tst_textlines.moc"
