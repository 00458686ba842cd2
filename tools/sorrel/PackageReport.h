// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEREPORT_H
#define PACKAGEREPORT_H

#include <ApkLauncherInfo.h>

#include <QJsonObject>
#include <QList>
#include <QString>

/// What `sorrel info` tells about one package, read when the report is made.
class PackageReport
{
public:
    PackageReport(const QString &file, bool includeDisabled);

    bool failed() const { return m_errorCode != 0; }
    QString errorText() const { return m_errorText; }

    /// For a person, in lines. Characters that would steer a terminal are shown as U+FFFD.
    QString toText() const;
    /// For a program. The keys are the same for a package that could not be read, with the answers the library gives.
    QJsonObject toJson() const;

private:
    QString m_file;
    int m_errorCode = 0;
    QString m_errorText;
    QString m_package;
    int m_minSdkVersion = 1;
    QList<ApkLauncherInfo> m_launchers;
};

#endif
