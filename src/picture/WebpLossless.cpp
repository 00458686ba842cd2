// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/WebpLossless.h"

#include <QtEndian>

#include <cstring>

namespace {

constexpr int LiteralCount = 256;
constexpr int LengthPrefixCount = 24;
constexpr int DistancePrefixCount = 40;
constexpr int MaxCacheBits = 11;
constexpr qint64 SymbolSize = 2; // bytes in PrefixCode::symbols

enum Transform : int {
    PredictorTransform = 0,
    ColorTransform = 1,
    SubtractGreenTransform = 2,
    ColorIndexingTransform = 3,
};

int blocks(qint64 pixels, int sizeBits)
{
    return int((pixels + (qint64(1) << sizeBits) - 1) >> sizeBits);
}

} // namespace

WebpLossless::WebpLossless(const QByteArray &bytes, int width, int height) : m_bytes(bytes)
{
    readTransforms(&width, height);
    m_cacheBits = readCacheBits();
    if (m_valid && bits(1) != 0) {
        const int sizeBits = int(bits(3)) + 2;
        m_groupCount = readSmallPicture(blocks(width, sizeBits), blocks(height, sizeBits)) + 1;
    }
}

qint64 WebpLossless::tableBytes() const
{
    // The largest tables of 8 bits, with further tables behind them, for alphabets of these sizes; and the record of a
    // group, with its table for short codes.
    constexpr qint64 EntriesWithoutCache = 2956;
    constexpr qint64 EntryBytes = 4;
    constexpr qint64 RecordBytes = 640;
    const qint64 cacheEntries = m_cacheBits > 0 ? qint64(1) << m_cacheBits : 0;
    return m_groupCount * (RecordBytes + EntryBytes * (EntriesWithoutCache + cacheEntries));
}

// The lowest bit of a byte comes first. Past the end all bits are zeros.
quint32 WebpLossless::nextBits() const
{
    constexpr qint64 WindowSize = sizeof(quint32);
    const qint64 byte = m_at >> 3;
    char window[WindowSize] = {};
    std::memcpy(window, m_bytes.constData() + byte, size_t(qMin(WindowSize, m_bytes.size() - byte)));
    return qFromLittleEndian<quint32>(window) >> (m_at & 7);
}

// Past the end, the stream is not valid.
quint32 WebpLossless::bits(int count)
{
    if (count > bitsLeft()) {
        fail();
        return 0;
    }
    const quint32 value = nextBits() & ((1U << count) - 1);
    m_at += count;
    return value;
}

void WebpLossless::readTransforms(int *width, int height)
{
    quint32 seen = 0;
    while (m_valid && bits(1) != 0) {
        const quint32 type = bits(2);
        if ((seen & (1U << type)) != 0) { // each comes once, which ends the loop
            fail();
            return;
        }
        seen |= 1U << type;
        if (type == PredictorTransform || type == ColorTransform) {
            const int sizeBits = int(bits(3)) + 2;
            readSmallPicture(blocks(*width, sizeBits), blocks(height, sizeBits));
        } else if (type == ColorIndexingTransform) {
            const int colors = int(bits(8)) + 1;
            readSmallPicture(colors, 1);
            // Pixels of few colours share a byte.
            *width = blocks(*width, colors > 16 ? 0 : colors > 4 ? 1 : colors > 2 ? 2 : 3);
        }
    }
}

int WebpLossless::readCacheBits()
{
    if (bits(1) == 0)
        return 0;
    const int count = int(bits(4));
    if (count < 1 || count > MaxCacheBits)
        fail();
    return m_valid ? count : 0;
}

int WebpLossless::readSmallPicture(qint64 width, qint64 height)
{
    const int cacheBits = readCacheBits();
    const PrefixCode green = readCode(LiteralCount + LengthPrefixCount + (cacheBits > 0 ? 1 << cacheBits : 0));
    const PrefixCode red = readCode(LiteralCount);
    const PrefixCode blue = readCode(LiteralCount);
    const PrefixCode alpha = readCode(LiteralCount);
    const PrefixCode distance = readCode(DistancePrefixCount);
    int largest = 0;
    // Pixels without bits are all the same, however many there are.
    const bool isPlain = red.single >= 0 && blue.single >= 0 && alpha.single >= 0;
    if (green.single >= LiteralCount + LengthPrefixCount)
        return largest;
    if (green.single >= LiteralCount) { // copies without a source
        fail();
        return largest;
    }
    if (green.single >= 0 && isPlain)
        return (red.single << 8) | green.single;
    // Copied and cached pixels occurred before, so only new pixels may have a larger value.
    for (qint64 left = width * height; left > 0 && m_valid;) {
        const int first = symbol(green);
        if (first < LiteralCount) {
            largest = qMax(largest, (symbol(red) << 8) | first);
            symbol(blue);
            symbol(alpha);
            --left;
        } else if (first < LiteralCount + LengthPrefixCount) {
            left -= lengthOf(first - LiteralCount);
            lengthOf(symbol(distance));
        } else {
            --left;
        }
    }
    return largest;
}

