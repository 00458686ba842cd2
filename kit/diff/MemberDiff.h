// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MEMBERDIFF_H
#define SORRELKIT_MEMBERDIFF_H

#include "archive/ZipArchive.h"
#include "limits/Budget.h"

#include <SorrelKit/MemberChange.h>
#include <SorrelKit/SizeChange.h>

#include <QList>
#include <QMap>
#include <QString>

#include <vector>

namespace SorrelKit {

/**
 * Compares the members of archives. PackageDiff documents when members are equal. Keeps the largest changes, and looks
 * up their names at the end, so memory does not grow with the number of members.
 */
class MemberDiff
{
public:
    /// Members that are listed. Large updates change some ten thousand.
    static constexpr int MaxListed = 16384;
    /// Bytes of their names.
    static constexpr qint64 MaxListedBytes = 8 << 20;
    /// The work of looking up a member in the other archive, and of reading its own header, besides the bytes of its
    /// name.
    static constexpr qint64 MemberWork = 2 * Budget::LookupWork;

    /// Spends from @p budget, which outlives this object. When @p areSameFiles is true, equal members are not read.
    explicit MemberDiff(Budget *budget, bool areSameFiles) : m_budget(budget), m_areSameFiles(areSameFiles) {}

    /// Compares the archives of the split @p package, which outlive this object. One of them may be null.
    void compare(const QString &package, ZipArchive *before, ZipArchive *after);

    /// The sizes of all members.
    SizeChange total() const { return m_total; }
    /// The sizes of each category that differs, and the members that differ. The largest changes are first.
    QList<SizeChange> sizes() const;
    QList<MemberChange> members();
    int count(TextChange::Kind kind) const { return m_counts.value(kind); }
    /// Whether the budget was enough.
    bool isComplete() const { return m_isComplete; }

private:
    /// A member that differs. A number of -1 means that an archive does not have it.
    struct Change {
        int pair;
        int beforeNumber;
        int afterNumber;
        qint64 growth; ///< of its bytes in the archive, without a sign
    };
    struct Pair {
        QString package;
        ZipArchive *before;
        ZipArchive *after;
    };

    void add(const Pair &pair, int beforeNumber, int afterNumber);
    bool isSame(const Pair &pair, int beforeNumber, int afterNumber);
    static SizeChange sizes(const Pair &pair, int beforeNumber, int afterNumber);
    void cut();

    Budget *m_budget;
    bool m_areSameFiles;
    bool m_isComplete = true;
    std::vector<Pair> m_pairs;
    std::vector<Change> m_changes; ///< the largest, and up to as many others
    QMap<TextChange::Kind, int> m_counts;
    SizeChange m_total;
    QMap<SizeChange::Category, SizeChange> m_sizes;
    QMap<SizeChange::Category, bool> m_isChanged;
};

} // namespace SorrelKit

#endif
