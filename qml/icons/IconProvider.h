// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_ICONPROVIDER_H
#define SORRELQML_ICONPROVIDER_H

#include "icons/ShelfIcons.h"

#include <QQuickAsyncImageProvider>
#include <QThreadPool>

namespace SorrelQml {

/**
 * The provider of `image://sorrel/...`; IconUrl has the form of the URLs. `Image.sourceSize`, in pixels, replaces the
 * size in the URL. An icon that cannot be had gives Image.Error.
 *
 * Icons of an index are read in one thread (ShelfIcons). Icons of packages, which only a PackageInfo offers, are
 * drawn in this process within the limits of DrawableRenderer, in up to MaxThreads threads.
 */
class IconProvider : public QQuickAsyncImageProvider
{
public:
    static constexpr int MaxThreads = 2;

    IconProvider();
    /// Waits for the icons that are being drawn.
    ~IconProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

private:
    ShelfIcons m_shelfIcons;
    QThreadPool m_packages;
};

} // namespace SorrelQml

#endif
