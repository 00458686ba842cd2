// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCESLOADER_H
#define RESOURCESLOADER_H

#include <SorrelExport.h>

#include "format/Limits.h"

class ApkResourcesData;
class Extractor;

/**
 * Reads a resource table, the member `resources.arsc` of a package, into an ApkResourcesData. A table chunk (type
 * 0x0002):
 *
 * | offset | width   | field                                                                              |
 * |--------|---------|------------------------------------------------------------------------------------|
 * | 0      | 8 bytes | chunk header (see ChunkWalker)                                                     |
 * | 8      | u32     | package count, not used                                                            |
 * | 12     | chunks  | one string pool with the texts of values (0x0001), then one package each (0x0200)  |
 *
 * Only the first chunk of the device is read. It may as well be a pool or a package, and tables may be nested.
 */
class ResourcesLoader
{
public:
    /// Packages of one table; a resource id has a byte for the package's.
    static constexpr int MaxPackages = Limits::MaxPackages;

    ResourcesLoader() = default;

    /**
     * Replaces the content of @p data, and sets its `valid` when no fault was recorded on @p reader; a fault leaves
     * `valid` as it was, which is kept on purpose, and is told on Qt's debug log. What was read before it stays.
     * Besides those of the reader, pools and packages: "too many packages in resource table".
     */
    SORREL_EXPORT void load(ApkResourcesData *data, Extractor *reader);

    /// The step of load(): one chunk with all that is nested in it.
    SORREL_EXPORT void parseChunk();

private:
    Q_DISABLE_COPY(ResourcesLoader)

    void parsePackage(int headerSize);

    Extractor *m_reader = nullptr;
    ApkResourcesData *m_data = nullptr;
};

#endif
