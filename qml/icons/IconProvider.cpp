// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icons/IconProvider.h"

#include "icons/PackageIcon.h"

namespace SorrelQml {

IconProvider::IconProvider()
{
    m_packages.setMaxThreadCount(MaxThreads);
}

IconProvider::~IconProvider()
{
    m_packages.clear();
    m_packages.waitForDone();
}

QQuickImageResponse *IconProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    const IconUrl url = IconUrl::parse(id);
    const auto job = std::make_shared<IconJob>(url, url.kind(requestedSize));
    auto *const response = new IconResponse(job);
    switch (url.source) {
    case IconUrl::Source::Shelf:
        m_shelfIcons.add(job);
        break;
    case IconUrl::Source::Package:
        m_packages.start(new PackageIcon(job));
        break;
    case IconUrl::Source::None:
        job->finish(QImage(), QStringLiteral("no URL of an icon: image://sorrel/%1").arg(id));
        break;
    }
    return response;
}

} // namespace SorrelQml
