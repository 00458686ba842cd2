// SPDX-License-Identifier: LGPL-2.1-or-later
#include "diff/PackageArchives.h"

#include "package/BytesAccess.h"

#include <algorithm>
#include <utility>

namespace SorrelKit {

PackageArchives::PackageArchives(const Package &package, Budget *directories, Budget *packages)
    : m_source(SORRELKIT_PRIVATE_NAMESPACE::packageBytes(package).source)
{
    if (m_source == nullptr)
        return;
    auto outer = std::make_unique<ZipArchive>(m_source);
    if (!outer->open(directories))
        return;
    if (outer->contains(QStringLiteral("AndroidManifest.xml")) || !SetReader::isSet(*outer)) {
        m_archives.push_back({QString(), std::move(outer)});
        return;
    }
    m_set = std::move(outer);
    SetReader set(*m_set, *packages);
    if (set.base() == nullptr)
        return;
    auto &splits = set.splits();
    m_archives.push_back({QString(), std::move(set.base())});
    for (SetReader::Split &split : splits)
        m_archives.push_back({split.name, std::move(split.archive)});
}

ZipArchive *PackageArchives::find(const QString &name) const
{
    const auto found = std::find_if(m_archives.cbegin(), m_archives.cend(),
                                    [&name](const Archive &archive) { return archive.name == name; });
    return found != m_archives.cend() ? found->archive.get() : nullptr;
}

} // namespace SorrelKit
