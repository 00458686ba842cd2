// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icons/PackageIcon.h"

#include "icons/SourceNumber.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>

namespace SorrelQml {

using namespace SorrelKit;

PackageIcon::~PackageIcon()
{
    m_job->finish(QImage(), QStringLiteral("the program ends"));
}

void PackageIcon::run()
{
    if (m_job->isCancelled()) {
        m_job->finish(QImage(), QStringLiteral("cancelled"));
        return;
    }
    const QString fileName = SourceNumber::fileName(m_job->url.number);
    if (fileName.isEmpty()) {
        m_job->finish(QImage(), QStringLiteral("the package is not open"));
        return;
    }
    Package package(fileName);
    package.setPlatform(Platform::installed());
    IconRequest request(m_job->kind.size());
    request.setMask(IconMask(m_job->kind.shape()));
    request.setNight(m_job->kind.isNight());
    request.setMonochrome(m_job->kind.isMonochrome());
    DrawableRenderer renderer(package);
    const QImage image = renderer.icon(request);
    if (!image.isNull())
        m_job->finish(image);
    else if (package.isValid())
        m_job->finish(QImage(), renderer.error().text());
    else
        m_job->finish(QImage(), package.error().message());
}

} // namespace SorrelQml
