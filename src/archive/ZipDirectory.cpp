// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/ZipDirectory.h"

#include "archive/ByteSource.h"
#include "archive/NameHash.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

const char *const endSignature = "PK\5\6";
constexpr quint32 MemberSignature = 0x02014b50;
constexpr quint32 LocalSignature = 0x04034b50;
constexpr quint32 Zip64EndSignature = 0x06064b50;
constexpr quint32 Zip64LocatorSignature = 0x07064b50;
constexpr int EndSize = 22;
constexpr int Zip64EndSize = 56;
constexpr int Zip64LocatorSize = 20;
constexpr int MemberSize = 46;
constexpr int NameSizeAt = 28; // in a member's record
constexpr int HeaderOffsetAt = 42;
constexpr int LocalSize = 30;
constexpr qint64 LongestComment = 0xffff;
constexpr quint16 InZip64 = 0xffff;
constexpr quint32 AtZip64 = 0xffffffff;
constexpr quint16 Zip64Field = 0x0001;

bool isSame(const ByteView &a, const ByteView &b)
{
    return a.size() == b.size() && (a.isEmpty() || std::memcmp(a.data(), b.data(), std::size_t(a.size())) == 0);
}

qint64 u64(const ByteView &bytes, qint64 at)
{
    const quint64 value = bytes.u32(at) | quint64(bytes.u32(at + 4)) << 32;
    return value > quint64(std::numeric_limits<qint64>::max()) ? -1 : qint64(value);
}

// The data of the field for ZIP64 among a record's extra fields.
ByteView zip64Field(const ByteView &extra)
{
    constexpr int HeadSize = 4;
    for (qint64 at = 0; extra.has(at, HeadSize); at += HeadSize + extra.u16(at + 2)) {
        if (extra.u16(at) == Zip64Field)
            return extra.part(at + HeadSize, extra.u16(at + 2));
    }
    return {};
}

// Replaces @p value by the next of @p field when its own 32 bits refer there.
void readZip64Value(qint64 &value, const ByteView &field, qint64 &at)
{
    constexpr int Size = 8;
    if (value != qint64(AtZip64) || !field.has(at, Size))
        return;
    value = u64(field, at);
    at += Size;
}

} // namespace

bool ZipDirectory::read(ByteSource &source)
{
    *this = ZipDirectory();
    End end;
    if (!findEnd(source, end))
        return false;
    if (end.count < 0)
        return false;
    m_claimedCount = end.count;
    if (end.count == 0)
        return true;
    if (end.size < 0 || end.offset < 0 || end.size > end.endAt)
        return false;
    qint64 at = end.offset;
    const auto isAt = [&source](qint64 offset) {
        return ByteView(source.read(offset, 4)).u32(0) == MemberSignature; // the bytes live to the end of the line
    };
    if (at > end.endAt - end.size || !isAt(at)) {
        at = end.endAt - end.size;
        m_leadingBytes = at - end.offset;
        if (m_leadingBytes < 0 || !isAt(at))
            return false;
    }
    m_gapBytes = end.endAt - end.size - at;
    m_directoryAt = at;
    m_isCut = end.size > MaxBytes;
    m_directory = source.read(at, qMin(end.size, MaxBytes));
    readRecords(end.count);
    return true;
}

bool ZipDirectory::findEnd(ByteSource &source, End &end)
{
    // Most archives have no comment.
    constexpr qint64 ShortTail = 1024;
    for (const qint64 longest : {ShortTail, LongestComment + EndSize}) {
        const qint64 tailAt = qMax(qint64(0), source.size() - longest);
        const QByteArray tail = source.read(tailAt, longest);
        const auto at = tail.size() < EndSize ? -1 : int(tail.lastIndexOf(endSignature, tail.size() - EndSize));
        if (at < 0)
            continue;
        m_endAt = tailAt + at;
        const ByteView record = ByteView(tail).from(at);
        const quint16 disk = record.u16(4);
        m_isMultiDisk = disk != record.u16(6) || (disk != 0 && disk != InZip64) || record.u16(8) != record.u16(10);
        const qint64 behind = source.size() - m_endAt - EndSize - record.u16(20);
        m_trailingBytes = qMax(qint64(0), behind);
        m_missingCommentBytes = qMax(qint64(0), -behind);
        end.count = record.u16(10);
        end.size = record.u32(12);
        end.offset = record.u32(16);
        end.endAt = m_endAt;
        const bool isElsewhere = end.count == InZip64 || end.size == AtZip64 || end.offset == AtZip64;
        m_isZip64 = isElsewhere && readZip64End(source, end);
        return true;
    }
    return false;
}

