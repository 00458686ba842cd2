// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/ArchiveOddities.h"

#include "archive/ByteSource.h"

namespace {

constexpr quint8 HighBit = 0x80;

// The bytes that follow @p first in its sequence; -1 when it begins none.
int bytesAfter(quint8 first)
{
    constexpr int Longest = 6;
    int ones = 0;
    for (int bit = 7; bit > 0 && (first >> bit & 1) != 0; --bit)
        ++ones;
    if (ones == 0)
        return 0;
    return ones > 1 && ones <= Longest ? ones - 1 : -1;
}

// The header must be followed by the name and the data before the directory. A stored member has as many bytes as it
// delivers, whatever its other size is.
bool endsInTime(const ZipDirectory &directory, const ZipDirectory::Member &member, qint64 dataAt)
{
    const qint64 room = directory.directoryAt() - dataAt;
    const bool isDeflated = member.method == ZipDirectory::Deflated;
    return room >= 0 && member.packedSize <= room && (isDeflated || member.size <= room);
}

void addMemberOddities(const ZipDirectory &directory, OddityList *oddities)
{
    for (int number = 0; number < directory.count(); ++number) {
        const ByteView name = directory.name(number);
        const qint64 headerAt = directory.headerAt(number);
        if (headerAt < 0 || headerAt >= directory.directoryAt())
            oddities->add(Oddity::OffsetBehindMembers, ZipDirectory::nameText(name));
        if (!ArchiveOddities::isName(name))
            oddities->add(Oddity::InvalidName, ZipDirectory::nameText(name));
    }
}

} // namespace

bool ArchiveOddities::isName(const ByteView &name)
{
    const quint8 *const bytes = name.data();
    for (qint64 at = 0; at < name.size(); ++at) {
        int left = bytes[at] != 0 ? bytesAfter(bytes[at]) : -1;
        if (left < 0)
            return false;
        for (; left > 0; --left) {
            ++at;
            if (at == name.size() || (bytes[at] & 0xc0) != HighBit)
                return false;
        }
    }
    return true;
}

bool ArchiveOddities::isOpened(const ZipDirectory &directory, const ZipDirectory::Member &member,
                               const ZipDirectory::LocalHeader &own)
{
    return own.hasSameName && ZipDirectory::agree(own, member) && endsInTime(directory, member, own.dataAt);
}

OddityList ArchiveOddities::ofDirectory(ZipDirectory &directory, ByteSource &source)
{
    const QByteArray start("PK\3\4");
    constexpr qint64 SearchedBytes = 0xffff; // of the file's end, by readers that do not count the record itself
    OddityList oddities;
    if (directory.trailingBytes() > 0)
        oddities.add(Oddity::BytesBehind, directory.trailingBytes());
    if (directory.missingCommentBytes() > 0)
        oddities.add(Oddity::CutComment, directory.missingCommentBytes());
    if (source.size() - directory.endAt() > SearchedBytes)
        oddities.add(Oddity::LongComment, source.size() - directory.endAt());
    if (directory.isMultiDisk())
        oddities.add(Oddity::DiskNumbers);
    if (directory.isZip64())
        oddities.add(Oddity::Zip64Directory);
    if (directory.claimedCount() == 0) {
        oddities.add(Oddity::EmptyArchive);
        return oddities;
    }
    if (directory.leadingBytes() > 0)
        oddities.add(Oddity::BytesAhead, directory.leadingBytes());
    else if (source.read(0, start.size()) != start)
        oddities.add(Oddity::BytesAhead);
    if (directory.gapBytes() > 0)
        oddities.add(Oddity::DirectoryGap, directory.gapBytes());
    if (directory.hasHiddenRecords())
        oddities.add(Oddity::HiddenRecords);
    if (directory.count() < directory.claimedCount() && !directory.isCut())
        oddities.add(Oddity::MissingRecords, directory.claimedCount() - directory.count());
    // Build tools write archives that need no look at each member.
    if (directory.mayHaveOffsetsBehind() || !directory.hasPlainNames())
        addMemberOddities(directory, &oddities);
    if (directory.duplicateCount() > 0) {
        oddities.add(Oddity::DuplicateName, ZipDirectory::nameText(directory.name(directory.firstDuplicate())),
                     directory.duplicateCount());
    }
    return oddities;
}

OddityList ArchiveOddities::ofMember(const ZipDirectory &directory, ByteSource &source, int number)
{
    OddityList oddities;
    const ZipDirectory::Member member = directory.member(number);
    const ZipDirectory::LocalHeader own = ZipDirectory::localHeader(source, member);
    if (member.method != ZipDirectory::Stored && member.method != ZipDirectory::Deflated)
        oddities.add(Oddity::MemberNotDeflated, qint64(member.method));
    if (member.method == ZipDirectory::Stored && member.packedSize != member.size)
        oddities.add(Oddity::MemberStoredSizes, member.packedSize);
    if (!own.isFound) {
        oddities.add(Oddity::NoMemberHeader);
        return oddities;
    }
    if (((own.flags | member.flags) & ZipDirectory::EncryptedFlag) != 0)
        oddities.add(Oddity::MemberEncrypted);
    if (own.method != member.method)
        oddities.add(Oddity::MemberMethod, qint64(own.method));
    if (!own.hasSameName)
        oddities.add(Oddity::MemberName, ZipDirectory::nameText(ByteView(own.name)));
    if (((own.flags ^ member.flags) & ZipDirectory::SizesFollowFlag) != 0)
        oddities.add(Oddity::MemberMarksDiffer);
    if (!ZipDirectory::agree(own, member))
        oddities.add(Oddity::MemberSizes);
    if (!endsInTime(directory, member, own.dataAt))
        oddities.add(Oddity::MemberPastDirectory);
    return oddities;
}
