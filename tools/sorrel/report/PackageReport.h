// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEREPORT_H
#define PACKAGEREPORT_H

#include "FileName.h"
#include "ReportRows.h"
#include "TextStyle.h"

#include <SorrelKit/Package.h>

#include <QJsonObject>
#include <QList>
#include <QString>

/// The report of `sorrel info` and `sorrel scan` about one package or set of packages. The constructor reads the
/// package.
class PackageReport
{
public:
    /// @p showsAll adds the launchers that are not shown, and to the report for people, labels in all languages, icons, and
    /// the names and the descriptions of permissions.
    explicit PackageReport(const FileName &file, bool showsAll = false);

    /// The result of toJson() for a package when only its error is known.
    static QJsonObject failure(const FileName &file, int code, const QString &text);

    bool failed() const { return bool(m_package.error()); }
    QString errorText() const { return m_package.error().message(); }
    /// Whether the report has any facts. It may have some even when a part could not be read.
    bool isValid() const { return m_package.isValid(); }
    const FileName &file() const { return m_file; }
    const SorrelKit::Package &package() const { return m_package; }
    /// The launchers of the report.
    const QList<SorrelKit::Entry> &launchers() const { return m_launchers; }

    /// The report for people, in lines, with the label in the user's language first. Characters that control a terminal
    /// become U+FFFD. @p more are added at the end.
    QString toText(const TextStyle &style, const ReportRows &more = {}) const;
    /// The report for programs. A package that could not be read has the same keys, with the values that the library
    /// returns.
    QJsonObject toJson() const;
    /// The same with the key "details", see DetailsJson.
    QJsonObject toDetailedJson() const;

private:
    FileName m_file;
    bool m_showsAll;
    SorrelKit::Package m_package;
    QList<SorrelKit::Entry> m_launchers;
};

#endif
