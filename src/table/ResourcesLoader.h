// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCESLOADER_H
#define RESOURCESLOADER_H

#include <SorrelExport.h>

#include "limits/Limits.h"

class ApkResourcesData;
class Extractor;

/**
 * Reads a resource table (see ResourceTable), the member `resources.arsc` of a package, into an ApkResourcesData. Only
 * the first chunk of the device is read. It may also be a pool or a package, and tables may be nested.
 */
class ResourcesLoader
{
public:
    static constexpr int MaxPackages = Limits::MaxPackages;

    ResourcesLoader() = default;

    /**
     * Replaces the content of @p data, and sets its `valid` when no fault was recorded on @p reader. A fault leaves
     * `valid` unchanged, which is kept on purpose; it is printed on Qt's debug log, and the content before it is kept.
     * Besides the faults of the reader, pools and packages: "too many packages in resource table".
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
