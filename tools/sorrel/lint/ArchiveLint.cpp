// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ArchiveLint.h"

#include "PrintableText.h"

#include <algorithm>

using namespace LintChecks;

namespace {

// When sizes follow the data, the header may lack them.
bool isSame(qint64 local, qint64 central, bool mayFollow)
{
    return local == central || (mayFollow && local == 0);
}

} // namespace

ArchiveLint::ArchiveLint(const FileName &file, FindingList *findings)
    : m_archive(ZipArchive::atNativePath(file.path())), m_directory(m_archive->directory()), m_findings(findings)
{
}

void ArchiveLint::run()
{
    if (!m_archive->open())
        return;
    checkEnds();
    for (int number = 0; number < m_directory.count(); ++number) {
        const ZipDirectory::Member member = m_directory.member(number);
        checkMember(member);
        checkChecksum(number, ZipDirectory::nameText(member.name));
    }
}

void ArchiveLint::checkEnds()
{
    if (m_directory.isMultiDisk())
        m_findings->add(MultiDisk, QString(),
                        QStringLiteral("The archive claims to be one part of several; ApkFile refuses it."));
    if (m_directory.isZip64())
        m_findings->add(LintChecks::Zip64, QString(),
                        QStringLiteral("The archive has a ZIP64 directory; many readers refuse it."));
    if (m_directory.count() < m_directory.claimedCount() && !m_directory.isCut())
        m_findings->add(
            DamagedDirectory, QString(),
            QStringLiteral("The archive's directory lists %1 of the %2 members that it claims; the others are lost.")
                .arg(m_directory.count())
                .arg(m_directory.claimedCount()));
    if (m_directory.hasOtherDirectory(m_archive->source()))
        m_findings->add(
            SeveralDirectories, QString(),
            QStringLiteral(
                "The archive has another directory before the last one; readers that use it see another package."));
    if (m_directory.leadingBytes() > 0)
        m_findings->add(
            LeadingData, QString(),
            QStringLiteral(
                "The archive begins after %1 of other data; readers that do not correct its offsets find no member.")
                .arg(FindingList::counted(m_directory.leadingBytes(), QStringLiteral("byte"))));
    if (m_directory.trailingBytes() > 0)
        m_findings->add(TrailingData, QString(),
                        QStringLiteral("The archive ends %1 before the end of the file; strict readers refuse it.")
                            .arg(FindingList::counted(m_directory.trailingBytes(), QStringLiteral("byte"))));
}

void ArchiveLint::checkMember(const ZipDirectory::Member &member)
{
    const QString subject = ZipDirectory::nameText(member.name);
    const QByteArray name = member.name.toByteArray();
    if ((member.flags & ZipDirectory::EncryptedFlag) != 0)
        m_findings->add(
            EncryptedMember, subject,
            QStringLiteral(
                "The member is marked as encrypted; libsorrel ignores the mark, other readers ask for a password."));
    if (member.method != ZipDirectory::Stored && member.method != ZipDirectory::Deflated)
        m_findings->add(
            UnknownMethod, subject,
            QStringLiteral(
                "The member has the compression method %1; many readers know only 0 (stored) and 8 (deflated).")
                .arg(member.method));
    if (m_names.contains(name))
        m_findings->add(DuplicateName, subject,
                        QStringLiteral("An earlier member has the same name; libsorrel and SorrelKit use the last one, "
                                       "other readers use the first one or refuse the archive."));
    m_names.insert(name);
    checkName(name, subject);
    checkHeader(member, subject);
}

void ArchiveLint::checkName(const QByteArray &name, const QString &subject)
{
    constexpr int LongestName = 255;
    if (name.startsWith('/'))
        m_findings->add(
            AbsoluteName, subject,
            QStringLiteral(
                "The member's name begins with a slash; unpacking it may write outside of the target directory."));
    if (name.contains("..") && name.split('/').contains(".."))
        m_findings->add(
            ParentName, subject,
            QStringLiteral(
                "The member's name has the part '..'; unpacking it may write outside of the target directory."));
    if (name.contains('\\'))
        m_findings->add(BackslashName, subject,
                        QStringLiteral("The member's name has a backslash, which some systems treat as a slash."));
    if (printableText(subject) != subject)
        m_findings->add(ControlName, subject,
                        QStringLiteral("The member's name has characters that control a terminal."));
    if (name.size() > LongestName)
        m_findings->add(
            LongName, subject,
            QStringLiteral("The member's name has %1 bytes; most file systems allow 255.").arg(name.size()));
}

void ArchiveLint::checkChecksum(int number, const QString &subject)
{
    if (!m_archive->hasRightChecksum(number, &m_checksums).value_or(true))
        m_findings->add(WrongChecksum, subject,
                        QStringLiteral("The member's content does not have the checksum in the directory; Android does "
                                       "not check it, other readers refuse the member."));
}

void ArchiveLint::checkHeader(const ZipDirectory::Member &member, const QString &subject)
{
    const ZipDirectory::LocalHeader header = ZipDirectory::localHeader(m_archive->source(), member);
    if (!header.isFound) {
        m_findings->add(MissingHeader, subject,
                        QStringLiteral("The member is not at the offset in the directory; it cannot be read."));
        return;
    }
    if (!header.hasSameName)
        m_findings->add(DifferentName, subject,
                        QStringLiteral("The member's header has the name '%1'; readers of headers and readers of the "
                                       "directory see different members.")
                            .arg(FindingList::shortened(ZipDirectory::nameText(ByteView(header.name)))));
    if (header.method != member.method)
        m_findings->add(DifferentMethod, subject,
                        QStringLiteral("The member's header has the compression method %1, the directory has %2; "
                                       "libsorrel does not read the member.")
                            .arg(header.method)
                            .arg(member.method));
    const bool mayFollow = ((header.flags | member.flags) & ZipDirectory::SizesFollowFlag) != 0;
    if (!isSame(header.size, member.size, mayFollow) || !isSame(header.packedSize, member.packedSize, mayFollow)
        || (header.crc != member.crc && !(mayFollow && header.crc == 0)))
        m_findings->add(DifferentSize, subject,
                        QStringLiteral("The member's header and the directory have different sizes or checksums; "
                                       "readers refuse the member or read different bytes."));
}

void ArchiveLint::checkTable(int targetSdkVersion)
{
    constexpr int Android11 = 30;
    constexpr int Alignment = 4;
    const QByteArray tableName("resources.arsc");
    if (targetSdkVersion < Android11)
        return;
    const int number = m_directory.find(ByteView(tableName));
    if (number < 0)
        return;
    const ZipDirectory::Member table = m_directory.member(number);
    if (table.method != ZipDirectory::Stored)
        m_findings->add(CompressedTable, QLatin1String(tableName),
                        QStringLiteral("The resource table is compressed, and the package targets API level %1; "
                                       "Android 11 and later do not install it.")
                            .arg(targetSdkVersion));
    else if (ZipDirectory::localHeader(m_archive->source(), table).dataAt % Alignment != 0)
        m_findings->add(UnalignedTable, QLatin1String(tableName),
                        QStringLiteral("The resource table's offset is not a multiple of 4, and the package targets "
                                       "API level %1; Android 11 and later do not install it.")
                            .arg(targetSdkVersion));
}
