// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PlatformInMemory.h"

#include <sys/mman.h>
#include <unistd.h>

namespace fixture {

PlatformInMemory::PlatformInMemory(const QByteArray &table) : m_file(memfd_create("platform", 0))
{
    const QByteArray bytes = zip({{QStringLiteral("AndroidManifest.xml"), platformManifest()},
                                  {QStringLiteral("resources.arsc"), table},
                                  {QStringLiteral("res/icon.png"), "no picture"}},
                                 Compression::Stored);
    if (m_file < 0 || write(m_file, bytes.constData(), size_t(bytes.size())) != bytes.size())
        qFatal("no file for the platform");
    m_platform = SorrelKit::Platform(QStringLiteral("/proc/self/fd/%1").arg(m_file));
}

PlatformInMemory::~PlatformInMemory()
{
    close(m_file);
}

} // namespace fixture
