// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FINDINGLIST_H
#define FINDINGLIST_H

#include "Finding.h"
#include "LintChecks.h"

#include <QVector>

#include <vector>

/**
 * Findings about one package, in the order of LintChecks::all(), and within a check in the order in which they were
 * added. The list stays short for any package: a check has at most MaxPerCheck findings and one with the number of the
 * rest, and subjects are cut to MaxLength characters.
 */
class FindingList
{
public:
    static constexpr int MaxPerCheck = 10;
    static constexpr int MaxLength = 200;

    void add(const LintCheck &check, const QString &subject, const QString &text);
    QVector<Finding> findings() const;

    /// @p text of a package, cut to MaxLength characters.
    static QString shortened(const QString &text);
    /// @p count and @p noun, which gets an s in the plural: "1 chunk", "2 chunks".
    static QString counted(qint64 count, const QString &noun);

private:
    struct Findings {
        QVector<Finding> listed;
        int more = 0;
    };
    std::vector<Findings> m_findings = std::vector<Findings>(LintChecks::all().size());
};

#endif