bool ZipDirectory::readZip64End(ByteSource &source, End &end)
{
    const QByteArray locator = source.read(m_endAt - Zip64LocatorSize, Zip64LocatorSize);
    if (ByteView(locator).u32(0) != Zip64LocatorSignature)
        return false;
    // Other data may precede the archive; the record is then right before its locator.
    for (const qint64 at : {u64(ByteView(locator), 8), m_endAt - Zip64LocatorSize - Zip64EndSize}) {
        const QByteArray bytes = source.read(at, Zip64EndSize);
        const ByteView record(bytes);
        if (!record.has(0, Zip64EndSize) || record.u32(0) != Zip64EndSignature)
            continue;
        end.count = u64(record, 32);
        end.size = u64(record, 40);
        end.offset = u64(record, 48);
        end.endAt = at;
        return true;
    }
    return false;
}

void ZipDirectory::readRecords(qint64 count)
{
    const ByteView directory(m_directory);
    m_records.reserve(std::size_t(qBound(qint64(0), count, directory.size() / MemberSize)));
    qint64 at = 0;
    while (qint64(m_records.size()) < count && directory.has(at, MemberSize) && directory.u32(at) == MemberSignature) {
        const qint64 size =
            qint64(MemberSize) + directory.u16(at + NameSizeAt) + directory.u16(at + 30) + directory.u16(at + 32);
        if (!directory.has(at, size))
            break;
        m_records.push_back(quint32(at));
        m_largestOffset = qMax(m_largestOffset, directory.u32(at + HeaderOffsetAt));
        at += size;
    }
    m_hasHiddenRecords =
        qint64(m_records.size()) == count && directory.has(at, MemberSize) && directory.u32(at) == MemberSignature;
}

ByteView ZipDirectory::name(int number) const
{
    // readRecords() has checked that the record is within the directory.
    const auto *const record =
        reinterpret_cast<const uchar *>(m_directory.constData()) + m_records[std::size_t(number)];
    return {record + MemberSize, qFromLittleEndian<quint16>(record + NameSizeAt)};
}

QString ZipDirectory::nameText(const ByteView &name)
{
    const auto *const data = reinterpret_cast<const char *>(name.data());
    const QString text = QString::fromUtf8(data, int(name.size()));
    return text.contains(QChar(QChar::ReplacementCharacter)) ? QString::fromLatin1(data, int(name.size())) : text;
}

ZipDirectory::Member ZipDirectory::member(int number) const
{
    const ByteView record = ByteView(m_directory).from(m_records[std::size_t(number)]);
    Member member;
    member.flags = record.u16(8);
    member.method = record.u16(10);
    member.crc = record.u32(16);
    member.packedSize = record.u32(20);
    member.size = record.u32(24);
    member.name = record.part(MemberSize, record.u16(NameSizeAt));
    member.headerAt = record.u32(HeaderOffsetAt);
    const ByteView field = zip64Field(record.part(MemberSize + record.u16(NameSizeAt), record.u16(30)));
    qint64 at = 0;
    readZip64Value(member.size, field, at);
    readZip64Value(member.packedSize, field, at);
    readZip64Value(member.headerAt, field, at);
    if (member.headerAt >= 0)
        member.headerAt = member.headerAt > std::numeric_limits<qint64>::max() - m_leadingBytes
                              ? -1
                              : member.headerAt + m_leadingBytes;
    return member;
}

qint64 ZipDirectory::headerAt(int number) const
{
    const quint32 offset = ByteView(m_directory).u32(m_records[std::size_t(number)] + HeaderOffsetAt);
    return offset != AtZip64 && m_leadingBytes == 0 ? qint64(offset) : member(number).headerAt;
}

