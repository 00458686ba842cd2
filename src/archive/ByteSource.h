// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BYTESOURCE_H
#define BYTESOURCE_H

#include "archive/SharedBytes.h"

#include <QByteArray>

#include <memory>
#include <utility>

class QIODevice;

/// The bytes that an archive is read from: a file, a device, memory, or a part of another source. Random-access.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    /// The number of bytes when the source was opened. A file may have shrunk since.
    qint64 size() const { return m_size; }
    /// A copy of @p count bytes from the offset @p at on, or of those that exist. Takes no memory for bytes that do not
    /// exist. At most 2 GiB.
    QByteArray read(qint64 at, qint64 count);
    /// The same bytes; not copied where the source has them in memory, or maps them.
    virtual SharedBytes view(qint64 at, qint64 count) { return SharedBytes(read(at, count)); }

protected:
    explicit ByteSource(qint64 size) : m_size(size) {}
    void setSize(qint64 size) { m_size = size; }
    /// The number of the @p count bytes from @p at on that exist.
    qint64 bytesFrom(qint64 at, qint64 count) const;

private:
    friend class PartOfBytes;

    /// Copies @p count bytes from @p at on to @p data, and returns their number, which is less when the source ends or
    /// fails. Precondition: @p at and @p count are within size().
    virtual qint64 copy(qint64 at, qint64 count, char *data) = 0;

    qint64 m_size;
};

/// An array of bytes.
class BytesInMemory : public ByteSource
{
public:
    explicit BytesInMemory(SharedBytes bytes) : ByteSource(bytes.size()), m_bytes(std::move(bytes)) {}

    SharedBytes view(qint64 at, qint64 count) override;

private:
    qint64 copy(qint64 at, qint64 count, char *data) override;

    SharedBytes m_bytes;
};

/// The bytes of a QIODevice, which is open only while this object lives. Use both in one thread.
class BytesOfDevice : public ByteSource
{
public:
    /// Opens @p device, which is random-access and not open. Null when it is sequential or open, or cannot be opened.
    /// The device outlives the result.
    static std::unique_ptr<BytesOfDevice> open(QIODevice *device);
    /// The same for a device that the result owns.
    static std::unique_ptr<BytesOfDevice> open(std::unique_ptr<QIODevice> device);
    ~BytesOfDevice() override;

private:
    explicit BytesOfDevice(QIODevice *device);
    qint64 copy(qint64 at, qint64 count, char *data) override;

    std::unique_ptr<QIODevice> m_own; ///< null for the caller's
    QIODevice *m_device;
};

/// A range of another source, which it keeps alive.
class PartOfBytes : public ByteSource
{
public:
    /// The @p size bytes of @p source from @p start on, or those that exist.
    PartOfBytes(std::shared_ptr<ByteSource> source, qint64 start, qint64 size);

    SharedBytes view(qint64 at, qint64 count) override;

private:
    qint64 copy(qint64 at, qint64 count, char *data) override;

    std::shared_ptr<ByteSource> m_source;
    qint64 m_start;
};

#endif
