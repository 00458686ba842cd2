// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BYTESOFFILE_H
#define BYTESOFFILE_H

#include "archive/ByteSource.h"

#include <QByteArray>
#include <QString>

#include <memory>

class QFile;

/**
 * A regular file. read() copies by pread(), so a file that shrinks while it is open ends early. view() maps a range of
 * MinMappedBytes or more, and copies a shorter one, which is faster than mapping it.
 *
 * A mapped range needs no memory for pages that nobody reads. When the file shrinks, the rest of the range reads as
 * zeros, or when the kernel has thrown no page away yet, as before: MappingGuard keeps the process from being ended by
 * SIGBUS. Where the guard is not possible, view() copies. When the file is written to, the range shows the new bytes;
 * readers check every offset where they use it. May be used from any thread.
 */
class BytesOfFile : public ByteSource
{
public:
    static constexpr qint64 MinMappedBytes = 64 << 10;

    /// The file with this name; null when it is missing, is no regular file, or cannot be opened.
    static std::unique_ptr<ByteSource> open(const QString &name);
    /// The same for the file at @p path, the bytes that the system has for it. They need not be text.
    static std::unique_ptr<ByteSource> openNativePath(const QByteArray &path);
    ~BytesOfFile() override;

    SharedBytes view(qint64 at, qint64 count) override;

private:
    BytesOfFile(int descriptor, qint64 size) : ByteSource(size), m_descriptor(descriptor) {}
    qint64 copy(qint64 at, qint64 count, char *data) override;

    int m_descriptor;
};

#endif
