// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icons/IconThreads.h"

#include "icons/PackageIcon.h"

#include <QMutexLocker>

namespace SorrelQml {

IconThreads::IconThreads()
{
    m_packages.setMaxThreadCount(MaxThreads);
}

void IconThreads::add(const std::shared_ptr<IconJob> &job)
{
    const QMutexLocker locker(&m_mutex);
    if (m_isEnded)
        job->finish(QImage(), QStringLiteral("the program ends"));
    else if (job->url.source == IconUrl::Source::Shelf)
        m_shelfIcons.add(job);
    else
        m_packages.start(new PackageIcon(job));
}

void IconThreads::end()
{
    {
        const QMutexLocker locker(&m_mutex);
        m_isEnded = true;
    }
    m_packages.clear();
    m_shelfIcons.end();
    m_packages.waitForDone();
}

} // namespace SorrelQml
