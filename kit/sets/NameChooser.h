// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_NAMECHOOSER_H
#define SORRELKIT_NAMECHOOSER_H

#include "sets/Selection.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace SorrelKit {

/// Chooses packages of a set without a table of contents, or a package alone, by the manifests and the names.
/// SorrelKit::PackageSet documents the rules.
class NameChooser
{
public:
    /// @p members and @p match outlive the object.
    NameChooser(const std::vector<SetMember> &members, const DeviceMatch &match);

    SplitChoice choose();

private:
    using Members = std::vector<const SetMember *>;

    /// The member of @p candidates with the highest API level that the device reaches. @p isBetter chooses among those
    /// with the same level.
    template <typename Compare>
    const SetMember *best(const Members &candidates, const Compare &isBetter) const;
    const SetMember *bestBase() const;
    const SetMember *bestStandalone() const;
    void failForBases();
    void addSplits(const SetMember &base);
    /// The splits of @p base, one of each name.
    Members splitsOf(const SetMember &base) const;
    Members modulesAmong(const Members &splits) const;
    void addConfigurations(const Members &splits, const QString &module, const QString &abi);
    /// Whether the application of a member is @p base's.
    static bool belongsTo(const SetMember &member, const SetMember &base);
    bool fitsAbi(const SetMember &member) const;

    const DeviceMatch &m_match;
    Selection m_selection;
    Members m_bases;
    Members m_standalones;
    Members m_others;
};

} // namespace SorrelKit

#endif
