// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Extractor.h"

#include <QIODevice>

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

Extractor::~Extractor()
{
    consumePeeked();
}

void Extractor::setDevice(QIODevice *device)
{
    consumePeeked();
    m_device = device;
    *m_error = QString();
    position = 0;
    boundary = Unbounded;
    m_boundaries.clear();
    m_stepsBack = 0;
    m_regions = 0;
    m_buffer.clear();
    m_ahead = nullptr;
    m_aheadEnd = nullptr;
    m_aheadUntil = NoPosition;
    m_mostAtOnce = Unbounded;
    m_taken = 0;
    m_atHand = 0;
    m_isTooLong = false;
    m_lines = 0;
}

void Extractor::readAhead()
{
    if (boundary != Unbounded && m_device->isSequential())
        m_aheadUntil = boundary;
}

// Bytes that may be fetched ahead after those that are.
qint64 Extractor::aheadLimit() const
{
    return qMax(qint64(0), m_aheadUntil - position - (m_isPeeked ? 0 : fetched()));
}

// Looks at what the device has at hand, when there is any, and nothing has been fetched: it has no more than that to be
// asked for, and may be a pipe whose other end waits.
bool Extractor::peek()
{
    if (boundary == Unbounded || (!m_isPeeked && fetched() > 0) || !m_device->isSequential())
        return false;
    consumePeeked();
    if (aheadLimit() >= AheadSize)
        return false;
    // Asking costs a ZIP member as much as some hundred bytes.
    if (m_taken >= m_atHand)
        m_atHand = m_taken + m_device->bytesAvailable();
    const qint64 size = qMin(qMin(m_atHand, qint64(MaxBytes)) - m_taken, qint64(AheadSize));
    if (size <= 0)
        return false;
    if (m_buffer.isEmpty())
        m_buffer.resize(AheadSize);
    const qint64 peeked = m_device->peek(m_buffer.data(), size);
    m_isPeeked = peeked > 0;
    m_ahead = m_buffer.constData();
    m_aheadEnd = m_ahead + qMax(qint64(0), peeked);
    return m_isPeeked;
}

void Extractor::consumePeeked()
{
    if (!m_isPeeked)
        return;
    const qint64 consumed = m_ahead - m_buffer.constData();
    if (consumed > 0)
        m_device->skip(consumed);
    m_taken += consumed;
    m_isPeeked = false;
    m_ahead = m_aheadEnd;
}

// As QIODevice::read(): the number of bytes delivered, negative for a fault of the device. One that gave less at once
// than was asked for would have given no more for this read either.
qint64 Extractor::deliver(char *data, qint64 size)
{
    consumePeeked();
    if (fetched() > 0)
        size = qMin(size, qint64(m_mostAtOnce));
    const qint64 taken = qMin(size, fetched());
    if (taken > 0)
        std::memcpy(data, m_ahead, size_t(taken));
    m_ahead += taken;
    const qint64 missing = size - taken;
    if (missing == 0)
        return size;

    qint64 delivered = 0;
    // What was taken is not part of the position yet.
    if (missing >= AheadSize || missing > aheadLimit() - taken) {
        delivered = readDevice(data + taken, missing);
    } else {
        delivered = qMin(missing, fetchAhead(aheadLimit() - taken));
        if (delivered > 0) {
            std::memcpy(data + taken, m_ahead, size_t(delivered));
            m_ahead += delivered;
        }
    }
    return taken > 0 ? taken + qMax(qint64(0), delivered) : delivered;
}

qint64 Extractor::fetchAhead(qint64 most)
{
    const qint64 asked = qMin(most, qint64(AheadSize));
    if (m_buffer.isEmpty())
        m_buffer.resize(AheadSize);
    const qint64 delivered = readDevice(m_buffer.data(), asked);
    if (delivered > 0 && delivered < asked)
        m_mostAtOnce = int(delivered);
    m_ahead = m_buffer.constData();
    m_aheadEnd = m_ahead + qMax(qint64(0), delivered);
    return delivered;
}

// The one place where the device is read.
qint64 Extractor::readDevice(char *data, qint64 size)
{
    const qint64 left = MaxBytes - m_taken;
    const qint64 delivered = left > 0 ? m_device->read(data, qMin(size, left)) : 0;
    m_taken += qMax(qint64(0), delivered);
    m_isTooLong = size > left && m_taken == MaxBytes;
    return delivered;
}

void Extractor::setDeviceError()
{
    setError(m_isTooLong ? QStringLiteral("file too long") : QStringLiteral("file too short"));
}

bool Extractor::mayTell()
{
    m_lines = qMin(m_lines + 1, MaxLines + 1);
    return m_lines <= MaxLines;
}

