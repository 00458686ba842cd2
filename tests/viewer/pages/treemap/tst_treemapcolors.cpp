// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/Contrast.h"
#include "pages/treemap/TreemapColors.h"

#include <QtTest>

using namespace Viewer;

Q_DECLARE_METATYPE(QPalette)

class TestTreemapColors : public QObject
{
    Q_OBJECT

private slots:
    void knownRatios();
    void readableColors();
    void textsAreReadable_data();
    void textsAreReadable();
    void kindsDiffer_data();
    void kindsDiffer();
};

namespace {

QPalette paletteOf(const QColor &text, const QColor &base)
{
    QPalette palette;
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Base, base);
    return palette;
}

void addPalettes()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << paletteOf(Qt::black, Qt::white);
    QTest::newRow("dark") << paletteOf(QColor(0xee, 0xee, 0xee), QColor(0x23, 0x26, 0x29));
    QTest::newRow("high contrast") << paletteOf(Qt::yellow, Qt::black);
    QTest::newRow("poor") << paletteOf(QColor(0x88, 0x88, 0x88), QColor(0x77, 0x77, 0x77));
    QTest::newRow("coloured") << paletteOf(QColor(0x20, 0x20, 0x90), QColor(0xff, 0xd0, 0xd0));
}

} // namespace

void TestTreemapColors::knownRatios()
{
    QCOMPARE(contrastRatio(Qt::black, Qt::white), 21.0);
    QCOMPARE(contrastRatio(Qt::white, Qt::black), 21.0);
    QCOMPARE(contrastRatio(Qt::red, Qt::red), 1.0);
    // The grey that just passes on white.
    QVERIFY(contrastRatio(QColor(0x76, 0x76, 0x76), Qt::white) >= MinContrast);
    QVERIFY(contrastRatio(QColor(0x77, 0x77, 0x77), Qt::white) < MinContrast);
}

void TestTreemapColors::readableColors()
{
    QCOMPARE(readable(Qt::black, Qt::white), QColor(Qt::black));
    for (int grey = 0; grey < 256; ++grey) {
        const QColor background(grey, grey, grey);
        for (const QColor &wanted : {QColor(Qt::red), background, QColor(Qt::blue)})
            QVERIFY(contrastRatio(readable(wanted, background), background) >= MinContrast);
    }
}

void TestTreemapColors::textsAreReadable_data()
{
    addPalettes();
}

void TestTreemapColors::textsAreReadable()
{
    QFETCH(const QPalette, palette);
    const TreemapColors colors(palette);
    for (const MemberKind kind : allMemberKinds) {
        for (const QColor &background : {colors.file(kind), colors.folder(kind)})
            QVERIFY(contrastRatio(colors.text(background), background) >= MinContrast);
    }
}

void TestTreemapColors::kindsDiffer_data()
{
    addPalettes();
}

void TestTreemapColors::kindsDiffer()
{
    QFETCH(const QPalette, palette);
    const TreemapColors colors(palette);
    for (const MemberKind kind : allMemberKinds) {
        QVERIFY(colors.file(kind) != colors.folder(kind));
        for (const MemberKind other : allMemberKinds)
            QVERIFY(kind == other || colors.file(kind) != colors.file(other));
    }
}

QTEST_MAIN(TestTreemapColors)
#include "tst_treemapcolors.moc"
