// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Cost.h"
#include "ZipBuilder.h"
#include "archive/Inflater.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cstring>
#include <memory>

#include <zlib.h>

using namespace fixture;

namespace {

QByteArray noise(int size)
{
    QRandomGenerator random(1);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = char(random.bounded(64));
    return bytes;
}

} // namespace

class TestInflater : public QObject
{
    Q_OBJECT

private slots:
    void wholeData();
    void dataIsCutAtTheSize();
    void dataThatIsShorterThanItsSize();
    void everyPrefixGivesAPrefix();
    void damagedDataEndsAtTheFault();
    void sizesThatAreImpossible();
    void memoryIsTakenForBytesThatArePossible();
    void checksums();
};

void TestInflater::wholeData()
{
    Inflater inflater;
    for (const QByteArray &content : {QByteArray(), QByteArray("a"), noise(70000), QByteArray(1 << 20, 'x')}) {
        const QByteArray packed = deflatedBehindEmptyBlocks(0, content);
        QCOMPARE(inflater.inflated(ByteView(packed), content.size()), content);
    }
}

void TestInflater::dataIsCutAtTheSize()
{
    const QByteArray content = noise(1000);
    const QByteArray packed = deflatedBehindEmptyBlocks(0, content);
    Inflater inflater;
    for (const int size : {0, 1, 500, 999})
        QCOMPARE(inflater.inflated(ByteView(packed), size), content.left(size));
}

void TestInflater::dataThatIsShorterThanItsSize()
{
    const QByteArray content = noise(1000);
    const QByteArray packed = deflatedBehindEmptyBlocks(0, content);
    const QByteArray inflated = Inflater().inflated(ByteView(packed), 5000);
    QCOMPARE(inflated, content);
    QVERIFY(inflated.capacity() < 2000);
}

void TestInflater::everyPrefixGivesAPrefix()
{
    const QByteArray content = noise(600);
    const QByteArray packed = deflatedBehindEmptyBlocks(100, content);
    Inflater inflater;
    qint64 before = 0;
    for (int size = 0; size < packed.size(); ++size) {
        // A block of exactly this size, so that a sanitizer sees a read beyond it.
        const auto block = std::make_unique<uchar[]>(std::size_t(size));
        std::memcpy(block.get(), packed.constData(), std::size_t(size));
        const QByteArray part = inflater.inflated(ByteView(block.get(), size), content.size());
        QVERIFY(content.startsWith(part));
        QVERIFY(part.size() >= before);
        before = part.size();
    }
    QVERIFY(before > 0);
}

void TestInflater::damagedDataEndsAtTheFault()
{
    // A whole block, then a block of a type that does not exist.
    QByteArray packed("\0\5\0\xfa\xffhello\7", 11);
    QCOMPARE(Inflater().inflated(ByteView(packed), 100), QByteArray("hello"));
    packed[0] = '\7';
    QCOMPARE(Inflater().inflated(ByteView(packed), 100), QByteArray());
}

void TestInflater::sizesThatAreImpossible()
{
    const QByteArray packed = deflatedBehindEmptyBlocks(0, "abc");
    QCOMPARE(Inflater().inflated(ByteView(packed), -1), QByteArray());
    QCOMPARE(Inflater().inflated(ByteView(packed), qint64(1) << 40), QByteArray());
    QCOMPARE(Inflater().inflated(ByteView(), 100), QByteArray());
}

void TestInflater::memoryIsTakenForBytesThatArePossible()
{
    const QByteArray packed = deflatedBehindEmptyBlocks(0, "abc");
    const Cost taken = cost([&packed]() { Inflater().inflated(ByteView(packed), 1 << 30); });
    QVERIFY(taken.ended);
    QVERIFY2(taken.memory < 100000, qPrintable(QString::number(taken.memory)));
}

void TestInflater::checksums()
{
    const QByteArray content = noise(100000);
    const auto expected = quint32(crc32(0, reinterpret_cast<const Bytef *>(content.constData()), uInt(content.size())));
    QCOMPARE(Inflater::checksum(ByteView(content)), expected);
    quint32 sum = 0;
    for (int at = 0; at < content.size(); at += 999)
        sum = Inflater::checksum(ByteView(content).part(at, 999), sum);
    QCOMPARE(sum, expected);
    QCOMPARE(Inflater::checksum(ByteView()), quint32(0));
}

QTEST_GUILESS_MAIN(TestInflater)
#include "tst_inflater.moc"
