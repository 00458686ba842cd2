// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/ShelfThread.h"

#include <QMutexLocker>

#include <fcntl.h>
#include <unistd.h>

namespace SorrelKit {

ShelfThread::ShelfThread(const QString &fileName) : m_fileName(fileName)
{
    // Without descriptors, the end waits for the package that is being read.
    if (::pipe2(m_stop, O_CLOEXEC) != 0)
        m_stop[0] = m_stop[1] = -1;
    start();
}

// The read end becomes readable when the write end is closed.
ShelfThread::~ShelfThread()
{
    {
        const QMutexLocker locker(&m_mutex);
        m_isEnding = true;
        m_hasJob.wakeAll();
    }
    if (m_stop[1] >= 0)
        ::close(m_stop[1]);
    wait();
    if (m_stop[0] >= 0)
        ::close(m_stop[0]);
}

void ShelfThread::add(const Job &job)
{
    const QMutexLocker locker(&m_mutex);
    m_jobs.push_back(job);
    m_hasJob.wakeAll();
}

void ShelfThread::run()
{
    IndexFile file;
    bool isOpened = false;
    for (;;) {
        Job job;
        {
            const QMutexLocker locker(&m_mutex);
            while (m_jobs.empty() && !m_isEnding)
                m_hasJob.wait(&m_mutex);
            if (m_isEnding)
                return;
            job = m_jobs.front();
            m_jobs.pop_front();
        }
        if (!isOpened)
            file.open(m_fileName, false);
        isOpened = true;
        job(file, m_stop[0]);
    }
}

} // namespace SorrelKit
