// SPDX-License-Identifier: LGPL-2.1-or-later
#include "stream/Extractor.h"

#include <QIODevice>

#include <cstring>
#include <limits>
#include <tuple>

namespace {

constexpr int Unbounded = std::numeric_limits<int>::max();
constexpr int SkipBufferSize = 4096;
constexpr int FirstArrayStep = 1 << 20;

// A pointer to an inline function keeps it among the library's symbols.
[[gnu::used]] constexpr auto exportedInline = std::make_tuple(&Extractor::failed, &Extractor::get8, &Extractor::get16,
                                                              &Extractor::get32, &Extractor::skip, &Extractor::skip64);

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
    m_source.setDevice(device);
    *m_error = QString();
    position = 0;
    boundary = Unbounded;
    m_boundaries.clear();
    m_stepsBack = 0;
    m_regions = 0;
    m_diagnostics.clear();
}

void Extractor::setDeviceError()
{
    setError(m_source.isTooLong() ? QStringLiteral("file too long") : QStringLiteral("file too short"));
}

void Extractor::setError(const QString &text)
{
    *m_error = text;
}

QString Extractor::errorString() const
{
    const QString deviceError = m_source.device()->errorString();
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
    if (boundary != Unbounded && m_source.look() && isAtHand(width))
        return getInteger<T>();
    char bytes[width];
    if (m_source.read(bytes, width) != width) {
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

// Precondition: the new position is in bounds.
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
    if (!m_source.device()->isSequential()) {
        if (count > m_source.device()->size() - m_source.device()->pos() || !m_source.device()->seek(position + count))
            setDeviceError();
        return;
    }
    char scratch[SkipBufferSize];
    while (count > 0) {
        const qint64 delivered = m_source.read(scratch, qMin(count, qint64(SkipBufferSize)));
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

// Returns the number of delivered bytes. The array has room for the last request, and may be longer.
template <typename Array>
int Extractor::fill(Array &array, int byteCount)
{
    constexpr int width = sizeof(*array.data());
    // Growing while the device delivers, so that a large claim alone takes no memory.
    int total = 0;
    while (total < byteCount) {
        const int step = qMin(byteCount - total, qMax(FirstArrayStep, total));
        array.reserve((total + step) / width); // resize() alone would take more
        array.resize((total + step) / width);
        const int delivered = int(m_source.read(reinterpret_cast<char *>(array.data()) + total, step));
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
        const int old = int(values.size());
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
        const qint64 valuesAtHand = qMin(remaining(), m_source.atHand()) / qint64(sizeof(qint32));
        const int run = int(qMin(valuesAtHand, qint64(count - read)));
        if (run > 0) {
            qFromLittleEndian<qint32>(m_source.next(), run, values + read);
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
    boundary = m_boundaries.pop();
    if (m_boundaries.isEmpty())
        m_source.release();
}
