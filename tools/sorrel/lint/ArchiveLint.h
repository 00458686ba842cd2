// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVELINT_H
#define ARCHIVELINT_H

#include "FileName.h"
#include "FindingList.h"
#include "archive/ZipArchive.h"

#include <QString>

#include <memory>

/// Checks the archive of a package: its members' names, headers and checksums. The diagnostics of the package have the
/// oddities of the directory.
class ArchiveLint
{
public:
    /// The budget of reading members to compute their checksums. The checksums of further members are not checked.
    static constexpr qint64 MaxChecksumWork = 1 << 28;

    ArchiveLint(const FileName &file, FindingList *findings);

    /// Runs the checks that need no manifest.
    void run();
    /// Checks how the archive stores the resource table of a package for the API level @p targetSdkVersion.
    void checkTable(int targetSdkVersion);

private:
    void checkName(const QByteArray &name, const QString &subject);
    void checkChecksum(int number, const QString &subject);

    std::unique_ptr<ZipArchive> m_archive;
    ZipDirectory &m_directory;
    Budget m_checksums{MaxChecksumWork, 0};
    FindingList *m_findings;
};

#endif
