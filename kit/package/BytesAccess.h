// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_BYTESACCESS_H
#define SORRELKIT_BYTESACCESS_H

#include "archive/ByteSource.h"

#include <SorrelKit/KitCoreExport.h>

#include <QByteArray>

#include <memory>

namespace SorrelKit {

class Package;

/// The function through which Trust reaches the bytes of KitCore's packages. This header is not installed; see
/// DrawingAccess.h for the namespace.
namespace SORRELKIT_PRIVATE_NAMESPACE {

/// The bytes that a package is read from.
struct PackageBytes {
    /// The bytes of the package or the set; null when it cannot be opened. They stay valid when the package is gone, except that a
    /// device must outlive it.
    std::shared_ptr<ByteSource> source;
    /// The path of the file, as the system has it; empty for a device.
    QByteArray path;
    /// The attribute `targetSandboxVersion` of the manifest; 0 when there is none.
    int targetSandboxVersion = 0;
};

/// The bytes of @p package. Opens it and reads its manifest on first use. They are mapped by KitCore's code: two guards of mappings in one
/// process would disable each other (archive/MappingGuard.h).
SORRELKITCORE_EXPORT PackageBytes packageBytes(const Package &package);

} // namespace SORRELKIT_PRIVATE_NAMESPACE

} // namespace SorrelKit

#endif
