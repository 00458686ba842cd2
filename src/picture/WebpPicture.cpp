// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/WebpPicture.h"

#include "picture/WebpLossless.h"

#include <QRect>
#include <QtEndian>

#include <cstring>

namespace {

constexpr int FileHeader = 12;
constexpr int ChunkHeader = 8;
constexpr int SizeAt = 4;
constexpr int CanvasSize = 10;
constexpr int FrameHeader = 16;
constexpr char Alpha = 0x10;

/*
 * Bytes that a decoder takes for a pixel at its peak, measured with Qt 5.15 and libwebp 1.2 and rounded up.
 */
constexpr int LossyBytes = 4;
/// The picture and its transparency: a plane, and the pixels of the lossless decoder that the plane is made from.
constexpr int LossyAlphaBytes = 9;
/// The picture, its pixels before the transforms are undone, and the transforms' own pictures.
constexpr int LosslessBytes = 9;
/// An animation's canvas, in addition to its frame.
constexpr int CanvasBytes = 4;

} // namespace

bool WebpPicture::strip(PictureStripper *stripper)
{
    if (!stripper->file().hasText(8, "WEBP"))
        return false;
    stripper->keep(0, FileHeader);
    if (!WebpPicture(stripper).keepPicture(FileHeader, stripper->file().size()))
        return false;
    qToLittleEndian(quint32(stripper->keptSize()) - ChunkHeader, stripper->kept() + SizeAt);
    stripper->finish();
    // Qt's plugin copies the file.
    stripper->decodingBytes += stripper->keptSize();
    return true;
}

bool WebpPicture::keepPicture(qint64 at, qint64 end)
{
    const ByteView &file = m_stripper->file();
    while (end - at >= ChunkHeader) {
        const auto is = [&file, at](const char *type) { return file.hasText(at, type); };
        const qint64 length = qMin(qint64(file.u32(at + SizeAt)), end - at - ChunkHeader);
        const qint64 data = at + ChunkHeader;
        const qint64 next = data + length + (length & 1);
        if (is("VP8X") && !m_isFrame && m_canvas.isEmpty()) {
            if (length < CanvasSize || !addCanvas(data))
                return false;
        } else if (is("ANMF") && !m_isFrame) {
            return length >= FrameHeader && addFrame(data) && keepPicture(data + FrameHeader, data + length);
        } else if (is("VP8 ") || is("VP8L")) {
            if (!addBitmap(is("VP8 "), data, length))
                return false;
            m_stripper->keep(at, next - at);
            return true;
        } else if (is("ALPH")) {
            if (!addTransparency(data, length))
                return false;
            m_stripper->keep(at, next - at);
        }
        at = next;
    }
    return false;
}

bool WebpPicture::addCanvas(qint64 data)
{
    const ByteView &file = m_stripper->file();
    if (!m_stripper->grow(file.u24(data + 4) + 1, file.u24(data + 7) + 1))
        return false;
    m_canvas = m_stripper->size();
    m_stripper->decodingBytes += m_stripper->pixels() * CanvasBytes;
    char *const chunk = m_stripper->keep(data - ChunkHeader, ChunkHeader + CanvasSize);
    qToLittleEndian(quint32(CanvasSize), chunk + SizeAt);
    // The other flags announce profiles, metadata and frames.
    chunk[ChunkHeader] &= Alpha;
    return true;
}

bool WebpPicture::addFrame(qint64 data)
{
    constexpr int FlagsAt = FileHeader + ChunkHeader; // in the kept canvas
    constexpr int SidesAt = FlagsAt + 4;
    constexpr int SidesSize = 6;
    const ByteView &file = m_stripper->file();
    const QRect frame(2 * int(file.u24(data)), 2 * int(file.u24(data + 3)), int(file.u24(data + 6)) + 1,
                      int(file.u24(data + 9)) + 1);
    if (m_canvas.isEmpty() || !QRect(QPoint(), m_canvas).contains(frame))
        return false;
    m_isFrame = true;
    m_stripper->canvas = m_canvas;
    m_stripper->place = frame.topLeft();
    m_canvas = frame.size();
    // A frame may be transparent although no flag announces it.
    m_stripper->kept()[FlagsAt] |= Alpha;
    std::memcpy(m_stripper->kept() + SidesAt, file.part(data + 6, SidesSize).data(), SidesSize);
    return true;
}

bool WebpPicture::addBitmap(bool isLossy, qint64 data, qint64 length)
{
    constexpr int LossyHeader = 10;
    constexpr int LosslessHeader = 5;
    constexpr quint32 SideMask = 0x3fff;
    const ByteView &file = m_stripper->file();
    const quint32 sides = file.u32(data + 1);
    const QSize size(int(isLossy ? file.u16(data + 6) & SideMask : (sides & SideMask) + 1),
                     int(isLossy ? file.u16(data + 8) & SideMask : (sides >> 14 & SideMask) + 1));
    if (length < (isLossy ? LossyHeader : LosslessHeader) || !m_stripper->grow(size.width(), size.height()))
        return false;
    m_stripper->decodingBytes += m_stripper->pixels() * (isLossy ? LossyBytes : LosslessBytes);
    return isLossy || addLossless(data + LosslessHeader, data + length, size);
}

// Packed as a lossless picture without a header, of the same size as the picture after it.
bool WebpPicture::addTransparency(qint64 data, qint64 length)
{
    constexpr int MethodMask = 3;
    if (length < 1 || m_canvas.isEmpty())
        return false;
    m_stripper->decodingBytes += m_stripper->pixels() * LossyAlphaBytes;
    return (m_stripper->file().u8(data) & MethodMask) == 0 || addLossless(data + 1, data + length, m_canvas);
}

bool WebpPicture::addLossless(qint64 at, qint64 end, QSize size)
{
    const ByteView bytes = m_stripper->file().part(at, end - at);
    const WebpLossless stream(QByteArray::fromRawData(reinterpret_cast<const char *>(bytes.data()), int(bytes.size())),
                              size.width(), size.height());
    m_stripper->steps += stream.bitsRead();
    m_stripper->decodingBytes += stream.tableBytes();
    return stream.isValid();
}
