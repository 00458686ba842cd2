// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/GifPicture.h"

#include <array>

namespace {

constexpr int ScreenAt = 6;
constexpr int ScreenSize = 7;
constexpr int Extension = 0x21;
constexpr int Transparency = 0xf9;
constexpr int Picture = 0x2c;
constexpr int PictureHeader = 10;
constexpr int MaxCodeBits = 12;

int paletteSize(int flags)
{
    return (flags & 0x80) != 0 ? 3 << ((flags & 7) + 1) : 0;
}

/// The offset after the blocks that begin at @p at, including the block of length 0.
qint64 blocksEnd(const ByteView &file, qint64 at)
{
    while (file.u8(at) != 0)
        at += 1 + file.u8(at);
    return at + 1;
}

/// Counts the pixels that codes represent, as a decoder makes them.
class PixelCounter
{
public:
    PixelCounter(int pixelBits, qint64 pixels) : m_clear(1 << pixelBits), m_firstBits(pixelBits + 1), m_left(pixels)
    {
        startOver();
    }

    /// Whether no more pixels follow: the picture is full, has ended or is damaged.
    bool isDone() const { return m_left <= 0; }
    void add(int byte)
    {
        m_pending |= quint32(byte) << m_pendingBits;
        m_pendingBits += 8;
        while (m_pendingBits >= m_bits && !isDone()) {
            const int code = int(m_pending & ((1U << m_bits) - 1));
            m_pending >>= m_bits;
            m_pendingBits -= m_bits;
            addCode(code);
        }
    }

private:
    void startOver()
    {
        m_bits = m_firstBits;
        m_next = m_clear + 2;
        m_previous = 0;
    }
    int lengthOf(int code) const { return code < m_clear + 2 ? 1 : m_lengths[size_t(code)]; }
    void addCode(int code)
    {
        const bool isFirst = m_previous == 0;
        if (code == m_clear) {
            startOver();
        } else if (code == m_clear + 1 || (isFirst && code > m_clear)) {
            m_left = 0; // the end, or a code that is not defined yet
        } else if (isFirst) {
            m_previous = 1;
            --m_left;
        } else {
            // A code may be the one that it defines: the previous row, and its first pixel again.
            const int length = code < m_next ? lengthOf(code) : m_previous + 1;
            if (m_next < 1 << MaxCodeBits)
                m_lengths[size_t(m_next++)] = m_previous + 1;
            if (m_next >= 1 << m_bits && m_bits < MaxCodeBits)
                ++m_bits;
            m_previous = length;
            m_left -= length;
        }
    }

    const int m_clear;
    const int m_firstBits;
    qint64 m_left;
    int m_bits = 0;
    int m_next = 0;     ///< the code that is defined next
    int m_previous = 0; ///< pixels of the previous code; 0 for none
    std::array<int, 1 << MaxCodeBits> m_lengths{};
    quint32 m_pending = 0;
    int m_pendingBits = 0;
};

/// Keeps the part of the blocks at @p at that fills a picture of @p pixels; false when the blocks end earlier.
bool keepCodes(PictureStripper *stripper, qint64 at, int pixelBits, qint64 pixels)
{
    const ByteView &file = stripper->file();
    PixelCounter counter(pixelBits, pixels);
    while (file.u8(at) != 0 && !counter.isDone()) {
        const int length = file.u8(at);
        int used = 0;
        while (used < length && !counter.isDone())
            counter.add(file.u8(at + 1 + used++));
        *stripper->keep(at, 1 + used) = char(used);
        at += 1 + length;
    }
    return counter.isDone() || file.has(at, 1);
}

} // namespace

bool GifPicture::strip(PictureStripper *stripper)
{
    constexpr int MaxPixelBits = MaxCodeBits - 1;
    // The picture, and a copy that a frame may ask to restore.
    constexpr int ColorBytes = 8;
    const ByteView &file = stripper->file();
    const qint64 screenEnd = ScreenAt + ScreenSize + paletteSize(file.u8(ScreenAt + 4));
    qint64 at = screenEnd;
    qint64 transparencyAt = 0;
    while (file.u8(at) == Extension) { // ends: bytes beyond the end read as 0
        if (file.u8(at + 1) == Transparency)
            transparencyAt = at;
        at = blocksEnd(file, at + 2);
    }
    if (file.u8(at) != Picture)
        return false;
    const int width = file.u16(at + 5);
    const int height = file.u16(at + 7);
    const int codesAt = PictureHeader + paletteSize(file.u8(at + 9));
    const int pixelBits = file.u8(at + codesAt);
    // Both sizes count: a decoder enlarges a screen that is smaller than its picture.
    if (pixelBits > MaxPixelBits
        || !stripper->grow(qMax(1, int(file.u16(ScreenAt))), qMax(1, int(file.u16(ScreenAt + 2))))
        || !stripper->grow(qint64(file.u16(at + 1)) + width, qint64(file.u16(at + 3)) + height))
        return false;
    stripper->decodingBytes = stripper->pixels() * ColorBytes;

    constexpr char BlocksEnd = 0;
    constexpr char FileEnd = 0x3b;
    stripper->keep(0, screenEnd);
    if (transparencyAt != 0)
        stripper->keep(transparencyAt, blocksEnd(file, transparencyAt + 2) - transparencyAt);
    stripper->keep(at, codesAt + 1);
    const bool isWhole = keepCodes(stripper, at + codesAt + 1, pixelBits, qint64(width) * height);
    stripper->finish(isWhole ? QByteArray().append(BlocksEnd).append(FileEnd) : QByteArray());
    return true;
}
