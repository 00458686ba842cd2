// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGESET_H
#define SORRELKIT_PACKAGESET_H

#include "archive/ZipArchive.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace SorrelKit {

/**
 * A set of packages: a ZIP archive (`.apks`, `.xapk`, `.apkm`) with an application's base package and its splits for
 * languages, screens and processors. Other members are skipped.
 *
 * The base is the package whose manifest names no split. Tools write several of them, for old devices; the base is then
 * the one with a usual name (`base`, `base-master`, `universal`), else the first. Splits of other applications are
 * skipped.
 */
class PackageSet
{
public:
    /// Packages of a set; the others are skipped. Applications have a split for each of a hundred languages.
    static constexpr int MaxPackages = 512;
    /// Members of a set that are looked at.
    static constexpr int MaxMembers = 4096;

    struct Split {
        QString name; ///< "config.de"
        std::unique_ptr<ZipArchive> archive;
        QString application; ///< the package name of its base
    };

    /// Whether one of the members of @p archive is a package.
    static bool isSet(ZipArchive &archive);

    /// Opens the packages of @p archive, which outlives this object and the archives that are moved out of it. Packages
    /// that do not fit in @p budget are skipped: reading their directories and manifests costs work, and packages that
    /// are compressed in the set hold their bytes.
    PackageSet(ZipArchive &archive, Budget &budget);

    /// The base; null when there is none. The caller may move it out.
    std::unique_ptr<ZipArchive> &base() { return m_base; }
    std::vector<Split> &splits() { return m_splits; }

private:
    std::unique_ptr<ZipArchive> m_base;
    std::vector<Split> m_splits;
};

} // namespace SorrelKit

#endif
