// SPDX-License-Identifier: LGPL-2.1-or-later
#include "stream/DeviceReader.h"

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

/// A reader of a device. The device is buffered unless @p mode has the flag Unbuffered.
struct Reading {
    explicit Reading(const QByteArray &bytes, QIODevice::OpenMode mode = QIODevice::ReadOnly) : device(bytes, mode)
    {
        reader.setDevice(&device);
    }

    SequentialDevice device;
    DeviceReader reader;
};

QByteArray readBytes(DeviceReader &reader, int size)
{
    QByteArray bytes(size, '\0');
    return bytes.left(int(qMax(qint64(0), reader.read(bytes.data(), size))));
}

} // namespace

class TestDeviceReader : public QObject
{
    Q_OBJECT

private slots:
    void readsWhatTheDeviceHas_data();
    void readsWhatTheDeviceHas();
    void looksAtWhatTheDeviceKeeps();
    void looksNowhereBeforeTheDeviceWasRead();
    void looksNowhereOnAnUnbufferedDevice();
    void looksNowhereOnARandomAccessDevice();
    void asksTheDeviceForNothingToLook();
    void looksAtNothingTwice();
    void takesWhatWasLookedAtWhenItReads();
    void takesWhatWasLookedAtWhenItIsReleased();
    void leavesTheDeviceAloneWhenItEnds();
    void aNewDeviceStartsAnew();
    void answersAsTheDeviceDoesAtItsEnd_data();
    void answersAsTheDeviceDoesAtItsEnd();
};

void TestDeviceReader::readsWhatTheDeviceHas_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<bool>("looks");
    for (const int step : {1, 7, 16384, 40000}) {
        QTest::addRow("%d", step) << step << false;
        QTest::addRow("%d, looks before", step) << step << true;
    }
}

void TestDeviceReader::readsWhatTheDeviceHas()
{
    QFETCH(const int, step);
    QFETCH(const bool, looks);
    const QByteArray bytes = pattern(Large);
    Reading reading(bytes);
    auto &[device, reader] = reading;
    for (int at = 0; at < Large; at += step) {
        if (looks)
            reader.look();
        QCOMPARE(readBytes(reader, qMin(step, Large - at)), bytes.mid(at, step));
    }
}

void TestDeviceReader::looksAtWhatTheDeviceKeeps()
{
    const QByteArray bytes = pattern(Large);
    Reading reading(bytes);
    auto &[device, reader] = reading;
    readBytes(reader, 1);
    QVERIFY(reader.look());
    QCOMPARE(reader.atHand(), qint64(device.delivered() - 1));
    QCOMPARE(QByteArray(reader.next(), int(reader.atHand())), bytes.mid(1, int(reader.atHand())));
    QCOMPARE(device.taken(), 1);
}

void TestDeviceReader::looksNowhereBeforeTheDeviceWasRead()
{
    Reading reading(pattern(Large));
    auto &[device, reader] = reading;
    QVERIFY(!reader.look());
    QCOMPARE(reader.atHand(), qint64(0));
    QCOMPARE(device.delivered(), 0);
}

void TestDeviceReader::looksNowhereOnAnUnbufferedDevice()
{
    Reading reading(pattern(Large), QIODevice::ReadOnly | QIODevice::Unbuffered);
    auto &[device, reader] = reading;
    for (int size = 1; size < 10; ++size) {
        const int before = device.delivered();
        QVERIFY(!reader.look());
        readBytes(reader, size);
        QCOMPARE(device.delivered(), before + size);
    }
}

void TestDeviceReader::looksNowhereOnARandomAccessDevice()
{
    QByteArray bytes = pattern(100);
    QBuffer device(&bytes);
    QVERIFY(device.open(QIODevice::ReadOnly));
    DeviceReader reader;
    reader.setDevice(&device);
    QVERIFY(!reader.look());
    readBytes(reader, 1);
    QVERIFY(!reader.look());
    QCOMPARE(device.pos(), qint64(1));
}

void TestDeviceReader::asksTheDeviceForNothingToLook()
{
    Reading reading(pattern(Large));
    auto &[device, reader] = reading;
    device.setLargestRead(10);
    readBytes(reader, 4);
    QVERIFY(reader.look());
    QCOMPARE(reader.atHand(), qint64(6));
    reader.take(6);
    QVERIFY(!reader.look());
    QCOMPARE(device.delivered(), 10);
}

void TestDeviceReader::looksAtNothingTwice()
{
    const QByteArray bytes = pattern(Large);
    Reading reading(bytes);
    auto &[device, reader] = reading;
    readBytes(reader, 30);
    for (int at = 30; at < 3000; at += 30) {
        QVERIFY(reader.look());
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
    Reading reading(bytes);
    auto &[device, reader] = reading;
    readBytes(reader, 1);
    QVERIFY(reader.look());
    reader.take(5);
    QCOMPARE(readBytes(reader, 20000), bytes.mid(6, 20000));
    QCOMPARE(device.taken(), 20006);
}

void TestDeviceReader::takesWhatWasLookedAtWhenItIsReleased()
{
    const QByteArray bytes = pattern(Large);
    Reading reading(bytes);
    auto &[device, reader] = reading;
    readBytes(reader, 1);
    QVERIFY(reader.look());
    reader.take(5);
    QCOMPARE(device.taken(), 1);
    reader.release();
    QCOMPARE(device.taken(), 6);
    QCOMPARE(device.readAll(), bytes.mid(6));
}

void TestDeviceReader::leavesTheDeviceAloneWhenItEnds()
{
    SequentialDevice device(pattern(Large), QIODevice::ReadOnly);
    {
        DeviceReader reader;
        reader.setDevice(&device);
        readBytes(reader, 1);
        QVERIFY(reader.look());
        reader.take(5);
    }
    QCOMPARE(device.taken(), 1);
}

void TestDeviceReader::aNewDeviceStartsAnew()
{
    SequentialDevice first(pattern(100), QIODevice::ReadOnly);
    SequentialDevice second("second");
    DeviceReader reader;
    reader.setDevice(&first);
    readBytes(reader, 1);
    QVERIFY(reader.look());
    reader.take(3);
    reader.setDevice(&second);
    QCOMPARE(first.taken(), 1);
    QCOMPARE(reader.device(), &second);
    QCOMPARE(reader.atHand(), qint64(0));
    QCOMPARE(readBytes(reader, 6), QByteArray("second"));
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
    QCOMPARE(reader.read(bytes, 10), qint64(3));
    QCOMPARE(reader.read(bytes, 10), qint64(answer));
    QVERIFY(!reader.isTooLong());
}

QTEST_GUILESS_MAIN(TestDeviceReader)
#include "tst_devicereader.moc"
