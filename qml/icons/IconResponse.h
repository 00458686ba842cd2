// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_ICONRESPONSE_H
#define SORRELQML_ICONRESPONSE_H

#include "icons/IconUrl.h"

#include <QImage>
#include <QMutex>
#include <QQuickImageResponse>

#include <atomic>
#include <memory>

namespace SorrelQml {

class IconResponse;

/// The work for an icon, which threads share with the response of the engine. The response may be gone before the
/// work ends.
class IconJob
{
public:
    IconJob(const IconUrl &iconUrl, const SorrelKit::ShelfIcon &iconKind) : url(iconUrl), kind(iconKind) {}

    /// Whether nobody needs the icon any more. The job is finished all the same, because Qt waits for that.
    bool isCancelled() const { return m_isCancelled.load(); }
    /// Ends the job, once: with @p image, or with @p error. May be called in any thread.
    void finish(const QImage &image, const QString &error = QString());

    const IconUrl url;
    const SorrelKit::ShelfIcon kind;

private:
    friend class IconResponse;

    QMutex m_mutex;
    IconResponse *m_response = nullptr;
    std::atomic<bool> m_isCancelled{false};
};

/// An icon, once its job is finished. Lives in the engine's thread for pictures.
class IconResponse : public QQuickImageResponse
{
    Q_OBJECT

public:
    explicit IconResponse(const std::shared_ptr<IconJob> &job);
    ~IconResponse() override;

    QQuickTextureFactory *textureFactory() const override;
    QString errorString() const override { return m_error; }
    void cancel() override;

private:
    friend class IconJob;

    const std::shared_ptr<IconJob> m_job;
    QImage m_image;
    QString m_error;
};

} // namespace SorrelQml

#endif
