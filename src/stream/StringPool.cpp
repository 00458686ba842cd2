// SPDX-License-Identifier: LGPL-2.1-or-later
#include "stream/StringPool.h"

#include "format/StringPoolView.h"
#include "stream/Extractor.h"
#include "stream/TwosComplement.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace {

constexpr int UnitSize = 2;
constexpr qint64 SmallDataLength = 1 << 14;

QString badIndex()
{
    return QStringLiteral("string pool contains bad index");
}

QString hexDigit(int value, int shift)
{
    return QString::number((value >> shift) & 0xf, 16);
}

} // namespace

StringPool::StringPool(const QString &name) : m_name(name) {}

void StringPool::setName(const QString &name)
{
    m_name = name;
}

void StringPool::clear()
{
    m_offsets.clear();
    m_data.clear();
}

void StringPool::load(Extractor *reader, int headerSize)
{
    m_errorSink = reader->errorSink();

    const int stringCount = reader->get32();
    reader->get32(); // style count
    const int flags = reader->get32();
    const int stringsStart = reader->get32();
    const int stylesStart = reader->get32();
    reader->skip64(qint64(headerSize) - StringPoolView::HeaderSize);
    const qint64 dataSize =
        stylesStart > 0 ? qint64(stylesStart) - stringsStart : reader->remaining() + headerSize - stringsStart;
    if (stringCount < 0) {
        reader->setError(QStringLiteral("string pool contains bad count"));
        return;
    }

    StringPool loaded(m_name);
    loaded.m_errorSink = m_errorSink;
    loaded.m_isUtf8 = (flags & StringPoolView::Utf8Flag) != 0;
    const bool hasBadOffset = loaded.readOffsets(reader, stringCount, dataSize);
    if (hasBadOffset && reader->failed())
        reader->setError(badIndex());
    reader->skip64(qint64(stringsStart) - headerSize - StringPoolView::OffsetSize * qint64(stringCount));
    if (reader->failed())
        return;
    loaded.readData(reader, dataSize);
    if (reader->failed())
        return;

    // A bad offset alone does not end the load. Its string does, because it does not fit into the data.
    if (hasBadOffset)
        reader->setError(badIndex());
    const qint64 length = loaded.checkedLength();
    if (length < 0)
        reader->setError(QStringLiteral("string extends past stringblock end"));
    else if (loaded.multipliesItsData(length))
        reader->setError(QStringLiteral("strings overlap in string pool"));
    else
        *this = loaded;
}

// Returns whether an offset is outside the data. Offsets that could not be read count as 0.
bool StringPool::readOffsets(Extractor *reader, int stringCount, qint64 dataSize)
{
    const auto isBad = [dataSize](qint32 offset) { return offset < 0 || offset >= dataSize; };
    m_offsets = reader->get32s(stringCount);
    if (count() < stringCount)
        return isBad(0);
    return std::any_of(m_offsets.cbegin(), m_offsets.cend(), isBad);
}

void StringPool::readData(Extractor *reader, qint64 dataSize)
{
    const int byteCount = int(qBound(qint64(-1), dataSize, qint64(std::numeric_limits<int>::max())));
    if (byteCount < dataSize)
        reader->skip64(dataSize); // which is out of bounds
    else if (!m_isUtf8 && byteCount % UnitSize != 0)
        reader->getu16_vector(byteCount); // which is bad input
    else
        m_data = reader->getBytes(byteCount);
}

qint64 StringPool::checkedLength() const
{
    const qint64 end = dataLength();
    qint64 total = 0;
    for (const qint32 offset : m_offsets) {
        const Span span = spanAt(offset);
        if (span.length >= end - span.start)
            return -1;
        total += span.length;
    }
    return total;
}

// Precondition: every string fits into the data.
bool StringPool::multipliesItsData(qint64 length) const
{
    const qint64 most = MaxOverlap * qMax(dataLength(), SmallDataLength);
    if (length <= most)
        return false;
    QVector<qint32> distinct = m_offsets;
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    qint64 distinctLength = 0;
    for (const qint32 offset : std::as_const(distinct))
        distinctLength += spanAt(offset).length;
    return distinctLength > most;
}

