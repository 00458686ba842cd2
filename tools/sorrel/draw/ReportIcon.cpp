// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReportIcon.h"

#include "PngBytes.h"

#include <SorrelKit/DrawableRenderer.h>

void addIcon(const PackageReport &report, const ReportContent &content, QJsonObject *json)
{
    if (content.iconSize == 0)
        return;
    SorrelKit::IconRequest request(content.iconSize);
    request.setMask(content.iconMask);
    const QImage icon = SorrelKit::DrawableRenderer(report.package()).icon(request);
    json->insert(QStringLiteral("icon"), QString::fromLatin1(pngBytes(icon).toBase64()));
}
