// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Pictures.h"
#include "picture/WebpLossless.h"

#include <QtTest>

using namespace fixture;

/*
 * Streams of a picture of 16 x 16 pixels. The entropy image has one pixel for each block of 4 x 4. Encoders do not
 * write such streams; tst_pictures tests the streams that they do write.
 */

namespace {

constexpr int Side = 16;
constexpr int LargestLiteral = 255;
constexpr int CodeOfBytes = 256;
constexpr int LengthPrefixes = 24;

// A prefix code of one symbol, which takes no bits.
void putOne(BitWriter &bits, quint32 symbol)
{
    bits.put(1, 1).put(0, 1).put(1, 1).put(symbol, 8);
}

// Writes code lengths of 0 or 1, one by one or as runs of zeros.
class Lengths
{
public:
    // The code of the lengths: 17 is unused, 18 (a run of zeros) has one bit, 0 is unused, 1 has one bit.
    explicit Lengths(BitWriter &bits) : m_bits(bits)
    {
        bits.put(0, 1).put(0, 4).put(0, 3).put(1, 3).put(0, 3).put(1, 3);
    }

    Lengths &all()
    {
        m_bits.put(0, 1); // one length for each symbol
        return *this;
    }
    Lengths &limited(int count)
    {
        m_bits.put(1, 1).put(7, 3).put(quint32(count) - 2, 16);
        return *this;
    }
    Lengths &one()
    {
        m_bits.put(0, 1);
        return *this;
    }
    Lengths &zeros(int count)
    {
        constexpr int Least = 11;
        constexpr int Most = 138;
        for (int run = 0; count > 0; count -= run) {
            run = count > Most && count < Most + Least ? count - Least : qMin(count, Most);
            m_bits.put(1, 1).put(quint32(run - Least), 7);
        }
        return *this;
    }

private:
    BitWriter &m_bits;
};

// The start of a stream: no transforms and no cache, then an entropy image with a cache of two colours, or without one.
BitWriter start(bool hasCache)
{
    BitWriter bits;
    bits.put(0, 2).put(1, 1).put(0, 3);
    return hasCache ? bits.put(1, 1).put(1, 4) : bits.put(0, 1);
}

WebpLossless stream(const BitWriter &bits)
{
    return WebpLossless(bits.data(), Side, Side);
}

} // namespace

class TestWebpLossless : public QObject
{
    Q_OBJECT

private slots:
    void picturesOfOneColour();
    void picturesOutOfTheCache();
    void copiesOfNothing();
    void symbolsOutOfTheAlphabet();
    void moreLengthsThanSymbols();
    void codesThatAreNotFull();
    void streamsThatBreakOff();
};

void TestWebpLossless::picturesOfOneColour()
{
    BitWriter bits = start(false);
    for (const quint32 symbol : {3U, 1U, 0U, 0U, 0U})
        putOne(bits, symbol);
    const WebpLossless found = stream(bits);
    QVERIFY(found.isValid());
    QCOMPARE(found.groupCount(), 0x103 + 1);
}

void TestWebpLossless::picturesOutOfTheCache()
{
    constexpr int LastOfCache = CodeOfBytes + LengthPrefixes + 1;
    // Only cached colours; an unused cache entry is zero.
    BitWriter only = start(true);
    Lengths(only).all().zeros(LastOfCache).one();
    for (int i = 0; i < 4; ++i)
        putOne(only, 0);
    QVERIFY(stream(only).isValid());
    QCOMPARE(stream(only).groupCount(), 1);

    // One pixel, then its cache entry.
    BitWriter mixed = start(true);
    Lengths(mixed).all().one().zeros(LastOfCache - 1).one();
    for (const quint32 symbol : {7U, 0U, 0U, 0U})
        putOne(mixed, symbol);
    mixed.put(0xfffe, Side);
    QVERIFY(stream(mixed).isValid());
    QCOMPARE(stream(mixed).groupCount(), 0x700 + 1);
}

void TestWebpLossless::copiesOfNothing()
{
    BitWriter bits = start(false);
    Lengths(bits).all().zeros(CodeOfBytes + 4).one().zeros(LengthPrefixes - 5);
    for (int i = 0; i < 4; ++i)
        putOne(bits, 0);
    QVERIFY(!stream(bits).isValid());
}

void TestWebpLossless::symbolsOutOfTheAlphabet()
{
    // There are 40 distances.
    for (const int distance : {39, 40, LargestLiteral}) {
        BitWriter bits = start(false);
        for (int i = 0; i < 4; ++i)
            putOne(bits, 0);
        putOne(bits, quint32(distance));
        QCOMPARE(stream(bits).isValid(), distance < 40);
    }
}

void TestWebpLossless::moreLengthsThanSymbols()
{
    for (const int count : {CodeOfBytes, CodeOfBytes + 1}) {
        BitWriter run = start(false);
        putOne(run, 0);
        Lengths(run).all().one().zeros(count - 1);
        for (int i = 0; i < 3; ++i)
            putOne(run, 0);
        QCOMPARE(stream(run).isValid(), count == CodeOfBytes);

        BitWriter limit = start(false);
        putOne(limit, 0);
        Lengths(limit).limited(count).one().zeros(CodeOfBytes - 1);
        for (int i = 0; i < 3; ++i)
            putOne(limit, 0);
        QCOMPARE(stream(limit).isValid(), count == CodeOfBytes);
    }
}

void TestWebpLossless::codesThatAreNotFull()
{
    // A third code of one bit has no room. Without codes, no symbol can be read.
    for (const int ones : {0, 1, 2, 3}) {
        BitWriter bits = start(false);
        putOne(bits, 0);
        Lengths lengths(bits);
        lengths.all();
        for (int i = 0; i < ones; ++i)
            lengths.one();
        lengths.zeros(CodeOfBytes - ones);
        for (int i = 0; i < 3; ++i)
            putOne(bits, 0);
        bits.put(0, Side);
        QCOMPARE(stream(bits).isValid(), ones == 1 || ones == 2);
    }
}

void TestWebpLossless::streamsThatBreakOff()
{
    BitWriter bits = start(true);
    for (int i = 0; i < 5; ++i)
        putOne(bits, 0);
    const QByteArray good = bits.data();
    for (int size = 0; size <= good.size(); ++size)
        QCOMPARE(WebpLossless(good.left(size), Side, Side).isValid(), size == good.size());
}

QTEST_GUILESS_MAIN(TestWebpLossless)
#include "tst_webplossless.moc"
