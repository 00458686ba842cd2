// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGEFILES_H
#define SORRELKIT_PACKAGEFILES_H

#include <QByteArray>
#include <QString>

namespace SorrelKit {

/// The members of a package, or of a package and its splits, by their paths. Drawables are read through this.
class PackageFiles
{
public:
    virtual ~PackageFiles() = default;

    /// The content of the member @p path; empty when there is none, it cannot be read, or has more than @p maxBytes. Of a
    /// member that is damaged later on, what comes before.
    virtual QByteArray file(const QString &path, qint64 maxBytes) = 0;
};

} // namespace SorrelKit

#endif
