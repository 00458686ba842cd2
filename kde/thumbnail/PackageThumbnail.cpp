// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageThumbnail.h"

#include "ThumbnailProgram.h"
#include "ThumbnailShape.h"

#include <KPluginFactory>

#include <QFile>
#include <QImage>
#include <QSize>

K_PLUGIN_CLASS_WITH_JSON(PackageThumbnail, "sorrelthumbnail.json")

PackageThumbnail::PackageThumbnail(QObject *parent, const QVariantList &arguments)
    : KIO::ThumbnailCreator(parent, arguments)
{
}

KIO::ThumbnailResult PackageThumbnail::create(const KIO::ThumbnailRequest &request)
{
    const QByteArray path = QFile::encodeName(request.url().toLocalFile());
    const int size = qMin(request.targetSize().width(), request.targetSize().height());
    if (path.isEmpty() || size < 1)
        return KIO::ThumbnailResult::fail();
    QImage icon = QImage::fromData(ThumbnailProgram::png(path, size, ThumbnailShape::name()), "PNG");
    if (icon.isNull())
        return KIO::ThumbnailResult::fail();
    icon.setDevicePixelRatio(request.devicePixelRatio());
    return KIO::ThumbnailResult::pass(icon);
}

#include "PackageThumbnail.moc"
