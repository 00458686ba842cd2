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
 * A set of packages: a ZIP archive (`.apks`, `.xapk`, `.apkm`) of an application's base package and its splits, for
 * languages, screens and processors. What is not a package is passed over.
 *
 * The base is the package whose manifest names no split. Where there are several, as tools write one for every old
 * device, it is the one with the usual name (`base`, `base-master`, `universal`), else the first; only splits of the same
 * application are taken.
 */
class PackageSet
{
public:
    /// Packages of a set at most. Applications have a split for each of a hundred languages.
    static constexpr int MaxPackages = 512;
    /// Members of a set that are looked at.
    static constexpr int MaxMembers = 4096;
    /// Bytes of packages that are compressed in the set once more, and so have to be kept in memory, all together.
    static constexpr qint64 MaxInflatedBytes = 256 << 20;
    /// Members of all packages together. A package of an archive without ZIP64 has up to 65,535.
    static constexpr qint64 MaxPackageMembers = 1 << 17;
    /// The cost of reading the manifests of all packages to find the base (FileSource::file()), and their characters, at
    /// most. A split's manifest has some hundred bytes.
    static constexpr qint64 MaxManifests = 32 << 20;

    struct Split {
        QString name; ///< "config.de"
        std::unique_ptr<ZipArchive> archive;
        QString application; ///< that it is a split of
    };

    /// Whether @p archive has a package among its members.
    static bool isSet(ZipArchive &archive);

    /// Opens the packages of @p archive, which outlives this object and what is taken out of it.
    explicit PackageSet(ZipArchive &archive);

    /// The base; null when there is none. It may be taken away.
    std::unique_ptr<ZipArchive> &base() { return m_base; }
    std::vector<Split> &splits() { return m_splits; }

private:
    std::unique_ptr<ZipArchive> m_base;
    std::vector<Split> m_splits;
};

} // namespace SorrelKit

#endif
