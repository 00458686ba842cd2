// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TABLESOURCE_H
#define SORRELKIT_TABLESOURCE_H

#include "format/ResourceTable.h"

#include <QSharedPointer>
#include <QVector>

class FileSource;

namespace SorrelKit {

/// Tables that are searched together, in this order.
using ResourceTables = QVector<QSharedPointer<const ResourceTable>>;

/// The platform that packages refer to. May be used from any thread.
class PlatformSource
{
public:
    virtual ~PlatformSource() = default;

    /// The table of the platform; empty when it cannot be read. Opens the platform on the first call; the table stays
    /// until this object goes.
    virtual const ResourceTables &tables() = 0;
    /// The members of the platform.
    virtual FileSource &files() = 0;
};

/// The resource tables of a package and its splits, which are read when the first resource is looked up.
class TableSource
{
public:
    virtual ~TableSource() = default;

    /// The tables of all packages, the base's first. Reads them on the first call; they stay until this object goes.
    virtual const ResourceTables &tables() = 0;
    /// The platform that the package refers to; null without one. Opens nothing.
    virtual PlatformSource *platform() { return nullptr; }
};

} // namespace SorrelKit

#endif
