// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FINDINGLIST_H
#define FINDINGLIST_H

#include "Finding.h"
#include "LintChecks.h"

#include <QVector>

#include <array>

/**
 * Findings about one package, in the order of LintChecks::All, and within one check in that in which they were added. A
 * check tells of MaxPerCheck members or launchers, and of how many more there are; subjects are cut to MaxLength
 * characters. So the list stays short whatever the package holds.
 */
class FindingList
{
public:
    static constexpr int MaxPerCheck = 10;
    static constexpr int MaxLength = 200;

    void add(const LintCheck &check, const QString &subject, const QString &text);
    QVector<Finding> findings() const;

    /// @p text, cut to what is shown of a text out of a package.
    static QString shortened(const QString &text);

private:
    struct Findings {
        QVector<Finding> told;
        int more = 0;
    };
    std::array<Findings, std::size(LintChecks::All)> m_findings;
};

#endif
