// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ZipDirectory.h"

#include "format/ByteView.h"

namespace {

const char *const endSignature = "PK\5\6";
constexpr quint32 MemberSignature = 0x02014b50;
constexpr quint32 LocalSignature = 0x04034b50;
constexpr int EndSize = 22;
constexpr int MemberSize = 46;
constexpr int LocalSize = 30;
constexpr qint64 LongestComment = 0xffff;
constexpr quint16 InZip64 = 0xffff;
constexpr quint32 AtZip64 = 0xffffffff;

} // namespace

ZipDirectory::ZipDirectory(const FileName &file) : m_file(BufferedFile::atNativePath(file.path()))
{
    if (m_file->open(QIODevice::ReadOnly))
        findEnd();
}

QByteArray ZipDirectory::read(qint64 at, qint64 count)
{
    return at >= 0 && m_file->seek(at) ? m_file->read(count) : QByteArray();
}

void ZipDirectory::findEnd()
{
    const qint64 tailSize = qMin(m_file->size(), LongestComment + EndSize);
    const qint64 tailAt = m_file->size() - tailSize;
    const QByteArray tail = read(tailAt, tailSize);
    const auto at = int(tail.lastIndexOf(endSignature, tail.size() - EndSize));
    if (tail.size() < EndSize || at < 0)
        return;
    m_endAt = tailAt + at;
    for (int other = at; other > 0 && !m_hasOtherDirectory;) {
        other = int(tail.lastIndexOf(endSignature, other - 1));
        m_hasOtherDirectory = other >= 0 && isDirectoryEnd(tail, other, tailAt);
    }
    const ByteView end = ByteView(tail).from(at);
    m_isMultiDisk = end.u16(4) != end.u16(6) || (end.u16(4) != 0 && end.u16(4) != InZip64);
    m_memberCount = end.u16(10);
    const qint64 size = end.u32(12);
    const qint64 offset = end.u32(16);
    m_trailingBytes = qMax(qint64(0), m_file->size() - m_endAt - EndSize - end.u16(20));
    m_isZip64 = m_memberCount == InZip64 || size == AtZip64 || offset == AtZip64;
    if (m_isZip64 || m_isMultiDisk)
        return;
    m_leadingBytes = qMax(qint64(0), m_endAt - size - offset);
    readMembers(m_leadingBytes + offset, size);
}

// The end of an archive within this one has offsets from its own start, so it does not match.
bool ZipDirectory::isDirectoryEnd(const QByteArray &tail, int at, qint64 tailAt)
{
    const ByteView end = ByteView(tail).part(at, EndSize);
    const qint64 offset = end.u32(16);
    const QByteArray signature = read(offset, 4);
    return end.u16(10) > 0 && offset + end.u32(12) == tailAt + at && ByteView(signature).u32(0) == MemberSignature;
}

void ZipDirectory::readMembers(qint64 at, qint64 size)
{
    m_isCut = size > MaxBytes;
    const QByteArray content = read(at, qMin(size, MaxBytes));
    const ByteView directory(content);
    qint64 position = 0;
    while (m_members.size() < m_memberCount && directory.has(position, MemberSize)
           && directory.u32(position) == MemberSignature) {
        const int nameSize = directory.u16(position + 28);
        const qint64 recordSize =
            qint64(MemberSize) + nameSize + directory.u16(position + 30) + directory.u16(position + 32);
        if (!directory.has(position, recordSize))
            break;
        Member member;
        member.flags = directory.u16(position + 8);
        member.method = directory.u16(position + 10);
        member.crc = directory.u32(position + 16);
        member.compressedSize = directory.u32(position + 20);
        member.size = directory.u32(position + 24);
        member.headerAt = m_leadingBytes + directory.u32(position + 42);
        member.name = directory.part(position + MemberSize, nameSize).toByteArray();
        m_members.append(member);
        position += recordSize;
    }
}

ZipDirectory::LocalHeader ZipDirectory::localHeader(const Member &member)
{
    LocalHeader header;
    const QByteArray content = read(member.headerAt, LocalSize + member.name.size());
    const ByteView bytes(content);
    if (!bytes.has(0, LocalSize) || bytes.u32(0) != LocalSignature)
        return header;
    header.isFound = true;
    header.flags = bytes.u16(6);
    header.method = bytes.u16(8);
    header.crc = bytes.u32(14);
    header.compressedSize = bytes.u32(18);
    header.size = bytes.u32(22);
    header.name = bytes.part(LocalSize, bytes.u16(26)).toByteArray();
    // A longer name differs by its length.
    if (bytes.u16(26) > member.name.size())
        header.name += "...";
    header.dataAt = member.headerAt + LocalSize + bytes.u16(26) + bytes.u16(28);
    return header;
}
