// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_OWNEDPATH_H
#define SORRELKIT_OWNEDPATH_H

#include <QHash>
#include <QString>

#include <utility>

namespace SorrelKit {

/// The archive that a resource, and the file that it names, is in.
enum class ResourceOwner {
    Package,  ///< the package with its splits
    Platform, ///< the framework package
};

/// A member of the package or of the platform. Both may have members of the same path.
struct OwnedPath {
    OwnedPath() = default;
    /// The member @p name of @p archive. Implicit, because most files are the package's.
    // NOLINTNEXTLINE(google-explicit-constructor)
    OwnedPath(QString name, ResourceOwner archive = ResourceOwner::Package) : path(std::move(name)), owner(archive) {}

    QString path;
    ResourceOwner owner = ResourceOwner::Package;
};

inline bool operator==(const OwnedPath &a, const OwnedPath &b)
{
    return a.owner == b.owner && a.path == b.path;
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
inline uint qHash(const OwnedPath &path, uint seed = 0)
#else
inline size_t qHash(const OwnedPath &path, size_t seed = 0)
#endif
{
    return qHash(path.path, seed ^ uint(path.owner));
}

} // namespace SorrelKit

#endif
