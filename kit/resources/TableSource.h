// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TABLESOURCE_H
#define SORRELKIT_TABLESOURCE_H

#include "format/ResourceTable.h"

#include <QSharedPointer>
#include <QVector>

namespace SorrelKit {

/// Tables that are searched together, in this order.
using ResourceTables = QVector<QSharedPointer<const ResourceTable>>;

/// The resource tables of a package and its splits, which are read when the first resource is looked up.
class TableSource
{
public:
    virtual ~TableSource() = default;

    /// The tables of all packages, the base's first. Reads them on the first call; they stay until this object goes.
    virtual const ResourceTables &tables() = 0;
};

} // namespace SorrelKit

#endif
