// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGEARCHIVES_H
#define SORRELKIT_PACKAGEARCHIVES_H

#include "archive/ByteSource.h"
#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "package/SetReader.h"

#include <SorrelKit/Package.h>

#include <QString>

#include <memory>
#include <vector>

namespace SorrelKit {

/// The archives of a package: its own, or those of the packages of a set, first the base.
class PackageArchives
{
public:
    struct Archive {
        QString name; ///< of the split; empty for the base and a single package
        std::unique_ptr<ZipArchive> archive;
    };

    /// Opens the archives of @p package. Their directories spend from @p directories, and the packages of a set from
    /// @p packages, too. Archives that do not fit are missing, and a budget is spent then.
    PackageArchives(const Package &package, Budget *directories, Budget *packages);

    std::vector<Archive> &archives() { return m_archives; }
    /// The archive of the split @p name; null when there is none.
    ZipArchive *find(const QString &name) const;
    /// The bytes of the file; null when it cannot be read.
    ByteSource *source() const { return m_source.get(); }

private:
    std::shared_ptr<ByteSource> m_source;
    std::unique_ptr<ZipArchive> m_set; ///< outlives the archives in it
    std::vector<Archive> m_archives;
};

} // namespace SorrelKit

#endif
