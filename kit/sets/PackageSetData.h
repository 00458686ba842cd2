// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGESETDATA_H
#define SORRELKIT_PACKAGESETDATA_H

#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "sets/SetMember.h"
#include "toc/TocReader.h"

#include <SorrelKit/Device.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/SplitChoice.h>

#include <QSharedData>

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

    explicit PackageSetData(const Package &package) : m_package(package) {}

    /// The packages; empty when the set cannot be read.
    const std::vector<SetMember> &members();
    /// The result of PackageSet::splitsFor().
    SplitChoice choose(const Device &device);
    /// The result of PackageSet::packageFor().
    Package packageFor(const Device &device);

private:
    void read();
    void readSet(ZipArchive &archive);
    void readAlone(ZipArchive &archive);

    Package m_package;
    bool m_isRead = false;
    bool m_isSet = false;
    std::vector<SetMember> m_members;
    std::optional<TocReader> m_toc;
    bool m_isTocWhole = false;
};

} // namespace SorrelKit

#endif
