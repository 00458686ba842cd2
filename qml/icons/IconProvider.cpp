// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icons/IconProvider.h"

#include "icons/IconThreads.h"

#include <QQmlEngine>

namespace SorrelQml {

IconProvider::IconProvider() : m_threads(std::make_shared<IconThreads>()) {}

IconProvider::~IconProvider()
{
    m_threads->end();
}

void IconProvider::addTo(QQmlEngine *engine)
{
    auto *const provider = new IconProvider;
    engine->addImageProvider(QStringLiteral("sorrel"), provider);
    QObject::connect(engine, &QObject::destroyed, [threads = provider->m_threads] { threads->end(); });
}

QQuickImageResponse *IconProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    const IconUrl url = IconUrl::parse(id);
    const auto job = std::make_shared<IconJob>(url, url.kind(requestedSize));
    auto *const response = new IconResponse(job);
    if (url.source == IconUrl::Source::None)
        job->finish(QImage(), QStringLiteral("no URL of an icon: image://sorrel/%1").arg(id));
    else
        m_threads->add(job);
    return response;
}

} // namespace SorrelQml
