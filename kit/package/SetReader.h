// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SETREADER_H
#define SORRELKIT_SETREADER_H

#include "archive/ZipArchive.h"
#include "oddity/OddityList.h"
#include "package/Manifest.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
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
class SetReader
{
public:
    /// Packages of a set; the others are skipped. Applications have a split for each of a hundred languages.
    static constexpr int MaxPackages = 512;
    /// Members of a set that are looked at.
    static constexpr int MaxMembers = 4096;

    /// A package of the set whose manifest is not damaged.
    struct Opened {
        std::unique_ptr<ZipArchive> archive;
        Manifest manifest;
        OddityList oddities; ///< of the manifest
    };

    struct Split {
        QString name; ///< "config.de"
        std::unique_ptr<ZipArchive> archive;
        QString application; ///< the package name of its base
        QString path;        ///< in the set
        OddityList oddities; ///< of its manifest
    };

    /// Whether one of the members of @p archive is a package.
    static bool isSet(ZipArchive &archive);
    /// The packages among the members of @p archive, up to MaxPackages, in the order of the archive.
    static QStringList packagePaths(ZipArchive &archive);
    /// Opens the package @p path of the set @p archive and reads its manifest; nothing when it is damaged, or does not fit
    /// in @p budget.
    static std::optional<Opened> openPackage(ZipArchive &archive, const QString &path, Budget *budget);

    /// The set in @p archive. It and @p budget outlive this object; the archive also outlives the archives that are
    /// moved out of this object. Packages that do not fit in the budget are skipped: reading their directories and
    /// manifests costs work, and packages that are compressed in the set hold their bytes.
    SetReader(ZipArchive &archive, Budget &budget);
    /// The same for the packages @p paths of the set alone.
    SetReader(ZipArchive &archive, Budget &budget, const QStringList &paths);

    /// The base, opened; null when there is none. The first call reads manifests up to that of the base. The caller may
    /// move it out.
    std::unique_ptr<ZipArchive> &base();
    /// The manifest of base(), which is not damaged. The caller may move it out.
    Manifest &baseManifest();
    /// The path of base() in the set, and what is odd in its manifest. Precondition: base() was called.
    const QString &basePath() const { return m_basePath; }
    const OddityList &baseOddities() const { return m_baseOddities; }
    /// The splits of the base, opened. The first call reads the manifests of all packages. The caller may move the
    /// archives out.
    std::vector<Split> &splits();

private:
    /// Reads the next package; false when there is none.
    bool readNext();

    ZipArchive &m_archive;
    Budget &m_budget;
    QStringList m_paths; ///< of packages, the likeliest bases first
    int m_next = 0;      ///< among the paths
    bool m_hasBase = false;
    std::unique_ptr<ZipArchive> m_base;
    Manifest m_baseManifest;
    QString m_basePath;
    OddityList m_baseOddities;
    QString m_application; ///< the package name of the base
    std::vector<Split> m_splits;
    bool m_isFiltered = false; ///< whether the splits of other applications are gone
};

} // namespace SorrelKit

#endif
