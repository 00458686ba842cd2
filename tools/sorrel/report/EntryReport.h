// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ENTRYREPORT_H
#define ENTRYREPORT_H

#include "ReportRows.h"

#include <SorrelKit/Package.h>

#include <QJsonArray>
#include <QString>
#include <QStringList>

/// The part of a report about entries of the kinds that a user asked for.
class EntryReport
{
public:
    /// The entries of @p kind, one of kinds() or "all", which stands for all but launchers. @p includesHidden adds those
    /// that Android does not show.
    EntryReport(const SorrelKit::Package &package, const QString &kind, bool includesHidden);

    /// The names of kinds, in the order of SorrelKit::Entry::Kind.
    static QStringList kinds();
    /// Whether @p kind is one of kinds(), or "all".
    static bool isKind(const QString &kind) { return kind == QLatin1String("all") || kinds().contains(kind); }

    /// A line for each entry.
    ReportRows rows() const;
    QJsonArray toJson() const;

private:
    QList<SorrelKit::Entry> m_entries;
};

#endif