// The length or the distance that a prefix and the bits after it encode: at least 1.
qint64 WebpLossless::lengthOf(int prefix)
{
    if (prefix < 4)
        return prefix + 1;
    const int extraBits = (prefix - 2) >> 1;
    const qint64 offset = qint64(2 + (prefix & 1)) << extraBits;
    return offset + bits(extraBits) + 1;
}

WebpLossless::PrefixCode WebpLossless::readCode(int alphabetSize)
{
    if (bits(1) == 0)
        return readLengths(alphabetSize);
    // One or two symbols, stored as such.
    QByteArray lengths(alphabetSize, '\0');
    const bool two = bits(1) != 0;
    const bool wide = bits(1) != 0;
    const quint32 symbols[] = {bits(wide ? 8 : 1), two ? bits(8) : 0};
    for (int i = 0; i < (two ? 2 : 1); ++i) {
        if (symbols[i] < quint32(alphabetSize))
            lengths[int(symbols[i])] = 1;
        else
            fail();
    }
    bool complete = false;
    PrefixCode code = made(lengths, &complete);
    if (!complete)
        fail();
    return code;
}

// The lengths of the symbols' codes. A prefix code encodes them, too.
WebpLossless::PrefixCode WebpLossless::readLengths(int alphabetSize)
{
    constexpr int LengthCodeCount = 19;
    constexpr char Order[LengthCodeCount] = {17, 18, 0, 1, 2, 3, 4, 5, 16, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    constexpr int RepeatPrevious = 16;
    constexpr int ManyZeros = 18;

    QByteArray lengthsOfLengths(LengthCodeCount, '\0');
    const int written = int(bits(4)) + 4;
    for (int i = 0; i < written; ++i)
        lengthsOfLengths[Order[i]] = char(bits(3));
    bool complete = false;
    const PrefixCode lengthCode = made(lengthsOfLengths, &complete);
    if (!complete) {
        fail();
        return {};
    }

    int left = alphabetSize;
    if (bits(1) != 0) {
        const int count = 2 + 2 * int(bits(3));
        left = 2 + int(bits(count));
    }
    if (left > alphabetSize)
        fail();
    QByteArray lengths;
    char previous = 8;
    for (; lengths.size() < alphabetSize && left > 0 && m_valid; --left) {
        const int length = symbol(lengthCode);
        if (length < RepeatPrevious) {
            lengths.append(char(length));
            if (length != 0)
                previous = char(length);
        } else if (length == RepeatPrevious) {
            lengths.append(3 + int(bits(2)), previous);
        } else {
            lengths.append(length == ManyZeros ? 11 + int(bits(7)) : 3 + int(bits(3)), '\0');
        }
    }
    if (lengths.size() > alphabetSize)
        fail();
    PrefixCode code = made(lengths, &complete);
    if (!complete)
        fail();
    return code;
}

/// The prefix code of these lengths. Of two codes of the same length, the smaller symbol has the smaller code.
WebpLossless::PrefixCode WebpLossless::made(const QByteArray &lengths, bool *complete)
{
    PrefixCode code;
    int used = 0;
    for (int i = 0; i < lengths.size(); ++i) {
        if (lengths.at(i) == 0)
            continue;
        ++code.countOfLength[int(lengths.at(i))];
        code.single = used++ == 0 ? i : -1;
    }
    if (used == 1) {
        *complete = true;
        return code;
    }
    qint64 open = 1;
    int positions[PrefixCode::MaxLength + 1] = {}; // of the next symbol with a code of each length
    for (int length = 1; length <= PrefixCode::MaxLength && open >= 0; ++length) {
        open = 2 * open - code.countOfLength[length];
        positions[length] = positions[length - 1] + (length > 1 ? code.countOfLength[length - 1] : 0);
    }
    *complete = open == 0;
    if (!*complete)
        return code;
    code.symbols.resize(int(SymbolSize) * used);
    for (int i = 0; i < lengths.size(); ++i) {
        if (lengths.at(i) != 0)
            qToLittleEndian(quint16(i), code.symbols.data() + SymbolSize * positions[int(lengths.at(i))]++);
    }
    return code;
}

int WebpLossless::symbol(const PrefixCode &code)
{
    if (code.single >= 0)
        return code.single;
    quint32 next = nextBits();
    const int most = int(qMin(qint64(PrefixCode::MaxLength), bitsLeft()));
    int value = 0;
    int first = 0;
    int index = 0;
    for (int length = 1; length <= most && m_valid; ++length) {
        value |= int(next & 1);
        next >>= 1;
        const int count = code.countOfLength[length];
        if (value - first < count) {
            m_at += length;
            return qFromLittleEndian<quint16>(code.symbols.constData() + SymbolSize * (index + value - first));
        }
        index += count;
        first = (first + count) << 1;
        value <<= 1;
    }
    fail();
    return 0;
}
