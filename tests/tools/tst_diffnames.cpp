// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiffNames.h"

#include <QtTest>

#include <limits>

/// The texts for sizes in the reports of `sorrel diff`.
class TestDiffNames : public QObject
{
    Q_OBJECT

private slots:
    void sizes_data();
    void sizes();
    void growthHasASign();
};

void TestDiffNames::sizes_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");
    const auto row = [](qint64 bytes, const char *text) { QTest::newRow(text) << bytes << QString::fromLatin1(text); };
    row(0, "0 B");
    row(1023, "1023 B");
    row(1024, "1.0 KiB");
    row(1536, "1.5 KiB");
    // Rounded, it would be 1024.0 KiB.
    row((1 << 20) - 1, "1.0 MiB");
    row((1 << 20) - 103, "1023.9 KiB");
    row(qint64(5) << 30, "5.0 GiB");
    row(std::numeric_limits<qint64>::max(), "8.0 EiB");
}

void TestDiffNames::sizes()
{
    QFETCH(qint64, bytes);
    QTEST(DiffNames::size(bytes), "text");
}

void TestDiffNames::growthHasASign()
{
    QCOMPARE(DiffNames::growth(0), QStringLiteral("0 B"));
    QCOMPARE(DiffNames::growth(2048), QStringLiteral("+2.0 KiB"));
    QCOMPARE(DiffNames::growth(-7), QStringLiteral("-7 B"));
    QCOMPARE(DiffNames::growth(-std::numeric_limits<qint64>::max()), QStringLiteral("-8.0 EiB"));
}

QTEST_GUILESS_MAIN(TestDiffNames)
#include "tst_diffnames.moc"
