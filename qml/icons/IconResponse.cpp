// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icons/IconResponse.h"

#include <QMutexLocker>
#include <QQuickTextureFactory>

namespace SorrelQml {

// The signal is sent in the thread of the response. In another one, it could come before the engine is connected.
void IconJob::finish(const QImage &image, const QString &error)
{
    const QMutexLocker locker(&m_mutex);
    if (m_response == nullptr)
        return;
    IconResponse *const response = m_response;
    m_response = nullptr;
    response->m_image = image;
    response->m_error = error;
    QMetaObject::invokeMethod(response, &QQuickImageResponse::finished, Qt::QueuedConnection);
}

IconResponse::IconResponse(const std::shared_ptr<IconJob> &job) : m_job(job)
{
    const QMutexLocker locker(&m_job->m_mutex);
    m_job->m_response = this;
}

IconResponse::~IconResponse()
{
    const QMutexLocker locker(&m_job->m_mutex);
    m_job->m_response = nullptr;
}

QQuickTextureFactory *IconResponse::textureFactory() const
{
    return m_image.isNull() ? nullptr : QQuickTextureFactory::textureFactoryForImage(m_image);
}

void IconResponse::cancel()
{
    m_job->m_isCancelled.store(true);
}

} // namespace SorrelQml
