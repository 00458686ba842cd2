// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ArchiveLint.h"

#include "PrintableText.h"

#include <algorithm>

using namespace LintChecks;

namespace {

constexpr quint16 EncryptedFlag = 0x0001;
constexpr quint16 SizesFollowFlag = 0x0008;
constexpr quint16 Stored = 0;
constexpr quint16 Deflated = 8;
constexpr quint32 InZip64 = 0xffffffff;

// Names in packages are UTF-8, whatever their flags say. In any other name each byte is a character.
QString nameText(const QByteArray &name)
{
    const QString text = QString::fromUtf8(name);
    return text.contains(QChar(QChar::ReplacementCharacter)) ? QString::fromLatin1(name) : text;
}

// When sizes follow the data, the header may lack them.
bool isSame(quint32 local, quint32 central, bool mayFollow)
{
    return local == central || (mayFollow && local == 0) || local == InZip64 || central == InZip64;
}

} // namespace

ArchiveLint::ArchiveLint(const FileName &file, FindingList *findings) : m_directory(file), m_findings(findings) {}

void ArchiveLint::run()
{
    if (!m_directory.isValid())
        return;
    checkEnds();
    for (const ZipDirectory::Member &member : m_directory.members())
        checkMember(member);
}

void ArchiveLint::checkEnds()
{
    if (m_directory.isMultiDisk())
        m_findings->add(MultiDisk, QString(),
                        QStringLiteral("The archive says that it is one of several disks, and readers refuse it."));
    else if (m_directory.isZip64())
        m_findings->add(LintChecks::Zip64, QString(),
                        QStringLiteral("The archive has a ZIP64 directory, whose members were not looked at."));
    else if (m_directory.members().size() < m_directory.memberCount() && !m_directory.isCut())
        m_findings->add(DamagedDirectory, QString(),
                        QStringLiteral("The archive's directory ends after %1 of %2 members; the others are lost.")
                            .arg(m_directory.members().size())
                            .arg(m_directory.memberCount()));
    if (m_directory.hasOtherDirectory())
        m_findings->add(SeveralDirectories, QString(),
                        QStringLiteral("The archive has another directory before its last one; readers that take that "
                                       "one see another package."));
    if (m_directory.leadingBytes() > 0)
        m_findings->add(LeadingData, QString(),
                        QStringLiteral("The archive begins after %1 other bytes, and readers that take its offsets as "
                                       "they are find no member.")
                            .arg(m_directory.leadingBytes()));
    if (m_directory.trailingBytes() > 0)
        m_findings->add(TrailingData, QString(),
                        QStringLiteral("%1 bytes follow the end of the archive, and strict readers refuse it.")
                            .arg(m_directory.trailingBytes()));
}

void ArchiveLint::checkMember(const ZipDirectory::Member &member)
{
    const QString subject = nameText(member.name);
    if ((member.flags & EncryptedFlag) != 0)
        m_findings->add(EncryptedMember, subject,
                        QStringLiteral("The member is marked as encrypted, which libsorrel ignores, and other readers "
                                       "ask for a password."));
    if (member.method != Stored && member.method != Deflated)
        m_findings->add(
            UnknownMethod, subject,
            QStringLiteral("The member has the compression method %1, and packages have only 0 (stored) and 8 "
                           "(deflated); readers need not know another one.")
                .arg(member.method));
    if (m_names.contains(member.name))
        m_findings->add(
            DuplicateName, subject,
            QStringLiteral("The archive has another member of this name before it; libsorrel and SorrelKit take the "
                           "last one, other readers the first, or refuse the archive."));
    m_names.insert(member.name);
    checkName(member.name, subject);
    checkHeader(member, subject);
}

void ArchiveLint::checkName(const QByteArray &name, const QString &subject)
{
    constexpr int LongestName = 255;
    if (name.startsWith('/'))
        m_findings->add(AbsoluteName, subject,
                        QStringLiteral("The member's name begins with a slash, and who unpacks it by its name writes "
                                       "outside of the directory."));
    if (name.contains("..") && name.split('/').contains(".."))
        m_findings->add(ParentName, subject,
                        QStringLiteral("The member's name has the part '..', and who unpacks it by its name writes "
                                       "outside of the directory."));
    if (name.contains('\\'))
        m_findings->add(BackslashName, subject,
                        QStringLiteral("The member's name has a backslash, which some systems take for a slash."));
    if (printableText(subject) != subject)
        m_findings->add(ControlName, subject,
                        QStringLiteral("The member's name has characters that steer a terminal."));
    if (name.size() > LongestName)
        m_findings->add(
            LongName, subject,
            QStringLiteral("The member's name has %1 bytes, and a file's name may have 255 of them.").arg(name.size()));
}

void ArchiveLint::checkHeader(const ZipDirectory::Member &member, const QString &subject)
{
    if (quint32(member.headerAt - m_directory.leadingBytes()) == InZip64)
        return;
    const ZipDirectory::LocalHeader header = m_directory.localHeader(member);
    if (!header.isFound) {
        m_findings->add(MissingHeader, subject,
                        QStringLiteral("No member stands where the directory says, and the member cannot be read."));
        return;
    }
    if (header.name != member.name)
        m_findings->add(DifferentName, subject,
                        QStringLiteral("The member's own header calls it '%1'; readers that go by the one or the other "
                                       "see different members.")
                            .arg(FindingList::shortened(nameText(header.name))));
    if (header.method != member.method)
        m_findings->add(DifferentMethod, subject,
                        QStringLiteral("The member's own header has the compression method %1, and the directory %2; "
                                       "libsorrel does not read it.")
                            .arg(header.method)
                            .arg(member.method));
    const bool mayFollow = ((header.flags | member.flags) & SizesFollowFlag) != 0;
    if (!isSame(header.size, member.size, mayFollow) || !isSame(header.compressedSize, member.compressedSize, mayFollow)
        || (header.crc != member.crc && !(mayFollow && header.crc == 0)))
        m_findings->add(
            DifferentSize, subject,
            QStringLiteral("The member's own header has other sizes or another checksum than the directory; "
                           "readers refuse it, or read different bytes."));
}

void ArchiveLint::checkTable(int targetSdkVersion)
{
    constexpr int Android11 = 30;
    constexpr int Alignment = 4;
    const QByteArray tableName("resources.arsc");
    if (targetSdkVersion < Android11)
        return;
    const QVector<ZipDirectory::Member> &members = m_directory.members();
    const auto table = std::find_if(members.cbegin(), members.cend(),
                                    [&](const ZipDirectory::Member &member) { return member.name == tableName; });
    if (table == members.cend())
        return;
    if (table->method != Stored)
        m_findings->add(
            CompressedTable, QLatin1String(tableName),
            QStringLiteral("The resource table is compressed, and Android 11 and later do not install such a "
                           "package when it is made for API level 30 or later, as this one is (%1).")
                .arg(targetSdkVersion));
    else if (m_directory.localHeader(*table).dataAt % Alignment != 0)
        m_findings->add(
            UnalignedTable, QLatin1String(tableName),
            QStringLiteral("The resource table stands at no multiple of 4 bytes, and Android 11 and later do "
                           "not install such a package when it is made for API level 30 or later, as this "
                           "one is (%1).")
                .arg(targetSdkVersion));
}
