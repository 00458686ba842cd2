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

void Extractor::setDevice(QIODevice *device)
{
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
    m_aheadLimit = 0;
    m_mostAtOnce = Unbounded;
    m_taken = 0;
    m_isTooLong = false;
    m_lines = 0;
}

void Extractor::readAhead(qint64 size)
{
    if (size <= remaining() && boundary != Unbounded && m_device->isSequential())
        m_aheadLimit = qMax(qint64(0), size - fetched());
}

// As QIODevice::read(): the number of bytes delivered, negative for a fault of the device. One that gave less at once
// than was asked for would have given no more for this read either.
qint64 Extractor::deliver(char *data, qint64 size)
{
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
    if (missing >= AheadSize || missing > m_aheadLimit) {
        delivered = readDevice(data + taken, missing);
        m_aheadLimit -= qBound(qint64(0), delivered, m_aheadLimit);
    } else {
        delivered = qMin(missing, fetchAhead());
        if (delivered > 0) {
            std::memcpy(data + taken, m_ahead, size_t(delivered));
            m_ahead += delivered;
        }
    }
    return taken > 0 ? taken + qMax(qint64(0), delivered) : delivered;
}

qint64 Extractor::fetchAhead()
{
    const qint64 asked = qMin(m_aheadLimit, qint64(AheadSize));
    if (m_buffer.isEmpty())
        m_buffer.resize(AheadSize);
    const qint64 delivered = readDevice(m_buffer.data(), asked);
    if (delivered > 0 && delivered < asked)
        m_mostAtOnce = int(delivered);
    m_ahead = m_buffer.constData();
    m_aheadEnd = m_ahead + qMax(qint64(0), delivered);
    m_aheadLimit -= fetched();
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
    // The array grows while the device delivers, so that a large claim alone takes no memory.
    QVector<T> array;
    int total = 0;
    while (total < byteCount) {
        const int step = qMin(byteCount - total, qMax(FirstArrayStep, total));
        array.resize((total + step) / int(sizeof(T)));
        const qint64 delivered = deliver(reinterpret_cast<char *>(array.data()) + total, step);
        total += int(qMax(qint64(0), delivered));
        if (delivered < step) {
            setDeviceError();
            break;
        }
    }
    position += total;
    array.resize((total + qMin(byteCount - total, MaxZeroTail)) / int(sizeof(T)));
    qFromLittleEndian<T>(array.constData(), array.size(), array.data());
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
    QVector<qint32> values;
    values.reserve(qBound(0, count, FirstArrayStep));
    while (values.size() < count) {
        const qint64 valuesAtHand = qMin(remaining(), fetched()) / qint64(sizeof(qint32));
        const int run = int(qMin(valuesAtHand, qint64(count - values.size())));
        if (run > 0) {
            const int old = values.size();
            values.resize(old + run);
            qFromLittleEndian<qint32>(m_ahead, run, values.data() + old);
            take(run * int(sizeof(qint32)));
            continue;
        }
        const int before = position;
        const qint32 value = get32();
        if (position == before)
            break;
        values.append(value);
    }
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
    boundary = m_boundaries.pop();
}
