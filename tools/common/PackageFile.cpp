// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageFile.h"

#include <fcntl.h>
#include <unistd.h>

PackageFile::PackageFile(const FileName &name) : m_name(name), m_pathForQt(name.forQt())
{
    if (!m_pathForQt.isNull())
        return;
    // O_PATH does not open the file, so a pipe does not block.
    m_descriptor = ::open(name.path().constData(), O_PATH | O_CLOEXEC);
    m_pathForQt = QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
}

PackageFile::~PackageFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}
