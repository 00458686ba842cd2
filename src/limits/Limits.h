// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LIMITS_H
#define LIMITS_H

#include <QtGlobal>

/// Ceilings that every reader of the formats has in common. docs/limits.md says what happens at each.
namespace Limits {

/// Bytes of a resource table. A member of an archive inflates to a thousand times its size.
constexpr int MaxTableBytes = 128 << 20;
/// Bytes of a manifest. The elements take several times as much memory.
constexpr int MaxManifestBytes = 16 << 20;
/// Packages of a table; a resource id has one byte for the package.
constexpr int MaxPackages = 256;
/// Elements of a document nested in each other.
constexpr int MaxElementDepth = 256;
/// Elements and attributes of a document; each takes many times its bytes in memory.
constexpr int MaxNodes = 100000;

} // namespace Limits

#endif
