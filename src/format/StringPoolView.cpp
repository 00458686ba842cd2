// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/StringPoolView.h"

#include <cstring>

namespace {

// The surrogate that three bytes of UTF-8 encode; 0 when they encode none.
ushort encodedSurrogate(const ByteView &text, qint64 at)
{
    const int first = text.u8(at);
    const int second = text.u8(at + 1);
    const int third = text.u8(at + 2);
    const bool isSurrogate = first == 0xed && (second & 0xe0) == 0xa0 && (third & 0xc0) == 0x80;
    return isSurrogate ? ushort(0xd000 | (second & 0x3f) << 6 | (third & 0x3f)) : ushort(0);
}

// The place of the next pair of encoded surrogates from @p at on; the end of the text when there is none.
qint64 nextPair(const ByteView &text, qint64 at)
{
    constexpr int SurrogateStart = 0xed;
    constexpr qint64 PairSize = 6;
    while (at + PairSize <= text.size()) {
        const void *const start = std::memchr(text.data() + at, SurrogateStart, size_t(text.size() - at));
        if (start == nullptr)
            break;
        at = static_cast<const uchar *>(start) - text.data();
        if (QChar::isHighSurrogate(encodedSurrogate(text, at)) && QChar::isLowSurrogate(encodedSurrogate(text, at + 3)))
            return at;
        ++at;
    }
    return text.size();
}

QString fromUtf8(const ByteView &text)
{
    const auto plain = [&text](qint64 from, qint64 end) {
        return QString::fromUtf8(reinterpret_cast<const char *>(text.data()) + from, int(end - from));
    };
    qint64 pair = nextPair(text, 0);
    QString string = plain(0, pair);
    while (pair < text.size()) {
        string += QChar(encodedSurrogate(text, pair));
        string += QChar(encodedSurrogate(text, pair + 3));
        const qint64 from = pair + 6;
        pair = nextPair(text, from);
        string += plain(from, pair);
    }
    return string;
}

} // namespace

StringPoolView::StringPoolView(const ChunkView &chunk)
{
    if (!chunk.isValid() || chunk.type() != ChunkType::StringPool)
        return;
    const ByteView &bytes = chunk.bytes();
    m_offsets = bytes.from(chunk.headerSize());
    m_count = qMin(qint64(bytes.u32(CountAt)), m_offsets.size() / OffsetSize);
    m_isUtf8 = (bytes.u32(FlagsAt) & Utf8Flag) != 0;
    const bool hasStyles = bytes.u32(StyleCountAt) != 0;
    const qint64 start = bytes.u32(StringsStartAt);
    const qint64 end = hasStyles ? qMin(qint64(bytes.u32(StylesStartAt)), bytes.size()) : bytes.size();
    m_strings = bytes.part(start, (end - start) / unit() * unit());
    m_hasOddStyles = !hasStyles && bytes.u32(StylesStartAt) != 0;
    m_isSound = chunk.headerSize() >= HeaderSize && hasSoundStrings(chunk) && hasSoundStyles(chunk);
}

bool StringPoolView::hasSoundStrings(const ChunkView &chunk) const
{
    const ByteView &bytes = chunk.bytes();
    if (bytes.u32(CountAt) == 0)
        return true;
    constexpr int SmallestData = 3;
    return m_count == bytes.u32(CountAt) && bytes.u32(StringsStartAt) <= bytes.size() - SmallestData
           && !m_strings.isEmpty() && isEnd(m_strings.size() - unit());
}

bool StringPoolView::hasSoundStyles(const ChunkView &chunk) const
{
    const ByteView &bytes = chunk.bytes();
    const qint64 count = bytes.u32(StyleCountAt);
    if (count == 0)
        return true;
    const qint64 start = bytes.u32(StylesStartAt);
    const qint64 words = (bytes.size() - start) / OffsetSize;
    constexpr int EndWords = 3;
    constexpr quint32 EndWord = 0xffffffff;
    const qint64 end = start + (words - EndWords) * OffsetSize;
    if (start <= bytes.u32(StringsStartAt) && bytes.u32(CountAt) != 0)
        return false;
    const bool hasEnd = words >= EndWords && bytes.u32(end) == EndWord && bytes.u32(end + OffsetSize) == EndWord
                        && bytes.u32(end + qint64(2) * OffsetSize) == EndWord;
    return chunk.headerSize() + OffsetSize * qint64(bytes.u32(CountAt)) <= bytes.size() && hasEnd;
}

QString StringPoolView::at(qint64 index, int maxLength) const
{
    if (index < 0 || index >= m_count)
        return {};
    const qint64 at = qint64(m_offsets.u32(OffsetSize * index)) / unit() * unit();
    if (at >= m_strings.size() - unit())
        return {};
    return m_isUtf8 ? utf8At(at, maxLength) : utf16At(at, maxLength);
}

QString StringPoolView::utf8At(qint64 at, int maxLength) const
{
    at += (m_strings.u8(at) & 0x80) != 0 ? 2 : 1;
    qint64 length = m_strings.u8(at++);
    if ((length & 0x80) != 0)
        length = (length & 0x7f) << 8 | m_strings.u8(at++);
    constexpr int CutLengths = 0x8000;
    while (!isEnd(at + length) && m_strings.has(at, length))
        length += CutLengths;
    if (!isEnd(at + length))
        return {};
    constexpr int BytesPerCharacter = 3; // at most; those beyond the basic plane are two characters
    return fromUtf8(m_strings.part(at, qMin(length, BytesPerCharacter * qint64(maxLength)))).left(maxLength);
}

QString StringPoolView::utf16At(qint64 at, int maxLength) const
{
    qint64 length = m_strings.u16(at);
    at += 2;
    if ((length & 0x8000) != 0) {
        length = (length & 0x7fff) << 16 | m_strings.u16(at);
        at += 2;
    }
    if (!isEnd(at + 2 * length))
        return {};
    QString string(int(qMin(length, qint64(maxLength))), Qt::Uninitialized);
    qFromLittleEndian<quint16>(m_strings.data() + at, string.size(), string.data());
    return string;
}
