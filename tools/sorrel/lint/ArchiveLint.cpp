// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ArchiveLint.h"

#include "DiagnosticLint.h"
#include "PrintableText.h"

using namespace LintChecks;

namespace {

const char *const manifestName = "AndroidManifest.xml";
const char *const tableName = "resources.arsc";

int numberOf(ZipDirectory &directory, const char *name)
{
    return directory.find(ByteView(QByteArray(name)));
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
    if (m_directory.hasOtherDirectory(m_archive->source()))
        m_findings->add(
            SeveralDirectories, QString(),
            QStringLiteral(
                "The archive has another directory before the last one; readers that use it see another package."));
    const int manifest = numberOf(m_directory, manifestName);
    const int table = numberOf(m_directory, tableName);
    for (int number = 0; number < m_directory.count(); ++number) {
        const ByteView name = m_directory.name(number);
        const QString subject = ZipDirectory::nameText(name);
        checkName(name.toByteArray(), subject);
        checkChecksum(number, subject);
        // No Android reads an archive without a manifest. The package's diagnostics have the oddities of these two.
        if (manifest >= 0 && number != manifest && number != table)
            DiagnosticLint::reportMember(subject, m_archive->oddities(number), m_findings);
    }
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

void ArchiveLint::checkTable(int targetSdkVersion)
{
    constexpr int Android11 = 30;
    constexpr int Alignment = 4;
    if (targetSdkVersion < Android11)
        return;
    const int number = numberOf(m_directory, tableName);
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
