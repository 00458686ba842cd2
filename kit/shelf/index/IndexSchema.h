// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INDEXSCHEMA_H
#define SORRELKIT_INDEXSCHEMA_H

#include "shelf/index/IndexDatabase.h"

namespace SorrelKit {

/// The tables of the index, which docs/shelf.md describes, and their version (`PRAGMA user_version`).
namespace IndexSchema {

/// The version that this library reads and writes.
constexpr int Version = 1;
/// `PRAGMA application_id`: "SrlS".
constexpr int ApplicationId = 0x53726c53;

/// The kind of a file.
enum class Kind {
    Current, ///< an index of Version
    Older,   ///< an index that prepare() migrates
    Empty,   ///< a file without tables
    Other,   ///< an index of a later version, or a file of another program
    Unknown, ///< the file cannot be read: error() of the database is set
};

Kind kindOf(IndexDatabase &database);
/// Makes the tables of an empty file or migrates an older one, in one transaction. Returns false when that fails.
bool prepare(IndexDatabase &database);

} // namespace IndexSchema

} // namespace SorrelKit

#endif
