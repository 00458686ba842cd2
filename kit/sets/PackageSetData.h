// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGESETDATA_H
#define SORRELKIT_PACKAGESETDATA_H

#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "setinfo/SetInfo.h"
#include "sets/SetMember.h"
#include "toc/TocReader.h"

#include <SorrelKit/Device.h>
#include <SorrelKit/ExpansionFile.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/SplitChoice.h>

#include <QList>
#include <QSharedData>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace SorrelKit {

/// The data that copies of a PackageSet share: the packages of the set and its table of contents, both read on first
/// use.
class PackageSetData : public QSharedData
{
public:
    /// The budget of reading the table, and the directories and manifests of all packages. A package that is compressed
    /// costs the work of inflating it.
    static constexpr qint64 MaxReadingWork = 1 << 29;
    /// Bytes that are held for one package at a time.
    static constexpr qint64 MaxReadingBytes = 256 << 20;

    /// Expansion files; the others are left out. Android reads two.
    static constexpr int MaxExpansions = 64;

    explicit PackageSetData(const Package &package) : m_package(package) {}

    /// The packages; empty when the set cannot be read.
    const std::vector<SetMember> &members();
    /// The expansion files of the set.
    const QList<ExpansionFile> &expansions();
    /// Where the description of the set differs from it.
    const QStringList &mismatches();
    /// The result of PackageSet::splitsFor().
    SplitChoice choose(const Device &device);
    /// The result of PackageSet::packageFor().
    Package packageFor(const Device &device);

private:
    void read();
    void readSet(ZipArchive &archive);
    void readAlone(ZipArchive &archive);
    void readExpansions(ZipArchive &archive, const SetInfo &info);
    /// The facts that the description of the set is compared with.
    SetInfo::Facts facts() const;

    Package m_package;
    bool m_isRead = false;
    bool m_isSet = false;
    std::vector<SetMember> m_members;
    QList<ExpansionFile> m_expansions;
    QStringList m_mismatches;
    std::optional<TocReader> m_toc;
    bool m_isTocWhole = false;
};

} // namespace SorrelKit

#endif
