// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ZIPDIRECTORY_H
#define ZIPDIRECTORY_H

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QVector>

/**
 * The directory of a ZIP archive, and the headers of its members, as the file has them: what a library that reads
 * archives makes up its mind about, and does not show. Nothing is unpacked. Fields have the names of the format
 * (APPNOTE 4.3).
 *
 * The end of the directory is the last one of the file, which is the one that libsorrel takes. Up to MaxBytes of a
 * directory are read, at once.
 */
class ZipDirectory
{
public:
    static constexpr qint64 MaxBytes = 64 << 20;

    /// What both a directory and a member's own header say.
    struct Header {
        quint16 flags = 0;
        quint16 method = 0;
        quint32 crc = 0;
        quint32 compressedSize = 0;
        quint32 size = 0;
        QByteArray name;
    };
    struct Member : Header {
        qint64 headerAt = 0; ///< where its own header is, in the file
    };
    /// A member's own header.
    struct LocalHeader : Header {
        bool isFound = false;
        qint64 dataAt = 0; ///< where its bytes are, in the file
    };

    explicit ZipDirectory(const QString &fileName);

    /// Whether there is an end of a directory; all else is empty when there is none.
    bool isValid() const { return m_endAt >= 0; }
    bool isMultiDisk() const { return m_isMultiDisk; }
    /// Whether sizes or offsets are in a ZIP64 directory, which is not read.
    bool isZip64() const { return m_isZip64; }
    /// Whether the directory is longer than MaxBytes, of which members() has the start.
    bool isCut() const { return m_isCut; }
    /// The number of members that the end claims.
    int memberCount() const { return m_memberCount; }
    /// Those that the directory has, in its order.
    const QVector<Member> &members() const { return m_members; }
    /// Bytes in front of the archive, by which its offsets are off.
    qint64 leadingBytes() const { return m_leadingBytes; }
    /// Bytes behind the archive and its comment.
    qint64 trailingBytes() const { return m_trailingBytes; }
    /// Whether the end of another directory, which leads to members, stands near the end of the file.
    bool hasOtherDirectory() const { return m_hasOtherDirectory; }

    /// The header of @p member itself. Of a name of another length its start alone.
    LocalHeader localHeader(const Member &member);

private:
    QByteArray read(qint64 at, qint64 count);
    void findEnd();
    void readMembers(qint64 at, qint64 size);
    bool isDirectoryEnd(const QByteArray &tail, int at, qint64 tailAt);

    QFile m_file;
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
