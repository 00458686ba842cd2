// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ZIPDIRECTORY_H
#define ZIPDIRECTORY_H

#include "format/ByteView.h"

#include <QByteArray>
#include <QString>

#include <vector>

class ByteSource;

/**
 * The directory of a ZIP archive (APPNOTE 4.3.12, 4.3.14 to 4.3.16) as it is in the file, and the headers of members.
 * Nothing is inflated.
 *
 * An archive is what Android takes for one, and damaged ones are read as far as they go:
 *
 * - The last end record counts. A comment may follow it. Android refuses an archive whose comment does not end with the
 *   file.
 * - The directory is at the offset in the end record; data may follow it. When it is not there, but right before the
 *   end record, other data precedes the archive, and all offsets are that much larger. Android refuses this.
 * - Numbers of disks have no meaning. An end record in the form of ZIP64 counts where the other one refers to it.
 * - The end record counts the members; further records are hidden. The directory ends at the first record that is
 *   damaged. Android refuses an archive with fewer records than the count, or with the count 0.
 * - Names are bytes. Android refuses an archive with two members of one name; here, the last one counts, as in
 *   libsorrel.
 *
 * ArchiveOddities names what Android refuses, and what it takes although it is odd.
 *
 * The copy of the directory's bytes, four bytes for each member, and an index of eight to sixteen bytes for each one
 * when find() is called first: that is all the memory.
 */
class ZipDirectory
{
public:
    /// Bytes of the directory that are read at most.
    static constexpr qint64 MaxBytes = 64 << 20;

    static constexpr quint16 Stored = 0;
    static constexpr quint16 Deflated = 8;
    static constexpr quint16 EncryptedFlag = 0x0001;
    /// The sizes and the checksum follow the data, and the member's own header may lack them.
    static constexpr quint16 SizesFollowFlag = 0x0008;

    /// The fields that the directory and a member's own header have in common.
    struct Header {
        quint16 flags = 0;
        quint16 method = 0; ///< compression method
        quint32 crc = 0;
        qint64 packedSize = 0; ///< -1 when it cannot be: a size of ZIP64 above 2^63
        qint64 size = 0;       ///< the same
    };
    struct Member : Header {
        ByteView name;       ///< valid as long as the directory
        qint64 headerAt = 0; ///< offset of its own header in the file
    };
    /// A member's own header (APPNOTE 4.3.7).
    struct LocalHeader : Header {
        bool isFound = false;
        bool hasSameName = false; ///< as the directory's
        QByteArray name;          ///< set when it is another one than the directory's
        qint64 dataAt = 0;        ///< offset of the member's bytes in the file
    };

    /// Reads the directory of the archive in @p source: the end record, and the directory. False, and there are no
    /// members, when no end record is found, or no directory where it should be.
    bool read(ByteSource &source);

    /// The members that can be read, as the directory lists them.
    int count() const { return int(m_records.size()); }
    /// Precondition: @p number is from 0 to count() - 1.
    Member member(int number) const;
    ByteView name(int number) const;
    /// The number of the last member with this name; -1 when there is none. The first call makes the index.
    int find(const ByteView &name);

    /// A name as text. Names in packages are UTF-8, whatever their flags say; in any other name each byte is a character.
    static QString nameText(const ByteView &name);

    /// The own header of @p member.
    static LocalHeader localHeader(ByteSource &source, const Member &member);

    /// Whether @p own has the sizes and the checksum of @p member, or they follow the data by its own mark.
    static bool agree(const LocalHeader &own, const Member &member)
    {
        return (own.flags & SizesFollowFlag) != 0
               || (own.packedSize == member.packedSize && own.size == member.size && own.crc == member.crc);
    }

    /// The bytes of the directory that are held.
    qint64 bytes() const { return m_directory.size(); }
    /// Offset of the directory in the file.
    qint64 directoryAt() const { return m_directoryAt; }
    /// Offset of the header of member @p number in the file; as Member::headerAt, and faster than all of the member.
    qint64 headerAt(int number) const;
    /// Whether a record follows the last one that the end record counts.
    bool hasHiddenRecords() const { return m_hasHiddenRecords; }
    /// Whether a member's header may be at or behind the directory, by the largest offset; no member need be looked at
    /// when this is false.
    bool mayHaveOffsetsBehind() const;
    /// The number of members with the name of an earlier one, and the number of the first of these; -1 when there is
    /// none. The first call of one of these, of the next one or of find() makes the index.
    int duplicateCount();
    int firstDuplicate();
    /// Whether all names are ASCII without a zero.
    bool hasPlainNames();
    /// The number of members according to the end record.
    qint64 claimedCount() const { return m_claimedCount; }
    /// Whether the numbers in the end record say that the archive is one of several disks.
    bool isMultiDisk() const { return m_isMultiDisk; }
    /// Whether the end record is in the form of ZIP64.
    bool isZip64() const { return m_isZip64; }
    /// Whether the directory is longer than MaxBytes.
    bool isCut() const { return m_isCut; }
    /// Offset of the end record; -1 when there is none.
    qint64 endAt() const { return m_endAt; }
    /// Bytes between the directory and the end record.
    qint64 gapBytes() const { return m_gapBytes; }
    /// Bytes before the archive.
    qint64 leadingBytes() const { return m_leadingBytes; }
    /// Bytes after the archive and its comment.
    qint64 trailingBytes() const { return m_trailingBytes; }
    /// Bytes of the comment that the file lacks.
    qint64 missingCommentBytes() const { return m_missingCommentBytes; }
    /// Whether the end of another directory with members is near the end of the file. Reads it again.
    bool hasOtherDirectory(ByteSource &source) const;

private:
    /// The fields of an end record.
    struct End {
        qint64 count = 0;
        qint64 size = 0;
        qint64 offset = 0;
        qint64 endAt = 0; ///< offset of the record: the directory ends before it
    };

    bool findEnd(ByteSource &source, End &end);
    bool readZip64End(ByteSource &source, End &end);
    void readRecords(qint64 count);
    void makeIndex();

    QByteArray m_directory;
    std::vector<quint32> m_records; ///< offsets of the records in the directory
    std::vector<quint32> m_index;   ///< hash table: 1 + number of the last member of a name; 0 is free
    qint64 m_endAt = -1;            ///< offset of the end record
    qint64 m_directoryAt = 0;
    bool m_hasHiddenRecords = false;
    quint32 m_largestOffset = 0; ///< of the headers, as the records have them
    bool m_hasPlainNames = true; ///< known with the index
    int m_duplicates = 0;
    int m_firstDuplicate = -1;
    qint64 m_claimedCount = 0;
    bool m_isMultiDisk = false;
    bool m_isZip64 = false;
    bool m_isCut = false;
    qint64 m_gapBytes = 0;
    qint64 m_leadingBytes = 0;
    qint64 m_trailingBytes = 0;
    qint64 m_missingCommentBytes = 0;
};

#endif
