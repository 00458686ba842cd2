// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestScan.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr qint64 HeaderSize = 8;
constexpr qint64 NodeHeaderSize = 16;
constexpr quint16 PoolChunk = 0x0001;
constexpr quint16 StartElementChunk = 0x0102;
constexpr quint16 IdsChunk = 0x0180;
constexpr quint32 Negative = 0x80000000;

constexpr quint8 NullType = 0x00;
constexpr quint8 ReferenceType = 0x01;
constexpr quint8 ThemeType = 0x02;
constexpr quint8 StringType = 0x03;
constexpr quint8 DynamicReferenceType = 0x07;
constexpr quint8 DynamicThemeType = 0x08;
constexpr quint8 DecimalType = 0x10;
constexpr quint8 HexadecimalType = 0x11;
constexpr quint8 BooleanType = 0x12;

// Attributes that are texts, in which a word is not the name of a number.
bool isText(quint32 id)
{
    constexpr quint32 Ids[] = {
        0x01010001, // label
        0x01010003, // name
        0x01010202, // targetActivity
        0x0101021c, // versionName
    };
    return std::find(std::begin(Ids), std::end(Ids), id) != std::end(Ids);
}

} // namespace

ManifestScan::ManifestScan(const QByteArray &bytes) : m_bytes(bytes)
{
    const qint64 size = m_bytes.u32(4);
    if (size < HeaderSize || !m_bytes.has(0, size))
        return;
    for (qint64 at = HeaderSize; at < size; at += m_bytes.u32(at + 4)) {
        const qint64 chunkSize = m_bytes.u32(at + 4);
        if (size - at < HeaderSize || chunkSize < HeaderSize || chunkSize > size - at || !scanChunk(at, chunkSize))
            return;
    }
    m_isRegular = true;
}

bool ManifestScan::scanChunk(qint64 at, qint64 size)
{
    const qint64 headerSize = m_bytes.u16(at + 2);
    if (headerSize < HeaderSize || headerSize > size)
        return false;
    switch (m_bytes.u16(at)) {
    case PoolChunk:
        m_pool = PoolScan(m_bytes, at, size);
        return true;
    case IdsChunk:
        m_ids = RawBytes(m_bytes.part(at + headerSize, size - headerSize));
        return true;
    case StartElementChunk:
        return scanElement(at + NodeHeaderSize, size - NodeHeaderSize);
    default:
        return true;
    }
}

bool ManifestScan::scanElement(qint64 at, qint64 size)
{
    constexpr qint64 FieldsSize = 14;
    constexpr int RecordSize = 20;
    const quint16 start = m_bytes.u16(at + 8);
    const quint16 recordSize = m_bytes.u16(at + 10);
    const quint16 count = m_bytes.u16(at + 12);
    if (size < FieldsSize || start < FieldsSize || recordSize < RecordSize || start + qint64(recordSize) * count > size)
        return false;
    for (int i = 0; i < count; ++i)
        checkText(at + start + qint64(recordSize) * i);
    return true;
}

void ManifestScan::checkText(qint64 record)
{
    const quint32 name = m_bytes.u32(record + 4);
    // Attributes without an id, such as the package's name, are taken as they were written, by Android too.
    const quint32 id = m_ids.u32(4 * qint64(name));
    if (id == 0 || agrees(id, m_bytes.u32(record + 8), m_bytes.u8(record + 15), m_bytes.u32(record + 16)))
        return;
    ++m_differentTexts;
    if (m_namesOfDifferentTexts.size() == MaxNames)
        return;
    const QString attribute = string(name);
    if (!m_namesOfDifferentTexts.contains(attribute))
        m_namesOfDifferentTexts.append(attribute);
}

bool ManifestScan::agrees(quint32 id, quint32 raw, quint8 type, quint32 data)
{
    if (raw >= Negative || type == NullType || (type == StringType && raw == data) || m_compared > MaxCompared)
        return true;
    const QString text = string(raw);
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber, 0);
    switch (type) {
    case StringType:
        return text == string(data);
    case ReferenceType:
    case DynamicReferenceType:
        return text.startsWith(QLatin1Char('@'));
    case ThemeType:
    case DynamicThemeType:
        return text.startsWith(QLatin1Char('?'));
    case BooleanType:
        return text == (data != 0 ? QLatin1String("true") : QLatin1String("false"));
    case DecimalType:
    case HexadecimalType:
        return isNumber ? quint32(number) == data : !isText(id);
    default:
        return !isText(id);
    }
}

QString ManifestScan::string(quint32 index)
{
    QString text = m_pool.string(index);
    m_compared += int(text.size());
    return text;
}
