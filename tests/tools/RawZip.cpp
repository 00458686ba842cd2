// SPDX-License-Identifier: LGPL-2.1-or-later
#include "RawZip.h"

#include "Bytes.h"

#include <zlib.h>

namespace fixture {

namespace {

constexpr int Version = 20;
constexpr qint64 AtZip64 = 0xffffffff;

qint64 checksum(const QByteArray &content)
{
    return qint64(crc32(0, reinterpret_cast<const Bytef *>(content.constData()), uInt(content.size())));
}

QByteArray localHeader(const RawMember &member)
{
    const QByteArray name = member.localName.isNull() ? member.name : member.localName;
    const qint64 size = member.localSize < 0 ? member.content.size() : member.localSize;
    return Bytes()
        .u32(0x04034b50)
        .u16(Version)
        .u16(member.flags)
        .u16(member.localMethod < 0 ? member.method : member.localMethod)
        .u32(0) // time and date
        .u32(checksum(member.content))
        .u32(size)
        .u32(size)
        .u16(name.size())
        .u16(member.extraSize)
        .raw(name)
        .zeros(member.extraSize)
        .data();
}

QByteArray directoryRecord(const RawMember &member, qint64 headerAt)
{
    return Bytes()
        .u32(0x02014b50)
        .u16(Version)
        .u16(Version)
        .u16(member.flags)
        .u16(member.method)
        .u32(0) // time and date
        .u32(checksum(member.content))
        .u32(member.content.size())
        .u32(member.content.size())
        .u16(member.name.size())
        .zeros(12) // extra field, comment, disk, attributes
        .u32(member.headerAt < 0 ? headerAt : member.headerAt)
        .raw(member.name)
        .data();
}

QByteArray end(int count, qint64 size, qint64 at)
{
    return Bytes().u32(0x06054b50).u32(0).u16(count).u16(count).u32(size).u32(at).u16(0).data();
}

QByteArray membersAndDirectory(const QVector<RawMember> &members, const QByteArray &before, qint64 *directoryAt)
{
    QByteArray bytes = before;
    QByteArray directory;
    for (const RawMember &member : members) {
        directory += directoryRecord(member, bytes.size());
        bytes += localHeader(member) + member.content;
    }
    *directoryAt = bytes.size();
    return bytes + directory;
}

} // namespace

QByteArray rawZip(const QVector<RawMember> &members, const QByteArray &before)
{
    qint64 directoryAt = 0;
    const QByteArray bytes = membersAndDirectory(members, before, &directoryAt);
    return bytes + end(int(members.size()), bytes.size() - directoryAt, directoryAt);
}

QByteArray rawZip64(const QVector<RawMember> &members)
{
    constexpr int RestOfRecord = 44;
    qint64 directoryAt = 0;
    const QByteArray bytes = membersAndDirectory(members, QByteArray(), &directoryAt);
    const QByteArray record = Bytes()
                                  .u32(0x06064b50)
                                  .u32(RestOfRecord)
                                  .u32(0)
                                  .u16(Version)
                                  .u16(Version)
                                  .zeros(8) // disks
                                  .u32(members.size())
                                  .u32(0)
                                  .u32(members.size())
                                  .u32(0)
                                  .u32(bytes.size() - directoryAt)
                                  .u32(0)
                                  .u32(directoryAt)
                                  .u32(0)
                                  .data();
    const QByteArray locator = Bytes().u32(0x07064b50).u32(0).u32(bytes.size()).u32(0).u32(1).data();
    return bytes + record + locator + end(int(members.size()), bytes.size() - directoryAt, AtZip64);
}

} // namespace fixture
