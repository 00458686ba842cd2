// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ZIPDIRECTORY_H
#define ZIPDIRECTORY_H

#include "FileName.h"
#include "archive/BufferedFile.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <memory>

/**
 * The directory of a ZIP archive and the headers of its members, as they are in the file. Libraries that read archives
 * hide where the two differ. Nothing is unpacked.
 *
 * The last end of a directory in the file counts, as for libsorrel.
 */
class ZipDirectory
{
public:
    /// Bytes of the directory that are read at most.
    static constexpr qint64 MaxBytes = 64 << 20;

    /// The fields that the directory and a member's own header have in common.
    struct Header {
        quint16 flags = 0;
        quint16 method = 0;
        quint32 crc = 0;
        quint32 compressedSize = 0;
        quint32 size = 0;
        QByteArray name;
    };
    struct Member : Header {
        qint64 headerAt = 0; ///< offset of its own header in the file
    };
    /// A member's own header.
    struct LocalHeader : Header {
        bool isFound = false;
        qint64 dataAt = 0; ///< offset of its bytes in the file
    };

    explicit ZipDirectory(const FileName &file);

    /// Whether the file has the end of a directory; without one, everything else is empty.
    bool isValid() const { return m_endAt >= 0; }
    bool isMultiDisk() const { return m_isMultiDisk; }
    /// Whether sizes or offsets are in a ZIP64 directory. That one is not read.
    bool isZip64() const { return m_isZip64; }
    /// Whether the directory is longer than MaxBytes. members() then has its start.
    bool isCut() const { return m_isCut; }
    /// The number of members according to the end of the directory.
    int memberCount() const { return m_memberCount; }
    /// The members in the order of the directory.
    const QVector<Member> &members() const { return m_members; }
    /// Bytes before the archive. Its offsets are too small by that number.
    qint64 leadingBytes() const { return m_leadingBytes; }
    /// Bytes after the archive and its comment.
    qint64 trailingBytes() const { return m_trailingBytes; }
    /// Whether the end of another directory with members is near the end of the file.
    bool hasOtherDirectory() const { return m_hasOtherDirectory; }

    /// The own header of @p member. A longer name is cut to the length of the member's.
    LocalHeader localHeader(const Member &member);

private:
    QByteArray read(qint64 at, qint64 count);
    void findEnd();
    void readMembers(qint64 at, qint64 size);
    bool isDirectoryEnd(const QByteArray &tail, int at, qint64 tailAt);

    std::unique_ptr<BufferedFile> m_file;
    qint64 m_endAt = -1;
    bool m_isMultiDisk = false;
    bool m_isZip64 = false;
    bool m_isCut = false;
    bool m_hasOtherDirectory = false;
    int m_memberCount = 0;
    qint64 m_leadingBytes = 0;
    qint64 m_trailingBytes = 0;
    QVector<Member> m_members;
};

#endif
