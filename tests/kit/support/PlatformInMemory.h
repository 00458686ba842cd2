// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PLATFORMINMEMORY_H
#define PLATFORMINMEMORY_H

#include "PlatformFixture.h"

#include <SorrelKit/Platform.h>

namespace fixture {

/// A platform in a file without a name, so nothing is left of it when the process ends without its destructors.
class PlatformInMemory
{
public:
    explicit PlatformInMemory(const QByteArray &table = platformTable());
    ~PlatformInMemory();

    const SorrelKit::Platform &platform() const { return m_platform; }

private:
    Q_DISABLE_COPY(PlatformInMemory)

    int m_file;
    SorrelKit::Platform m_platform;
};

} // namespace fixture

#endif
