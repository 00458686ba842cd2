// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Devices.h"
#include "archive/ByteSource.h"

#include <QBuffer>
#include <QtTest>

#include <limits>

using namespace fixture;

namespace {

/// A device that delivers at most @p largest bytes at once, and ends or fails after @p existing bytes.
class SlowDevice : public QBuffer
{
public:
    SlowDevice(const QByteArray &bytes, qint64 largest, qint64 existing) : m_largest(largest), m_existing(existing)
    {
        setData(bytes);
    }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const qint64 left = m_existing - pos();
        return left <= 0 ? -1 : QBuffer::readData(data, qMin(qMin(size, m_largest), left));
    }

private:
    qint64 m_largest;
    qint64 m_existing;
};

/// The source @p kind of the bytes "abcdef".
std::shared_ptr<ByteSource> source(const QByteArray &kind, QBuffer &device)
{
    if (kind == "device")
        return BytesOfDevice::open(&device);
    if (kind == "part")
        return std::make_shared<PartOfBytes>(std::make_shared<BytesInMemory>(SharedBytes("xabcdefy")), 1, 6);
    return std::make_shared<BytesInMemory>(SharedBytes("abcdef"));
}

} // namespace

class TestByteSource : public QObject
{
    Q_OBJECT

private slots:
    void rangesAreClipped_data();
    void rangesAreClipped();
    void partsAreClipped_data();
    void partsAreClipped();
    void viewsOutliveTheirSource();
    void partsKeepTheirSource();
    void devicesDeliverInPieces();
    void devicesThatFailEndEarly();
    void devicesThatAreOpenOrSequential();
    void devicesAreClosedAtTheEnd();
};

void TestByteSource::rangesAreClipped_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<qint64>("at");
    QTest::addColumn<qint64>("count");
    QTest::addColumn<QByteArray>("content");
    constexpr qint64 Most = std::numeric_limits<qint64>::max();
    for (const QByteArray kind : {"memory", "device", "part"}) {
        const auto row = [&kind](const char *name) -> QTestData & {
            return QTest::newRow((kind + ": " + name).constData()) << kind;
        };
        row("all") << qint64(0) << qint64(6) << QByteArray("abcdef");
        row("middle") << qint64(2) << qint64(3) << QByteArray("cde");
        row("beyond the end") << qint64(4) << qint64(9) << QByteArray("ef");
        row("far beyond") << qint64(5) << Most << QByteArray("f");
        row("from the end") << qint64(6) << qint64(1) << QByteArray();
        row("from behind the end") << Most << Most << QByteArray();
        row("negative start") << qint64(-1) << qint64(2) << QByteArray();
        row("negative size") << qint64(1) << qint64(-2) << QByteArray();
    }
}

void TestByteSource::rangesAreClipped()
{
    QFETCH(QByteArray, kind);
    QFETCH(qint64, at);
    QFETCH(qint64, count);
    QFETCH(QByteArray, content);
    QBuffer device;
    device.setData("abcdef");
    const std::shared_ptr<ByteSource> bytes = source(kind, device);
    QCOMPARE(bytes->size(), qint64(6));
    QCOMPARE(bytes->read(at, count), content);
    QCOMPARE(bytes->view(at, count).toByteArray(), content);
}

void TestByteSource::partsAreClipped_data()
{
    QTest::addColumn<qint64>("start");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("beyond the end") << qint64(4) << qint64(9) << QByteArray("ef");
    QTest::newRow("from the end") << qint64(6) << qint64(1) << QByteArray();
    QTest::newRow("far") << std::numeric_limits<qint64>::max() << qint64(1) << QByteArray();
    QTest::newRow("negative start") << qint64(-1) << qint64(2) << QByteArray();
    QTest::newRow("negative size") << qint64(1) << qint64(-2) << QByteArray();
}

void TestByteSource::partsAreClipped()
{
    QFETCH(qint64, start);
    QFETCH(qint64, size);
    QFETCH(QByteArray, content);
    PartOfBytes part(std::make_shared<BytesInMemory>(SharedBytes("abcdef")), start, size);
    QCOMPARE(part.size(), qint64(content.size()));
    QCOMPARE(part.read(0, 100), content);
    QCOMPARE(part.view(0, 100).toByteArray(), content);
}

void TestByteSource::viewsOutliveTheirSource()
{
    auto bytes = std::make_unique<BytesInMemory>(SharedBytes(QByteArray(1000, 'x')));
    const SharedBytes view = bytes->view(10, 900);
    bytes.reset();
    QCOMPARE(view.toByteArray(), QByteArray(900, 'x'));
}

void TestByteSource::partsKeepTheirSource()
{
    QBuffer device;
    device.setData("abcdef");
    std::shared_ptr<ByteSource> whole = BytesOfDevice::open(&device);
    PartOfBytes left(whole, 0, 3);
    PartOfBytes right(whole, 3, 3);
    whole.reset();
    QCOMPARE(left.read(1, 2), QByteArray("bc"));
    QCOMPARE(right.read(1, 2), QByteArray("ef"));
    QCOMPARE(left.read(0, 1), QByteArray("a"));
}

void TestByteSource::devicesDeliverInPieces()
{
    SlowDevice device("abcdef", 1, 6);
    const auto bytes = BytesOfDevice::open(&device);
    QCOMPARE(bytes->read(1, 4), QByteArray("bcde"));
}

void TestByteSource::devicesThatFailEndEarly()
{
    SlowDevice device("abcdef", 6, 4);
    const auto bytes = BytesOfDevice::open(&device);
    QCOMPARE(bytes->read(1, 5), QByteArray("bcd"));
    QCOMPARE(bytes->read(5, 1), QByteArray());
    QCOMPARE(bytes->read(0, 2), QByteArray("ab"));
}

void TestByteSource::devicesThatAreOpenOrSequential()
{
    QBuffer device;
    QVERIFY(device.open(QIODevice::ReadOnly));
    QVERIFY(BytesOfDevice::open(&device) == nullptr);
    QVERIFY(device.isOpen());
    SequentialDevice sequential("abc");
    sequential.close();
    QVERIFY(BytesOfDevice::open(&sequential) == nullptr);
    QVERIFY(BytesOfDevice::open(nullptr) == nullptr);
}

void TestByteSource::devicesAreClosedAtTheEnd()
{
    QBuffer device;
    {
        const auto bytes = BytesOfDevice::open(&device);
        QVERIFY(device.isOpen());
    }
    QVERIFY(!device.isOpen());
}

QTEST_GUILESS_MAIN(TestByteSource)
#include "tst_bytesource.moc"
