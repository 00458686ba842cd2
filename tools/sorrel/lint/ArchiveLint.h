// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVELINT_H
#define ARCHIVELINT_H

#include "FindingList.h"
#include "ZipDirectory.h"

#include <QSet>
#include <QString>

/// What is odd in the archive of a package, by its directory and the headers of its members. Nothing is unpacked.
class ArchiveLint
{
public:
    ArchiveLint(const QString &fileName, FindingList *findings);

    /// Looks at all but what depends on the manifest.
    void run();
    /// Looks at how the resource table is kept in a package that was made for the API level @p targetSdkVersion.
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
