// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVELINT_H
#define ARCHIVELINT_H

#include "FindingList.h"
#include "ZipDirectory.h"

#include <QSet>
#include <QString>

/// Checks the archive of a package: its directory and the headers of its members. Nothing is unpacked.
class ArchiveLint
{
public:
    ArchiveLint(const FileName &file, FindingList *findings);

    /// Runs the checks that need no manifest.
    void run();
    /// Checks how the archive stores the resource table of a package for the API level @p targetSdkVersion.
    void checkTable(int targetSdkVersion);

private:
    void checkEnds();
    void checkMember(const ZipDirectory::Member &member);
    void checkName(const QByteArray &name, const QString &subject);
    void checkHeader(const ZipDirectory::Member &member, const QString &subject);

    ZipDirectory m_directory;
    QSet<QByteArray> m_names;
    FindingList *m_findings;
};

#endif
