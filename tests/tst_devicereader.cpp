// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DeviceReader.h"

#include "Devices.h"

#include <QBuffer>
#include <QtTest>

using fixture::SequentialDevice;

namespace {

constexpr int Large = 100000;

QByteArray pattern(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = char(i * 31 + i / 256);
    return bytes;
}

/// A reader of a device that tells what it has at hand, or does not.
struct Reading {
    Reading(const QByteArray &bytes, bool tells) : device(bytes)
    {
        device.setTellsWhatIsAtHand(tells);
        reader.setDevice(&device);
    }

    SequentialDevice device;
    DeviceReader reader;
};

QByteArray readBytes(DeviceReader &reader, int size, qint64 mayFetch)
{
    QByteArray bytes(size, '\0');
    return bytes.left(int(qMax(qint64(0), reader.read(bytes.data(), size, mayFetch))));
}

} // namespace

class TestDeviceReader : public QObject
{
    Q_OBJECT

private slots:
    void readsWhatTheDeviceHas_data();
    void readsWhatTheDeviceHas();
    void fetchesNoMoreThanItMay();
    void looksAtWhatIsAtHand();
    void looksNowhereWhenNothingIsTold();
    void looksNowhereWhenMuchMayBeFetched();
    void looksNowhereOnARandomAccessDevice();
    void looksAtNothingTwice();
    void takesWhatWasLookedAtWhenItReads();
    void takesWhatWasLookedAtWhenItEnds();
    void aNewDeviceStartsAnew();
    void answersAsTheDeviceDoesAtItsEnd_data();
    void answersAsTheDeviceDoesAtItsEnd();
};

void TestDeviceReader::readsWhatTheDeviceHas_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<qint64>("mayFetch");
    for (const int step : {1, 7, 16384, 40000}) {
        QTest::addRow("%d, nothing ahead", step) << step << qint64(-1);
        QTest::addRow("%d, all ahead", step) << step << qint64(Large);
    }
}

void TestDeviceReader::readsWhatTheDeviceHas()
{
    QFETCH(const int, step);
    QFETCH(const qint64, mayFetch);
    const QByteArray bytes = pattern(Large);
    Reading reading(bytes, false);
    auto &[device, reader] = reading;
    for (int at = 0; at < Large; at += step)
        QCOMPARE(readBytes(reader, qMin(step, Large - at), mayFetch < 0 ? -1 : mayFetch - at), bytes.mid(at, step));
}

void TestDeviceReader::fetchesNoMoreThanItMay()
{
    Reading reading(pattern(Large), false);
    auto &[device, reader] = reading;
    readBytes(reader, 10, 100);
    QCOMPARE(device.delivered(), 100);
    QCOMPARE(reader.atHand(), qint64(90));
    // What is at hand counts.
    readBytes(reader, 90, 90);
    QCOMPARE(device.delivered(), 100);
    readBytes(reader, 1, 0);
    QCOMPARE(device.delivered(), 101);
    QCOMPARE(reader.atHand(), qint64(0));
}

void TestDeviceReader::looksAtWhatIsAtHand()
{
    const QByteArray bytes = pattern(Large);
    Reading reading(bytes, true);
    auto &[device, reader] = reading;
    QVERIFY(reader.look(-1));
    QVERIFY(reader.atHand() > 1000);
    QCOMPARE(QByteArray(reader.next(), 1000), bytes.left(1000));
    QCOMPARE(device.taken(), 0);
}

void TestDeviceReader::looksNowhereWhenNothingIsTold()
{
    Reading reading(pattern(Large), false);
    auto &[device, reader] = reading;
    QVERIFY(!reader.look(-1));
    QCOMPARE(reader.atHand(), qint64(0));
    QCOMPARE(device.delivered(), 0);
}

void TestDeviceReader::looksNowhereWhenMuchMayBeFetched()
{
    Reading reading(pattern(Large), true);
    auto &[device, reader] = reading;
    QVERIFY(!reader.look(Large));
    QCOMPARE(device.delivered(), 0);
    // Nor when some of it was: that comes first.
    readBytes(reader, 1, Large);
    const qint64 fetched = reader.atHand();
    QVERIFY(fetched > 0);
    QVERIFY(reader.look(Large - 1));
    QCOMPARE(reader.atHand(), fetched);
}

void TestDeviceReader::looksNowhereOnARandomAccessDevice()
{
    QByteArray bytes = pattern(100);
    QBuffer device(&bytes);
    QVERIFY(device.open(QIODevice::ReadOnly));
    DeviceReader reader;
    reader.setDevice(&device);
    QVERIFY(!reader.look(-1));
    QCOMPARE(device.pos(), qint64(0));
}

void TestDeviceReader::looksAtNothingTwice()
{
    const QByteArray bytes = pattern(Large);
    Reading reading(bytes, true);
    auto &[device, reader] = reading;
    for (int at = 0; at < 3000; at += 30) {
        QVERIFY(reader.look(-1));
        QCOMPARE(QByteArray(reader.next(), 30), bytes.mid(at, 30));
        reader.take(30);
    }
    reader.release();
    QCOMPARE(device.taken(), 3000);
    QCOMPARE(reader.atHand(), qint64(0));
}

void TestDeviceReader::takesWhatWasLookedAtWhenItReads()
{
    const QByteArray bytes = pattern(Large);
    Reading reading(bytes, true);
    auto &[device, reader] = reading;
    QVERIFY(reader.look(-1));
    reader.take(5);
    QCOMPARE(readBytes(reader, 20000, -1), bytes.mid(5, 20000));
    QCOMPARE(device.taken(), 20005);
}

void TestDeviceReader::takesWhatWasLookedAtWhenItEnds()
{
    const QByteArray bytes = pattern(Large);
    SequentialDevice device(bytes);
    device.setTellsWhatIsAtHand(true);
    {
        DeviceReader reader;
        reader.setDevice(&device);
        QVERIFY(reader.look(-1));
        reader.take(5);
        QCOMPARE(device.taken(), 0);
    }
    QCOMPARE(device.taken(), 5);
    QCOMPARE(device.readAll(), bytes.mid(5));
}

void TestDeviceReader::aNewDeviceStartsAnew()
{
    SequentialDevice first(pattern(100));
    first.setTellsWhatIsAtHand(true);
    SequentialDevice second("second");
    DeviceReader reader;
    reader.setDevice(&first);
    QVERIFY(reader.look(-1));
    reader.take(3);
    reader.setDevice(&second);
    QCOMPARE(first.taken(), 3);
    QCOMPARE(reader.device(), &second);
    QCOMPARE(reader.atHand(), qint64(0));
    QCOMPARE(readBytes(reader, 6, 6), QByteArray("second"));
}

void TestDeviceReader::answersAsTheDeviceDoesAtItsEnd_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("no bytes") << 0;
    QTest::newRow("a fault") << -1;
}

void TestDeviceReader::answersAsTheDeviceDoesAtItsEnd()
{
    QFETCH(const int, answer);
    SequentialDevice device("abc");
    device.setAnswerAtEnd(answer);
    DeviceReader reader;
    reader.setDevice(&device);
    char bytes[10];
    QCOMPARE(reader.read(bytes, 10, -1), qint64(3));
    QCOMPARE(reader.read(bytes, 10, -1), qint64(answer));
    QCOMPARE(reader.read(bytes, 10, 100), qint64(answer));
    QVERIFY(!reader.isTooLong());
}

QTEST_GUILESS_MAIN(TestDeviceReader)
#include "tst_devicereader.moc"