qint64 StringPool::dataLength() const
{
    return m_isUtf8 ? m_data.size() : m_data.size() / UnitSize;
}

StringPool::Span StringPool::spanAt(qint32 offset) const
{
    const qint64 unsignedOffset = quint32(offset);
    return m_isUtf8 ? utf8SpanAt(unsignedOffset) : utf16SpanAt(unsignedOffset >> 1);
}

StringPool::Span StringPool::utf8SpanAt(qint64 offset) const
{
    const char *bytes = m_data.constData();
    const qint64 end = dataLength();
    const auto byteAt = [bytes, end](qint64 at) { return at < end ? int(quint8(bytes[at])) : 0; };
    qint64 at = offset + ((byteAt(offset) & 0x80) != 0 ? 2 : 1);
    int length = byteAt(at++);
    if ((length & 0x80) != 0)
        length = ((length & 0x7f) << 8) | byteAt(at++);
    return {at, length};
}

StringPool::Span StringPool::utf16SpanAt(qint64 offset) const
{
    const char *units = m_data.constData();
    const qint64 end = dataLength();
    const auto unitAt = [units, end](qint64 at) {
        return at < end ? int(qFromLittleEndian<quint16>(units + at * UnitSize)) : 0;
    };
    qint64 at = offset;
    int length = unitAt(at++);
    if ((length & 0x8000) != 0)
        length = ((length & 0x7fff) << 16) | unitAt(at++);
    return {at, length};
}

// Precondition: the offset was checked by load().
QString StringPool::decode(qint32 offset) const
{
    const Span span = spanAt(offset);
    if (m_isUtf8)
        return QString::fromUtf8(m_data.constData() + span.start, span.length);
    QString text(span.length, Qt::Uninitialized);
    qFromLittleEndian<quint16>(m_data.constData() + span.start * UnitSize, span.length, text.data());
    return text;
}

QString StringPool::get(int index) const
{
    Q_ASSERT(index >= 0);
    if (index >= 0 && index < count())
        return decode(m_offsets.at(index));
    if (const auto error = m_errorSink.toStrongRef())
        *error = QLatin1String("bad index in ") + m_name + QLatin1String(" pool");
    return {};
}

int StringPool::find(const QString &text) const
{
    for (int index = 0; index < count(); ++index) {
        if (decode(m_offsets.at(index)) == text)
            return index;
    }
    return -1;
}

QString StringPool::valueToString(int type, int data) const
{
    const QLatin1Char zero('0');
    switch (type) {
    case int(ValueType::Null):
        return {};
    case int(ValueType::Reference):
        return QStringLiteral("@?");
    case int(ValueType::Attribute):
        return QStringLiteral("@attr?");
    case int(ValueType::String):
        if (data >= 0 && data < count())
            return get(data);
        return QStringLiteral("unknown string %2#%1").arg(data).arg(m_name);
    case int(ValueType::Float): {
        float value = 0;
        static_assert(sizeof value == sizeof data, "a float value is an IEEE single");
        std::memcpy(&value, &data, sizeof value);
        return QString::number(double(value), 'g', 6);
    }
    case int(ValueType::Dimension):
    case int(ValueType::Fraction):
    case int(ValueType::Decimal):
        return QString::number(data);
    case int(ValueType::Hexadecimal):
        return QLatin1String("0x") + QString::number(twosComplement(data), 16);
    case int(ValueType::Boolean):
        return data == 0 ? QStringLiteral("false") : QStringLiteral("true");
    case int(ValueType::ColorArgb8):
        return QStringLiteral("#%1").arg(twosComplement(data), 8, 16, zero);
    case int(ValueType::ColorRgb8):
        return QStringLiteral("#%1").arg(data & 0xffffff, 6, 16, zero);
    case int(ValueType::ColorArgb4):
        return QLatin1Char('#') + hexDigit(data, 24) + hexDigit(data, 16) + hexDigit(data, 8) + hexDigit(data, 0);
    case int(ValueType::ColorRgb4):
        return QLatin1Char('#') + hexDigit(data, 16) + hexDigit(data, 8) + hexDigit(data, 0);
    default:
        return QStringLiteral("?%1/%2").arg(twosComplement(type), 2, 16, zero).arg(twosComplement(data), 8, 16, zero);
    }
}
