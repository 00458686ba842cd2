// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/StringPoolView.h"

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

QString fromUtf8(const ByteView &text)
{
    QString string;
    qint64 done = 0;
    const auto appendPlain = [&](qint64 end) {
        string += QString::fromUtf8(reinterpret_cast<const char *>(text.data()) + done, int(end - done));
    };
    for (qint64 at = 0; at + 6 <= text.size(); ++at) {
        if (text.u8(at) != 0xed)
            continue;
        const ushort high = encodedSurrogate(text, at);
        const ushort low = encodedSurrogate(text, at + 3);
        if (!QChar::isHighSurrogate(high) || !QChar::isLowSurrogate(low))
            continue;
        appendPlain(at);
        string += QChar(high);
        string += QChar(low);
        done = at + 6;
        at += 5;
    }
    appendPlain(text.size());
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
    m_strings = bytes.from(bytes.u32(StringsStartAt));
    m_isUtf8 = (bytes.u32(FlagsAt) & Utf8Flag) != 0;
}

QString StringPoolView::at(qint64 index, int maxLength) const
{
    if (index < 0 || index >= m_count)
        return {};
    const qint64 at = m_offsets.u32(OffsetSize * index);
    return m_isUtf8 ? utf8At(at, maxLength) : utf16At(at, maxLength);
}

QString StringPoolView::utf8At(qint64 at, int maxLength) const
{
    at += (m_strings.u8(at) & 0x80) != 0 ? 2 : 1;
    qint64 length = m_strings.u8(at++);
    if ((length & 0x80) != 0)
        length = (length & 0x7f) << 8 | m_strings.u8(at++);
    if (!m_strings.has(at, length))
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
    if (!m_strings.has(at, 2 * length))
        return {};
    QString string(int(qMin(length, qint64(maxLength))), Qt::Uninitialized);
    for (int i = 0; i < string.size(); ++i)
        string[i] = QChar(m_strings.u16(at + 2 * qint64(i)));
    return string;
}
