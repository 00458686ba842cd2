// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Extractor.h"

#include <QIODevice>
#include <QtEndian>

#include <cstring>
#include <limits>

namespace {

constexpr int Unbounded = std::numeric_limits<int>::max();
constexpr int SkipBufferSize = 4096;
constexpr int FirstArrayStep = 1 << 20;
constexpr int AheadSize = 1 << 14;

QString chunkTooShort()
{
    return QStringLiteral("chunk too short");
}

QString fileTooShort()
{
    return QStringLiteral("file too short");
}

int clampedToInt(qint64 value)
{
    return int(qBound(qint64(std::numeric_limits<int>::min()), value, qint64(std::numeric_limits<int>::max())));
}

bool fitsInt(qint64 value)
{
    return value == clampedToInt(value);
}

} // namespace

Extractor::Extractor(QIODevice *device) : m_error(QSharedPointer<QString>::create())
{
    setDevice(device);
}

void Extractor::setDevice(QIODevice *device)
{
    m_device = device;
    *m_error = QString();
    position = 0;
    boundary = Unbounded;
    m_boundaries.clear();
    m_stepsBack = 0;
    m_ahead.clear();
    m_aheadAt = 0;
    m_aheadLimit = 0;
}

void Extractor::readAhead()
{
    if (m_device->isSequential() && boundary != Unbounded)
        m_aheadLimit = qMax(qint64(0), remaining() - (m_ahead.size() - m_aheadAt));
}

// As QIODevice::read(): the number of bytes delivered, negative for a fault of the device.
qint64 Extractor::deliver(char *data, qint64 size)
{
    const int fetched = int(qMin(size, qint64(m_ahead.size() - m_aheadAt)));
    std::memcpy(data, m_ahead.constData() + m_aheadAt, size_t(fetched));
    m_aheadAt += fetched;
    const qint64 missing = size - fetched;
    if (missing == 0)
        return size;

    if (missing >= AheadSize || missing > m_aheadLimit) {
        const qint64 delivered = m_device->read(data + fetched, missing);
        m_aheadLimit = qMax(qint64(0), m_aheadLimit - qMax(qint64(0), delivered));
        return fetched > 0 ? fetched + qMax(qint64(0), delivered) : delivered;
    }
    m_ahead.resize(int(qMin(m_aheadLimit, qint64(AheadSize))));
    const int delivered = int(m_device->read(m_ahead.data(), m_ahead.size()));
    m_ahead.resize(qMax(0, delivered));
    m_aheadAt = 0;
    m_aheadLimit -= m_ahead.size();
    if (m_ahead.isEmpty())
        return fetched > 0 ? fetched : delivered;
    return fetched + deliver(data + fetched, qMin(missing, qint64(m_ahead.size())));
}

void Extractor::setError(const QString &text)
{
    *m_error = text;
}

bool Extractor::failed() const
{
    return !m_error->isEmpty();
}

QString Extractor::errorString() const
{
    const QString deviceError = m_device->errorString();
    return deviceError.isNull() ? *m_error : *m_error + QLatin1String(": ") + deviceError;
}

QWeakPointer<QString> Extractor::errorSink() const
{
    return m_error;
}

template <typename T>
T Extractor::getInteger()
{
    constexpr int width = sizeof(T);
    if (remaining() < width) {
        setError(chunkTooShort());
        return 0;
    }
    char bytes[width];
    if (m_ahead.size() - m_aheadAt >= width) {
        std::memcpy(bytes, m_ahead.constData() + m_aheadAt, width);
        m_aheadAt += width;
    } else if (deliver(bytes, width) != width) {
        setError(fileTooShort());
        return 0;
    }
    position += width;
    return qFromLittleEndian<T>(bytes);
}

qint8 Extractor::get8()
{
    return getInteger<qint8>();
}

qint16 Extractor::get16()
{
    return getInteger<qint16>();
}

qint32 Extractor::get32()
{
    return getInteger<qint32>();
}

void Extractor::skip(int count)
{
    skip64(count);
}

void Extractor::skip64(qint64 count)
{
    if (count == 0)
        return;
    if (count > remaining() || !fitsInt(position + count)) {
        setError(chunkTooShort());
        return;
    }
    if (count < 0 && ++m_stepsBack > MaxStepsBack) {
        setError(QStringLiteral("too many steps back"));
        return;
    }
    position += int(count);
    consume(count);
}

void Extractor::consume(qint64 count)
{
    if (!m_device->isSequential()) {
        if (count > m_device->size() - m_device->pos() || !m_device->seek(position + count))
            setError(fileTooShort());
        return;
    }
    char scratch[SkipBufferSize];
    while (count > 0) {
        const qint64 delivered = deliver(scratch, qMin(count, qint64(SkipBufferSize)));
        if (delivered <= 0) {
            setError(fileTooShort());
            return;
        }
        count -= delivered;
    }
}

// Grows the array while the device delivers, so that a large claim alone takes no memory. Returns the bytes delivered.
template <typename T>
int Extractor::readInto(QVector<T> &array, int byteCount)
{
    int total = 0;
    while (total < byteCount) {
        const int step = qMin(byteCount - total, qMax(FirstArrayStep, total));
        array.resize((total + step) / int(sizeof(T)));
        const qint64 delivered = deliver(reinterpret_cast<char *>(array.data()) + total, step);
        if (delivered > 0)
            total += int(delivered);
        if (delivered < step) {
            setError(fileTooShort());
            break;
        }
    }
    qFromLittleEndian<T>(array.constData(), array.size(), array.data());
    return total;
}

template <typename T>
QVector<T> Extractor::getVector(int byteCount)
{
    if (byteCount < 0 || byteCount % int(sizeof(T)) != 0) {
        setError(QStringLiteral("bad input"));
        return {};
    }
    if (byteCount > remaining()) {
        setError(chunkTooShort());
        return {};
    }
    QVector<T> array;
    position += readInto(array, byteCount);
    array.resize(byteCount / int(sizeof(T)));
    return array;
}

QVector<quint8> Extractor::getu8_vector(int byteCount)
{
    return getVector<quint8>(byteCount);
}

QVector<quint16> Extractor::getu16_vector(int byteCount)
{
    return getVector<quint16>(byteCount);
}

QVector<quint32> Extractor::getu32_vector(int byteCount)
{
    return getVector<quint32>(byteCount);
}

QVector<qint32> Extractor::get32s(int count)
{
    constexpr int width = sizeof(qint32);
    const int inBounds = int(qBound(qint64(0), remaining() / width, qint64(Unbounded / width)));
    const int wanted = qBound(0, count, inBounds);
    QVector<qint32> values;
    const int delivered = readInto(values, wanted * width) / width;
    position += delivered * width;
    values.resize(delivered);
    if (delivered == wanted && wanted < count)
        setError(chunkTooShort());
    return values;
}

void Extractor::pushBoundary(int length)
{
    pushBoundary64(length);
}

void Extractor::pushBoundary64(qint64 length)
{
    const qint64 end = position + length;
    if (length > remaining() || !fitsInt(length) || !fitsInt(end))
        setError(QStringLiteral("boundary out of bounds"));
    m_boundaries.push(boundary);
    boundary = clampedToInt(end);
}

void Extractor::popBoundary()
{
    Q_ASSERT(!m_boundaries.isEmpty());
    if (m_boundaries.isEmpty())
        return;
    skip64(remaining());
    boundary = m_boundaries.pop();
}
