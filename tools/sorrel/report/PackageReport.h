// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEREPORT_H
#define PACKAGEREPORT_H

#include "PackageFile.h"
#include "ReportContent.h"
#include "TextStyle.h"

#include <SorrelKit/Package.h>

#include <QJsonObject>
#include <QList>
#include <QString>

/// What `sorrel info` and `sorrel scan` tell about one package, or set of packages, read when the report is made.
class PackageReport
{
public:
    PackageReport(const FileName &file, const ReportContent &content);

    /// What toJson() is for a package of which nothing is known but why it could not be read.
    static QJsonObject failure(const FileName &file, int code, const QString &text);

    bool failed() const { return m_package.error() != SorrelKit::Package::NoError; }
    QString errorText() const { return m_package.errorString(); }
    /// Whether there is something to tell, which may be so when a part could not be read.
    bool isValid() const { return m_package.isValid(); }

    /// For a person, in lines, with the label in the user's language first. Characters that would steer a terminal are
    /// shown as U+FFFD.
    QString toText(const TextStyle &style) const;
    /// For a program. The keys are the same for a package that could not be read, with the answers the library gives.
    QJsonObject toJson() const;

private:
    PackageFile m_file;
    ReportContent m_content;
    SorrelKit::Package m_package;
    QList<SorrelKit::Launcher> m_launchers;
};

#endif
