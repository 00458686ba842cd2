// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWINGACCESS_H
#define SORRELKIT_DRAWINGACCESS_H

#include "package/DrawingSource.h"

#include <SorrelKit/KitCoreExport.h>

namespace SorrelKit {

class Entry;
class Package;

/**
 * The functions through which KitGui reaches the data of KitCore's classes. This header is not installed.
 *
 * Each of the two libraries holds a hidden copy of the code that both need, so that KitCore exports none of it, and
 * KitGui uses the objects that these functions return with its own copy. That is correct only while both libraries were
 * built from one version. The namespace is named after the version for that reason: the dynamic linker refuses a KitGui
 * and a KitCore of different versions, which would otherwise disagree about the layout of these objects.
 */
namespace SORRELKIT_PRIVATE_NAMESPACE {

/// The pictures of an entry.
enum class EntryPicture {
    Icon,
    RoundIcon, ///< that of Entry::roundIconResource()
    Banner,
};

/// A picture of an entry.
struct EntryIcon {
    DrawingSource *source = nullptr; ///< lives as long as the entry; null for an entry of nothing
    ResolvedValue icon;              ///< a reference or a path
    const XmlElement *activity =
        nullptr; ///< that is started; null when an alias names none. Lives as long as the launcher
};

/// The parts of @p package, each of which is read on first use. The result lives as long as the package.
SORRELKITCORE_EXPORT DrawingSource &drawingSource(const Package &package);
SORRELKITCORE_EXPORT EntryIcon entryIcon(const Entry &entry, EntryPicture picture);

} // namespace SORRELKIT_PRIVATE_NAMESPACE

} // namespace SorrelKit

#endif