void Extractor::setError(const QString &text)
{
    *m_error = text;
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
T Extractor::getSlowly()
{
    constexpr int width = sizeof(T);
    if (remaining() < width) {
        setError(chunkTooShort());
        return 0;
    }
    if (peek() && isAtHand(width))
        return getInteger<T>();
    char bytes[width];
    if (deliver(bytes, width) != width) {
        setDeviceError();
        return 0;
    }
    position += width;
    return qFromLittleEndian<T>(bytes);
}

template qint8 Extractor::getSlowly();
template qint16 Extractor::getSlowly();
template qint32 Extractor::getSlowly();

void Extractor::skipSlowly(qint64 count)
{
    if (count > remaining() || !fitsInt(count) || !fitsInt(position + count))
        setError(chunkTooShort());
    else
        move(count);
}

// Precondition: the position that this leads to is in bounds.
void Extractor::move(qint64 count)
{
    if (count == 0)
        return;
    if (count < 0 && ++m_stepsBack > MaxStepsBack) {
        setError(QStringLiteral("too many steps back"));
        return;
    }
    position = int(position + count);
    consume(count);
}

void Extractor::consume(qint64 count)
{
    if (!m_device->isSequential()) {
        if (count > m_device->size() - m_device->pos() || !m_device->seek(position + count))
            setDeviceError();
        return;
    }
    char scratch[SkipBufferSize];
    while (count > 0) {
        const qint64 delivered = deliver(scratch, qMin(count, qint64(SkipBufferSize)));
        if (delivered <= 0) {
            setDeviceError();
            return;
        }
        count -= delivered;
    }
}

bool Extractor::mayGetBytes(int byteCount, int width)
{
    if (byteCount < 0 || byteCount % width != 0)
        setError(QStringLiteral("bad input"));
    else if (byteCount > remaining())
        setError(chunkTooShort());
    else
        return true;
    return false;
}

// Returns the number of bytes that were delivered; the array is longer by as many as were asked for last.
template <typename Array>
int Extractor::fill(Array &array, int byteCount)
{
    constexpr int width = sizeof(*array.data());
    // The array grows while the device delivers, so that a large claim alone takes no memory.
    int total = 0;
    while (total < byteCount) {
        const int step = qMin(byteCount - total, qMax(FirstArrayStep, total));
        array.reserve((total + step) / width); // no more than that, as resize() alone would take
        array.resize((total + step) / width);
        const int delivered = int(deliver(reinterpret_cast<char *>(array.data()) + total, step));
        total += qMax(0, delivered);
        position += qMax(0, delivered);
        if (delivered < step) {
            setDeviceError();
            break;
        }
    }
    return total;
}

template <typename T>
QVector<T> Extractor::getVector(int byteCount)
{
    QVector<T> array;
    if (!mayGetBytes(byteCount, sizeof(T)))
        return array;
    const int total = fill(array, byteCount);
    array.resize((total + qMin(byteCount - total, MaxZeroTail)) / int(sizeof(T)));
    qFromLittleEndian<T>(array.constData(), array.size(), array.data());
    return array;
}

QByteArray Extractor::getBytes(int byteCount)
{
    QByteArray bytes;
    if (mayGetBytes(byteCount, 1))
        bytes.truncate(fill(bytes, byteCount));
    return bytes;
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
    QVector<qint32> values;
    while (values.size() < count) {
        const int old = values.size();
        const int step = qMin(count - old, qMax(FirstArrayStep, old));
        values.reserve(old + step);
        values.resize(old + step);
        const int read = get32s(values.data() + old, step);
        values.resize(old + read);
        if (read < step)
            break;
    }
    return values;
}

int Extractor::get32s(qint32 *values, int count)
{
    int read = 0;
    while (read < count) {
        const int before = position;
        const qint64 valuesAtHand = qMin(remaining(), fetched()) / qint64(sizeof(qint32));
        const int run = int(qMin(valuesAtHand, qint64(count - read)));
        if (run > 0) {
            qFromLittleEndian<qint32>(m_ahead, run, values + read);
            take(run * int(sizeof(qint32)));
            read += run;
            continue;
        }
        values[read] = get32();
        if (position == before)
            break;
        ++read;
    }
    return read;
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
    if (++m_regions > MaxRegions)
        setError(QStringLiteral("too many chunks"));
    m_boundaries.push(boundary);
    boundary = clampedToInt(end);
}

void Extractor::popBoundary()
{
    Q_ASSERT(!m_boundaries.isEmpty());
    if (m_boundaries.isEmpty())
        return;
    const qint64 left = remaining();
    if (left > 0 && isAtHand(left))
        take(int(left));
    else
        move(left);
    if (boundary >= m_aheadUntil)
        m_aheadUntil = NoPosition;
    boundary = m_boundaries.pop();
    if (m_boundaries.isEmpty())
        consumePeeked();
}
