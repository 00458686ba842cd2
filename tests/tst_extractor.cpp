// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Devices.h"
#include "Extractor.h"

#include <QtTest>

class TestExtractor : public QObject
{
    Q_OBJECT

private slots:
    void works();
};

void TestExtractor::works()
{
    fixture::SequentialDevice device("\xff\xff");
    Extractor reader(&device);
    QCOMPARE(reader.get16(), qint16(-1));
}

QTEST_GUILESS_MAIN(TestExtractor)
#include "tst_extractor.moc"