bool ZipDirectory::mayHaveOffsetsBehind() const
{
    return m_largestOffset == AtZip64 || m_largestOffset + m_leadingBytes >= m_directoryAt;
}

void ZipDirectory::makeIndex()
{
    std::size_t size = 16;
    while (size < 2 * m_records.size())
        size *= 2;
    m_index.assign(size, 0);
    m_duplicates = 0;
    m_firstDuplicate = -1;
    m_hasPlainNames = true;
    for (int number = 0; number < count(); ++number) {
        const ByteView name = this->name(number);
        const NameHash::Hashed hashed = NameHash::of(name);
        m_hasPlainNames = m_hasPlainNames && hashed.isPlain;
        std::size_t slot = hashed.hash & (size - 1);
        while (m_index[slot] != 0 && !isSame(this->name(int(m_index[slot]) - 1), name))
            slot = (slot + 1) & (size - 1);
        if (m_index[slot] != 0 && m_duplicates++ == 0)
            m_firstDuplicate = number;
        m_index[slot] = quint32(number) + 1;
    }
}

int ZipDirectory::duplicateCount()
{
    if (m_index.empty())
        makeIndex();
    return m_duplicates;
}

bool ZipDirectory::hasPlainNames()
{
    if (m_index.empty())
        makeIndex();
    return m_hasPlainNames;
}

int ZipDirectory::firstDuplicate()
{
    if (m_index.empty())
        makeIndex();
    return m_firstDuplicate;
}

int ZipDirectory::find(const ByteView &name)
{
    if (m_records.empty())
        return -1;
    if (m_index.empty())
        makeIndex();
    std::size_t slot = NameHash::of(name).hash & (m_index.size() - 1);
    while (m_index[slot] != 0 && !isSame(this->name(int(m_index[slot]) - 1), name))
        slot = (slot + 1) & (m_index.size() - 1);
    return int(m_index[slot]) - 1;
}

ZipDirectory::LocalHeader ZipDirectory::localHeader(ByteSource &source, const Member &member)
{
    LocalHeader header;
    const QByteArray content = source.read(member.headerAt, LocalSize + member.name.size());
    const ByteView bytes(content);
    if (!bytes.has(0, LocalSize) || bytes.u32(0) != LocalSignature)
        return header;
    header.isFound = true;
    header.flags = bytes.u16(6);
    header.method = bytes.u16(8);
    header.crc = bytes.u32(14);
    header.packedSize = bytes.u32(18);
    header.size = bytes.u32(22);
    const quint16 nameSize = bytes.u16(26);
    const quint16 extraSize = bytes.u16(28);
    header.hasSameName = nameSize == member.name.size() && isSame(bytes.part(LocalSize, nameSize), member.name);
    if (!header.hasSameName)
        header.name = source.read(member.headerAt + LocalSize, nameSize);
    header.dataAt = member.headerAt + LocalSize + nameSize + extraSize;
    if (header.packedSize == qint64(AtZip64) || header.size == qint64(AtZip64)) {
        const QByteArray extra = source.read(member.headerAt + LocalSize + nameSize, extraSize);
        const ByteView field = zip64Field(ByteView(extra));
        qint64 at = 0;
        readZip64Value(header.size, field, at);
        readZip64Value(header.packedSize, field, at);
    }
    return header;
}

bool ZipDirectory::hasOtherDirectory(ByteSource &source) const
{
    const qint64 tailAt = qMax(qint64(0), source.size() - LongestComment - EndSize);
    const QByteArray tail = source.read(tailAt, LongestComment + EndSize);
    for (auto at = m_endAt - tailAt; at > 0;) {
        at = tail.lastIndexOf(endSignature, int(at) - 1);
        if (at < 0)
            break;
        // The end of an archive within this one has offsets from its own start, so it does not match.
        const ByteView end = ByteView(tail).part(at, EndSize);
        const qint64 offset = end.u32(16);
        const QByteArray signature = source.read(offset, 4);
        if (end.u16(10) > 0 && offset + end.u32(12) == tailAt + at && ByteView(signature).u32(0) == MemberSignature)
            return true;
    }
    return false;
}
