// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ThumbnailShape.h"

#include <KConfig>
#include <KConfigGroup>

QByteArray ThumbnailShape::name()
{
    const KConfig config(QStringLiteral("sorrelrc"), KConfig::NoGlobals);
    QByteArray shape = config.group(QStringLiteral("Thumbnails")).readEntry("Shape", QByteArray());
    for (const char *known : {"circle", "rounded", "squircle"}) {
        if (shape == known)
            return shape;
    }
    return "none";
}
