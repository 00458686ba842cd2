// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TOCCHOOSER_H
#define SORRELKIT_TOCCHOOSER_H

#include "sets/Selection.h"
#include "toc/TocReader.h"

#include <QHash>
#include <QString>

#include <vector>

namespace SorrelKit {

/// Chooses packages of a set by its table of contents: the best variant, and of its modules and of the asset packs, the
/// packages that fit the device better than their alternatives.
class TocChooser
{
public:
    /// @p toc, @p members and @p match outlive the object.
    TocChooser(const TocReader &toc, const std::vector<SetMember> &members, const DeviceMatch &match);

    SplitChoice choose();

private:
    /// Whether @p a is better for the device than @p b. Precondition: both fit.
    bool isBetter(const TocReader::Variant &a, const TocReader::Variant &b) const;
    const TocReader::Variant *bestVariant();
    bool fits(const TocReader::Module &module) const;
    void addModule(const TocReader::Module &module);
    void addApk(const TocReader::Apk &apk, const TocReader::Module &module);
    bool fits(const TocReader::Apk &apk) const;

    const TocReader &m_toc;
    const DeviceMatch &m_match;
    Selection m_selection;
    QHash<QString, const SetMember *> m_members; ///< by path
};

} // namespace SorrelKit

#endif
